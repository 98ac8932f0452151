// A settings file that is a symbolic link to a file elsewhere: the file changes, as a whole or not
// at all, and the link stays.
#include "settings/settings_file.h"

#include "child_process.h"
#include "no_room.h"
#include "settings_folder.h"

#include <algorithm>
#include <climits>

#include <sys/stat.h>
#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");
const QString group = QStringLiteral("ScannerA");
const QString plainName = QStringLiteral("ScannerA.ini");
const QString targetName = QStringLiteral("real.ini");
const QByteArray oldBytes = "[ScannerA]\nbrightness=1\n";

class LinkedSettings : public testing::Test
{
protected:
    LinkedSettings()
    {
        elsewhere.write(oldBytes, targetName);
        EXPECT_TRUE(QFile::link(target(), folder.filePath()));
    }

    QString target() const { return elsewhere.filePath(targetName); }
    QByteArray targetBytes() const { return elsewhere.bytes(targetName); }

    /// @return what the link says, not where it ends after others
    QByteArray linkText() const
    {
        QByteArray text(PATH_MAX, '\0');
        const ssize_t length =
            ::readlink(nameOf(folder).constData(), text.data(), static_cast<size_t>(text.size()));
        return text.left(static_cast<int>(std::max<ssize_t>(length, 0)));
    }

    /// Checks that the link is the one that was made, and that nothing lies about.
    void expectLinkAndFileAlone() const
    {
        EXPECT_EQ(linkText(), QFile::encodeName(target()));
        EXPECT_EQ(folder.files(), QStringList(plainName));
        EXPECT_EQ(elsewhere.files(), QStringList(targetName));
    }

    SettingsFolder folder;
    SettingsFolder elsewhere;
};

/// A text that takes more than a few pages of a disk.
QString longText()
{
    return QString(20000, QLatin1Char('x'));
}

} // namespace

TEST_F(LinkedSettings, AreSavedToTheTarget)
{
    ASSERT_EQ(::chmod(QFile::encodeName(target()).constData(), 0640), 0);
    const SettingsHandle settings = openSettings(folder.filePath());
    EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("1"));
    for (const char* value : {"12", "123"}) {
        settings->setValue(keyA, QString::fromLatin1(value));
        EXPECT_TRUE(saveSettings(*settings));
        EXPECT_EQ(targetBytes(), QByteArray("[ScannerA]\nbrightness=") + value + "\n");
        expectLinkAndFileAlone();
    }
    settings->setValue(keyA, QStringLiteral("1234"));
    EXPECT_TRUE(saveSettings(*settings, {group}));
    EXPECT_EQ(targetBytes(), "[ScannerA]\nbrightness=1234\n");
    expectLinkAndFileAlone();
    struct stat now
    {
    };
    ASSERT_EQ(::stat(QFile::encodeName(target()).constData(), &now), 0);
    EXPECT_EQ(now.st_mode & 0777, 0640U);
}

TEST_F(LinkedSettings, FailedSaveChangesNeitherLinkNorTarget)
{
    for (const bool onlyGroup : {false, true}) {
        for (const rlim_t limit : {0, 1, 100, 512, 4096, 8192, 20000}) {
            inChildProcess([&] {
                const SettingsHandle settings = openSettings(folder.filePath());
                settings->setValue(keyA, longText());
                {
                    const FileSizeLimit noMore(limit);
                    EXPECT_FALSE(onlyGroup ? saveSettings(*settings, {group})
                                           : saveSettings(*settings));
                }
                EXPECT_EQ(targetBytes(), oldBytes) << limit;
                expectLinkAndFileAlone();
                EXPECT_EQ(settings->value(keyA).toString(), longText());
                // What could not be written is not forgotten.
                settings->setValue(QStringLiteral("ScannerA/contrast"), QStringLiteral("2"));
                EXPECT_TRUE(saveSettings(*settings));
                EXPECT_EQ(readAfterRestart(target()).value(keyA).toString(), longText());
                expectLinkAndFileAlone();
            });
            elsewhere.write(oldBytes, targetName);
        }
    }
}

