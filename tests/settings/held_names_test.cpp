// The names under which a file is held while it is saved.
#include "settings/directory_lock.h"
#include "settings/held_file.h"
#include "settings/settings_file.h"

#include "settings_folder.h"

#include <QDir>

#include <chrono>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");
const QString holdName = QStringLiteral("ScannerA.ini.kestrel-hold");

} // namespace

// Without a second name the file could be lost half-way: then it is rather not written.
TEST(SettingsHeldNames, FileThatCannotBeHeldIsNotWritten)
{
    const SettingsFolder folder;
    const QByteArray before = "[ScannerA]\nbrightness=1\n";
    folder.write(before);
    QStringList names{holdName};
    for (int number = 1; number < 64; ++number) {
        names.append(holdName + QStringLiteral("-%1").arg(number));
    }
    for (const QString& name : names) {
        ASSERT_TRUE(QDir().mkdir(folder.filePath(name)));
    }
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_FALSE(saveSettings(*settings));
    EXPECT_EQ(folder.bytes(), before);
    for (const QString& name : names) {
        ASSERT_TRUE(QDir().rmdir(folder.filePath(name)));
    }
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
}

TEST(SettingsHeldNames, WhatAnotherSaveHoldsStaysHeldWhenTheFileIsOpened)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=1\n");
    const DirectoryLock others =
        DirectoryLock::ofFile(folder.filePath(), std::chrono::milliseconds::zero());
    ASSERT_TRUE(others.isHeld());
    const HeldFile held(folder.filePath());
    ASSERT_TRUE(held.isSafe());
    EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toString(), QStringLiteral("1"));
    EXPECT_TRUE(QFile::exists(folder.filePath(holdName)));
}

TEST(SettingsHeldNames, EmptyHeldFileTakesNobodysPlace)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=1\ncontrast=2");
    folder.write("", holdName);
    {
        const SettingsHandle settings = openSettings(folder.filePath());
        EXPECT_EQ(settings->value(keyA).toString(), QStringLiteral("1"));
    }
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=1\ncontrast=2");
    EXPECT_EQ(folder.files(), QStringList(QStringLiteral("ScannerA.ini")));
}

// Made by hand, without an end of its last line: nothing was written, so nothing can be lost.
TEST(SettingsHeldNames, FileThatIsNotChangedIsNotJudged)
{
    const SettingsFolder folder;
    const QByteArray before = "[ScannerA]\nbrightness=1";
    folder.write(before);
    const SettingsHandle settings = openSettings(folder.filePath());
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(folder.bytes(), before);
}
