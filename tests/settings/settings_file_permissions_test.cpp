// Files and folders that the user may not read or write.
#include "settings/settings_file.h"
#include "settings/settings_inspection.h"
#include "settings/toolkit_memory.h"

#include "child_process.h"
#include "settings_folder.h"
#include "without_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");
const QString plainName = QStringLiteral("ScannerA.ini");

} // namespace

TEST(SettingsWithoutPermission, UnwritableFolderKeepsTheOldFile)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=1\n");
    const QByteArray directory = QFile::encodeName(QFileInfo(folder.filePath()).path());
    ASSERT_EQ(::chmod(directory.constData(), 0555), 0);
    asOrdinaryUser([&folder] {
        const SettingsHandle settings = openSettings(folder.filePath());
        EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("1"));
        settings->setValue(keyA, QStringLiteral("12"));
        EXPECT_FALSE(saveSettings(*settings));
        EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("12"));
    });
    ASSERT_EQ(::chmod(directory.constData(), 0755), 0);
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=1\n");
    EXPECT_EQ(folder.files(), QStringList(plainName));
}

TEST(SettingsWithoutPermission, UnwritableEmptyFolderWorksInMemory)
{
    const SettingsFolder folder;
    const QByteArray directory = QFile::encodeName(QFileInfo(folder.filePath()).path());
    ASSERT_EQ(::chmod(directory.constData(), 0555), 0);
    asOrdinaryUser([&folder] { expectWorkingInMemory(folder); });
    ASSERT_EQ(::chmod(directory.constData(), 0755), 0);
}

TEST(SettingsWithoutPermission, FileOfAnotherUserIsReadButNotReplaced)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=1\n");
    const QByteArray directory = QFile::encodeName(QFileInfo(folder.filePath()).path());
    ASSERT_EQ(::chmod(directory.constData(), 0777), 0);
    ASSERT_EQ(::chmod(nameOf(folder).constData(), 0444), 0);
    asOrdinaryUser([&folder] {
        const SettingsHandle settings = openSettings(folder.filePath());
        EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("1"));
        settings->setValue(keyA, QStringLiteral("12"));
        EXPECT_FALSE(saveSettings(*settings));
    });
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=1\n");
    EXPECT_EQ(folder.files(), QStringList(plainName));
}

// Only the owner may choose the time.
TEST(SettingsWithoutPermission, TimeOfAFileOfAnotherUserIsMovedOnByWhoMayWriteIt)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=1\n");
    const QByteArray directory = QFile::encodeName(QFileInfo(folder.filePath()).path());
    ASSERT_EQ(::chmod(directory.constData(), 0755), 0);
    ASSERT_EQ(::chmod(nameOf(folder).constData(), 0666), 0);
    const timespec longAgo[] = {{1, 0}, {1, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, nameOf(folder).constData(), longAgo, 0), 0);
    asOrdinaryUser([&folder] {
        outdateToolkitMemory(folder.filePath(), modificationTime(folder.filePath()));
        EXPECT_GT(modificationTime(folder.filePath()), 1000);
    });
}

TEST(SettingsWithoutPermission, UnreadableFileIsLeftAlone)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=1\n");
    const QByteArray directory = QFile::encodeName(QFileInfo(folder.filePath()).path());
    ASSERT_EQ(::chmod(directory.constData(), 0777), 0);
    ASSERT_EQ(::chmod(nameOf(folder).constData(), 0), 0);
    asOrdinaryUser([&folder] {
        EXPECT_EQ(inspectSettingsFile(folder.filePath()), FileState::Foreign);
        expectWorkingInMemory(folder);
    });
    ASSERT_EQ(::chmod(nameOf(folder).constData(), 0644), 0);
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=1\n");
}

TEST(SettingsWithoutPermission, RefusedFileThatCantBeMovedIsLeftAlone)
{
    const SettingsFolder folder;
    folder.write("k=@Variant(x)\n");
    const QByteArray directory = QFile::encodeName(QFileInfo(folder.filePath()).path());
    ASSERT_EQ(::chmod(directory.constData(), 0555), 0);
    asOrdinaryUser([&folder] { expectWorkingInMemory(folder); });
    ASSERT_EQ(::chmod(directory.constData(), 0755), 0);
    EXPECT_EQ(folder.bytes(), "k=@Variant(x)\n");
}