TEST_F(LinkedSettings, FullDiskOfTheTargetKeepsTheOldFile)
{
    const QString disk = QFileInfo(target()).path();
    for (int freePages = 0; freePages < 4; ++freePages) {
        inChildProcess([&] {
            mountTinyDisk(disk);
            if (testing::Test::HasFatalFailure()) {
                return;
            }
            elsewhere.write(oldBytes, targetName);
            const SettingsHandle settings = openSettings(folder.filePath());
            settings->setValue(keyA, longText());
            fill(disk, freePages);
            EXPECT_FALSE(saveSettings(*settings));
            EXPECT_EQ(targetBytes(), oldBytes);
            ASSERT_TRUE(QFile::remove(disk + QStringLiteral("/filler")));
            expectLinkAndFileAlone();
            EXPECT_TRUE(saveSettings(*settings));
            EXPECT_EQ(readAfterRestart(target()).value(keyA).toString(), longText());
            expectLinkAndFileAlone();
        });
    }
}

TEST_F(LinkedSettings, UnwritableFolderOfTheTargetKeepsTheOldFile)
{
    const QByteArray home = QFile::encodeName(QFileInfo(folder.filePath()).path());
    const QByteArray directory = QFile::encodeName(QFileInfo(target()).path());
    ASSERT_EQ(::chmod(home.constData(), 0777), 0);
    ASSERT_EQ(::chmod(directory.constData(), 0555), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(target()).constData(), 0666), 0);
    asOrdinaryUser([this] {
        const SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(keyA, QStringLiteral("12"));
        EXPECT_FALSE(saveSettings(*settings));
        EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("12"));
    });
    ASSERT_EQ(::chmod(directory.constData(), 0755), 0);
    EXPECT_EQ(targetBytes(), oldBytes);
    expectLinkAndFileAlone();
}

// The mark is taken out of the file first: when the new values then have no room, the file that was
// held comes back to where the link leads.
TEST_F(LinkedSettings, TargetComesBackAfterItWasReplaced)
{
    const QByteArray marked = "\xEF\xBB\xBF" + oldBytes;
    elsewhere.write(marked, targetName);
    inChildProcess([&] {
        const SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(keyA, longText());
        {
            const FileSizeLimit noMore(1000);
            EXPECT_FALSE(saveSettings(*settings));
        }
        EXPECT_EQ(targetBytes(), marked);
        expectLinkAndFileAlone();
        EXPECT_TRUE(saveSettings(*settings));
        EXPECT_EQ(readAfterRestart(target()).value(keyA).toString(), longText());
        expectLinkAndFileAlone();
    });
}

TEST_F(LinkedSettings, CutTargetComesBackFromTheHeldOneBesideIt)
{
    elsewhere.write("[ScannerA]\nbrightn", targetName);
    elsewhere.write(oldBytes, QStringLiteral("real.ini.kestrel-hold"));
    EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toString(), QStringLiteral("1"));
    EXPECT_EQ(targetBytes(), oldBytes);
    EXPECT_EQ(elsewhere.bytes(QStringLiteral("real.ini.bad-1")), "[ScannerA]\nbrightn");
    EXPECT_EQ(elsewhere.files().size(), 2);
    EXPECT_EQ(folder.files(), QStringList(plainName));
    EXPECT_EQ(linkText(), QFile::encodeName(target()));
}

TEST_F(LinkedSettings, LinkWithoutItsTargetIsNotReplacedByAFile)
{
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    ASSERT_TRUE(QFile::remove(target()));
    EXPECT_FALSE(saveSettings(*settings));
    EXPECT_EQ(linkText(), QFile::encodeName(target()));
    EXPECT_FALSE(QFile::exists(target()));
    EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("12"));
    // As after a disk was away.
    elsewhere.write(oldBytes, targetName);
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(targetBytes(), "[ScannerA]\nbrightness=12\n");
    expectLinkAndFileAlone();
}

TEST_F(LinkedSettings, LinkToALinkLeadsToTheSameFile)
{
    const SettingsFolder first;
    ASSERT_TRUE(QFile::link(folder.filePath(), first.filePath()));
    inChildProcess([&] {
        const SettingsHandle settings = openSettings(first.filePath());
        settings->setValue(keyA, longText());
        {
            const FileSizeLimit noMore(1000);
            EXPECT_FALSE(saveSettings(*settings));
        }
        EXPECT_EQ(targetBytes(), oldBytes);
        settings->setValue(keyA, QStringLiteral("12"));
        EXPECT_TRUE(saveSettings(*settings));
    });
    EXPECT_EQ(targetBytes(), "[ScannerA]\nbrightness=12\n");
    EXPECT_TRUE(QFileInfo(first.filePath()).isSymLink());
    EXPECT_EQ(first.files(), QStringList(plainName));
    expectLinkAndFileAlone();
}
