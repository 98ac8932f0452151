// What may stand where the settings file is expected.
#include "settings/settings_file.h"
#include "settings/settings_inspection.h"

#include "settings_folder.h"
#include "without_file.h"

#include <QDateTime>
#include <QDir>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");
const QString plainName = QStringLiteral("ScannerA.ini");

void expectStartingAfresh(const SettingsFolder& folder)
{
    const SettingsHandle settings = openSettings(folder.filePath());
    EXPECT_TRUE(settings->allKeys().isEmpty());
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
}

} // namespace

TEST(SettingsInPlace, NothingIsMissing)
{
    const SettingsFolder folder;
    EXPECT_EQ(inspectSettingsFile(folder.filePath()), FileState::Missing);
    EXPECT_EQ(inspectSettingsFile(folder.filePath(QStringLiteral("no/such/folder.ini"))),
              FileState::Missing);
}

TEST(SettingsInPlace, PlainFileIsSound)
{
    const SettingsFolder folder;
    folder.write("[A]\nb=1\n");
    FileBytes content;
    EXPECT_EQ(inspectSettingsFile(folder.filePath(), &content), FileState::Sound);
    EXPECT_EQ(content.bytes(), "[A]\nb=1\n");
}

TEST(SettingsInPlace, EmptyFileStartsAfresh)
{
    const SettingsFolder folder;
    folder.write("");
    expectStartingAfresh(folder);
}

TEST(SettingsInPlace, SizeUpToSixteenMebibytesIsRead)
{
    const SettingsFolder folder;
    QByteArray data(static_cast<int>(largestSettingsFile), '\t');
    data.replace(0, 8, "[A]\nb=1\n");
    folder.write(data);
    EXPECT_EQ(inspectSettingsFile(folder.filePath()), FileState::Sound);
    EXPECT_EQ(openSettings(folder.filePath())->value(QStringLiteral("A/b")).toString(),
              QStringLiteral("1"));
    folder.write(data + '\t');
    EXPECT_EQ(inspectSettingsFile(folder.filePath()), FileState::Refused);
}

TEST(SettingsInPlace, FiftyMegabytesAreMovedAside)
{
    const SettingsFolder folder;
    folder.write("[A]\nb=1\n");
    ASSERT_TRUE(QFile::resize(folder.filePath(), 50LL * 1000 * 1000));
    expectStartingAfresh(folder);
    EXPECT_EQ(QFileInfo(folder.filePath(QStringLiteral("ScannerA.ini.bad-1"))).size(),
              50LL * 1000 * 1000);
}

TEST(SettingsInPlace, SerializedObjectsAreMovedAsideUnderTheNextFreeName)
{
    const SettingsFolder folder;
    const QByteArray bad = "[ScannerA]\nbrightness=@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)\n";
    folder.write("first", QStringLiteral("ScannerA.ini.bad-1"));
    folder.write(bad);
    expectStartingAfresh(folder);
    EXPECT_EQ(folder.bytes(QStringLiteral("ScannerA.ini.bad-1")), "first");
    EXPECT_EQ(folder.bytes(QStringLiteral("ScannerA.ini.bad-2")), bad);
    EXPECT_EQ(folder.files().size(), 3);
}

TEST(SettingsInPlace, DeepNestingDoesNotOverflowTheStack)
{
    const SettingsFolder folder;
    QByteArray nested = "k=@Variant(";
    for (int depth = 0; depth < 200000; ++depth) {
        nested += "\\0\\0\\0\\t\\0\\0\\0\\x1";
    }
    folder.write("[A]\n" + nested + ")\n");
    expectStartingAfresh(folder);
}

TEST(SettingsInPlace, LinkToARefusedFileIsMovedAndItsTargetStays)
{
    const SettingsFolder folder;
    folder.write("k=@Variant(x)\n", QStringLiteral("target"));
    ASSERT_TRUE(QFile::link(QStringLiteral("target"), folder.filePath()));
    expectStartingAfresh(folder);
    EXPECT_EQ(folder.bytes(QStringLiteral("target")), "k=@Variant(x)\n");
    EXPECT_TRUE(QFileInfo(folder.filePath(QStringLiteral("ScannerA.ini.bad-1"))).isSymLink());
}

TEST(SettingsInPlace, PipeIsLeftAlone)
{
    const SettingsFolder folder;
    ASSERT_EQ(::mkfifo(nameOf(folder).constData(), 0600), 0);
    EXPECT_EQ(inspectSettingsFile(folder.filePath()), FileState::Foreign);
    expectWorkingInMemory(folder);
}

