// What a process leaves behind that was killed while it saved.
#include "settings/settings_file.h"

#include "settings_folder.h"

#include <QDir>

#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");
const QString plainName = QStringLiteral("ScannerA.ini");

} // namespace

TEST(SettingsLeftByAKilledProcess, EmptyFileComesBackFromTheHeldOne)
{
    const SettingsFolder folder;
    folder.write("");
    folder.write("[ScannerA]\nbrightness=1\n", QStringLiteral("ScannerA.ini.kestrel-hold"));
    EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toString(), QStringLiteral("1"));
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=1\n");
    EXPECT_EQ(folder.files(), QStringList(plainName));
}

TEST(SettingsLeftByAKilledProcess, CutFileComesBackFromTheHeldOneAndIsKeptAside)
{
    for (const char* const cut : {"[ScannerA]\nbrightn", "[ScannerA]\nbrightness=7"}) {
        const SettingsFolder folder;
        folder.write(cut);
        folder.write("first", QStringLiteral("ScannerA.ini.bad-1"));
        folder.write("[ScannerA]\nbrightness=1\n", QStringLiteral("ScannerA.ini.kestrel-hold"));
        EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toString(), QStringLiteral("1"));
        EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=1\n");
        EXPECT_EQ(folder.bytes(QStringLiteral("ScannerA.ini.bad-1")), "first");
        EXPECT_EQ(folder.bytes(QStringLiteral("ScannerA.ini.bad-2")), cut);
        EXPECT_EQ(folder.files().size(), 3);
    }
}

TEST(SettingsLeftByAKilledProcess, FileHeldByALaterNameComesBack)
{
    const SettingsFolder folder;
    folder.write("");
    ASSERT_TRUE(QDir().mkdir(folder.filePath(QStringLiteral("ScannerA.ini.kestrel-hold"))));
    folder.write("[ScannerA]\nbrightness=1\n", QStringLiteral("ScannerA.ini.kestrel-hold-1"));
    EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toString(), QStringLiteral("1"));
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("ScannerA.ini.kestrel-hold-1"))));
    EXPECT_TRUE(QFileInfo(folder.filePath(QStringLiteral("ScannerA.ini.kestrel-hold"))).isDir());
}

TEST(SettingsLeftByAKilledProcess, WholeFileStaysAndTheHeldOneGoes)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=2\n");
    folder.write("[ScannerA]\nbrightness=1\n", QStringLiteral("ScannerA.ini.kestrel-hold"));
    EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toString(), QStringLiteral("2"));
    EXPECT_EQ(folder.files(), QStringList(plainName));
}

TEST(SettingsLeftByAKilledProcess, SecondNameOfTheSameFileGoes)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=2");
    ASSERT_EQ(::link(nameOf(folder).constData(), (nameOf(folder) + ".kestrel-hold").constData()),
              0);
    EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toString(), QStringLiteral("2"));
    EXPECT_EQ(folder.files(), QStringList(plainName));
}

TEST(SettingsLeftByAKilledProcess, RemovedFileStaysRemoved)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=1\n", QStringLiteral("ScannerA.ini.kestrel-hold"));
    EXPECT_TRUE(openSettings(folder.filePath())->allKeys().isEmpty());
    EXPECT_TRUE(folder.files().isEmpty());
}
