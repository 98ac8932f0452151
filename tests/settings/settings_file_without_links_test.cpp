// A file system that gives a file one name only.
#include "settings/settings_file.h"

#include "child_process.h"
#include "refused_calls.h"
#include "settings_folder.h"

#include <csignal>

#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");
const QByteArray heldBytes = "[ScannerA]\nbrightness=1\n";
const QByteArray cutBytes = "[ScannerA]\nbrightn";

void leaveACutFile(const SettingsFolder& folder)
{
    folder.write(cutBytes);
    folder.write(heldBytes, QStringLiteral("ScannerA.ini.kestrel-hold"));
}

} // namespace

TEST(SettingsWithoutSecondNames, TheRefusalWorks)
{
    const SettingsFolder folder;
    folder.write(heldBytes);
    inChildProcess([&folder] {
        refuseSecondNames(false);
        EXPECT_NE(::link(nameOf(folder).constData(), (nameOf(folder) + ".2").constData()), 0);
        EXPECT_EQ(errno, EOPNOTSUPP);
        EXPECT_EQ(::rename(nameOf(folder).constData(), (nameOf(folder) + ".2").constData()), 0);
    });
}

TEST(SettingsWithoutSecondNames, AreSaved)
{
    const SettingsFolder folder;
    folder.write(heldBytes);
    inChildProcess([&folder] {
        refuseSecondNames(false);
        const SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(keyA, QStringLiteral("12"));
        EXPECT_TRUE(saveSettings(*settings));
    });
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
    EXPECT_EQ(folder.files(), QStringList(QStringLiteral("ScannerA.ini")));
}

TEST(SettingsWithoutSecondNames, CutFileComesBackFromTheHeldOneAndIsKeptAside)
{
    const SettingsFolder folder;
    leaveACutFile(folder);
    folder.write("first", QStringLiteral("ScannerA.ini.bad-1"));
    inChildProcess([&folder] {
        refuseSecondNames(false);
        EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toString(), QStringLiteral("1"));
    });
    EXPECT_EQ(folder.bytes(), heldBytes);
    EXPECT_EQ(folder.bytes(QStringLiteral("ScannerA.ini.bad-1")), "first");
    EXPECT_EQ(folder.bytes(QStringLiteral("ScannerA.ini.bad-2")), cutBytes);
    EXPECT_EQ(folder.files().size(), 3);
}

TEST(SettingsWithoutSecondNames, ProcessKilledWhileItRecoversLosesNothing)
{
    const SettingsFolder folder;
    leaveACutFile(folder);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        refuseSecondNames(true);
        openSettings(folder.filePath());
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "recovered without putting one file in another's place";
    EXPECT_EQ(WTERMSIG(status), SIGSYS);
    EXPECT_EQ(folder.bytes(), cutBytes) << "without a file in between";
    EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toString(), QStringLiteral("1"));
    EXPECT_EQ(folder.bytes(), heldBytes);
}
