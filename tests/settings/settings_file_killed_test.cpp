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

TEST(SettingsLeftByAKilledProcess, LongerFileStaysAndTheHeldOneGoes)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=12\n");
    folder.write("[ScannerA]\nbrightness=1\n", QStringLiteral("ScannerA.ini.kestrel-hold"));
    EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toString(), QStringLiteral("12"));
    EXPECT_EQ(folder.files(), QStringList(plainName));
}

// It looks whole, as one that lost its groups on purpose would: neither is thrown away.
TEST(SettingsLeftByAKilledProcess, HeldFileIsKeptAsideWhereTheOtherIsCutBetweenTwoLines)
{
    const QByteArray held = "[Office]\nsource=2\n\n[ScannerA]\nbrightness=1\ncontrast=3\n";
    for (const char* const cut : {"[Office]\nsource=2\n", "[Office]\nsource=2\n\n[ScannerA]\n",
                                  "[Office]\nsource=2\n\n[ScannerA]\nbrightness=1\n"}) {
        const SettingsFolder folder;
        folder.write(cut);
        folder.write(held, QStringLiteral("ScannerA.ini.kestrel-hold"));
        {
            const SettingsHandle settings = openSettings(folder.filePath());
            EXPECT_EQ(settings->value(QStringLiteral("Office/source")).toString(),
                      QStringLiteral("2"));
            EXPECT_FALSE(settings->contains(QStringLiteral("ScannerA/contrast")));
            settings->setValue(QStringLiteral("ScannerA/zoom"), QStringLiteral("5"));
            EXPECT_TRUE(saveSettings(*settings));
        }
        EXPECT_EQ(folder.bytes(QStringLiteral("ScannerA.ini.kestrel-hold.bad-1")), held);
        EXPECT_EQ(folder.files().size(), 2);
    }
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
    EXPECT_EQ(folder.files(), QStringList("ScannerA.ini.kestrel-hold.bad-1"));
}