TEST(SettingsInPlace, SocketIsLeftAlone)
{
    const SettingsFolder folder;
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(descriptor, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, nameOf(folder).constData(), sizeof address.sun_path);
    ASSERT_EQ(::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    expectWorkingInMemory(folder);
    ::close(descriptor);
}

TEST(SettingsInPlace, DirectoryIsLeftAlone)
{
    const SettingsFolder folder;
    ASSERT_TRUE(QDir().mkdir(folder.filePath()));
    expectWorkingInMemory(folder);
    EXPECT_TRUE(QFileInfo(folder.filePath()).isDir());
}

TEST(SettingsInPlace, DanglingLinkIsLeftAlone)
{
    const SettingsFolder folder;
    ASSERT_TRUE(QFile::link(QStringLiteral("nowhere"), folder.filePath()));
    EXPECT_EQ(inspectSettingsFile(folder.filePath()), FileState::Foreign);
    expectWorkingInMemory(folder);
    EXPECT_EQ(QFile::symLinkTarget(folder.filePath()), folder.filePath(QStringLiteral("nowhere")));
}

TEST(SettingsInPlace, LinkToItselfIsLeftAlone)
{
    const SettingsFolder folder;
    ASSERT_TRUE(QFile::link(plainName, folder.filePath()));
    expectWorkingInMemory(folder);
}

TEST(SettingsInPlace, DeviceIsLeftAlone)
{
    const SettingsFolder folder;
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), folder.filePath()));
    expectWorkingInMemory(folder);
}

TEST(SettingsInPlace, ImpossiblePathsWorkInMemory)
{
    for (const QString& path : {QString(), QStringLiteral("/dev/null/x/ScannerA.ini"),
                                QStringLiteral("/proc/nowhere/ScannerA.ini"),
                                QString(5000, QLatin1Char('x')) + QStringLiteral(".ini")}) {
        const SettingsHandle settings = openSettings(path);
        ASSERT_NE(settings, nullptr);
        settings->setValue(keyA, QStringLiteral("12"));
        EXPECT_FALSE(saveSettings(*settings));
        EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("12"));
    }
}

TEST(SettingsInPlace, ObjectsWithoutAPathShareNothing)
{
    const SettingsHandle one = openSettings(QString());
    const SettingsHandle other = openSettings(QString());
    one->setValue(keyA, QStringLiteral("12"));
    EXPECT_FALSE(other->contains(keyA));
}

TEST(SettingsInPlace, PipeThatTakesThePlaceLaterStopsSavingOnly)
{
    const SettingsFolder folder;
    SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    ASSERT_TRUE(saveSettings(*settings));
    ASSERT_TRUE(QFile::remove(folder.filePath()));
    ASSERT_EQ(::mkfifo(nameOf(folder).constData(), 0600), 0);
    settings->setValue(keyA, QStringLiteral("13"));
    EXPECT_FALSE(saveSettings(*settings));
    EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("13"));
    settings.reset(); // must not wait for the pipe, either
    EXPECT_EQ(folder.files(), QStringList(plainName));
}

TEST(SettingsInPlace, ObjectThatTakesThePlaceLaterIsMovedAsideBeforeItIsRead)
{
    const SettingsFolder folder;
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    ASSERT_TRUE(saveSettings(*settings));
    folder.write("[ScannerA]\ncontrast=@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)\n");
    settings->setValue(keyA, QStringLiteral("13"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(readAfterRestart(folder.filePath()).value(keyA).toString(), QStringLiteral("13"));
    EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("ScannerA.ini.bad-1"))));
}

TEST(SettingsInPlace, DirectoryInPlaceOfTheLockFileDoesNotBlock)
{
    const SettingsFolder folder;
    ASSERT_TRUE(QDir().mkdir(folder.filePath(QStringLiteral("ScannerA.ini.lock"))));
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_FALSE(saveSettings(*settings));
    EXPECT_FALSE(QFile::exists(folder.filePath()));
    ASSERT_TRUE(QDir().rmdir(folder.filePath(QStringLiteral("ScannerA.ini.lock"))));
    EXPECT_TRUE(saveSettings(*settings));
}

TEST(SettingsInPlace, LockFileThatNobodySignedDoesNotKeepFromSaving)
{
    const SettingsFolder folder;
    folder.write("", QStringLiteral("ScannerA.ini.lock"));
    QFile lock(folder.filePath(QStringLiteral("ScannerA.ini.lock")));
    ASSERT_TRUE(lock.open(QIODevice::ReadWrite));
    ASSERT_TRUE(lock.setFileTime(QDateTime::currentDateTime().addSecs(-2),
                                 QFileDevice::FileModificationTime));
    lock.close();
    expectStartingAfresh(folder);
    EXPECT_EQ(folder.files(), QStringList(plainName));
}

TEST(SettingsInPlace, DirectoriesAtTheNamesForHoldingDoNotKeepFromSaving)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=1\n");
    ASSERT_TRUE(QDir().mkdir(folder.filePath(QStringLiteral("ScannerA.ini.kestrel-hold"))));
    ASSERT_TRUE(QFile::link(QStringLiteral("nowhere"),
                            folder.filePath(QStringLiteral("ScannerA.ini.kestrel-hold-1"))));
    const QStringList before = folder.files();
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
    EXPECT_EQ(folder.files(), before);
}
