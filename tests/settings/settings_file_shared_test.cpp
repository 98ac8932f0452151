// Two objects on one file, as two dialogs have them, or a dialog and its manager of templates: the
// toolkit keeps what either has written in one place, and a save of one writes for both.
#include "settings/settings_file.h"

#include "child_process.h"
#include "no_room.h"
#include "settings_folder.h"

#include <QCoreApplication>

#include <csignal>

#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyOfFirst = QStringLiteral("Zulu/brightness");
const QString keyOfSecond = QStringLiteral("Alpha/brightness");
const QStringList groupOfFirst{QStringLiteral("Zulu")};
const QStringList groupOfSecond{QStringLiteral("Alpha")};

/// Large enough that the toolkit's lock file fits under a limit of its size.
const QByteArray oldBytes =
    "[Alpha]\nbrightness=1\n\n[Filler]\ntext=" + QByteArray(3000, 'x') + '\n';

/// Runs @p test in a process with an application object, because requests for a save are events.
template <typename Test>
void withApplication(const Test& test)
{
    inChildProcess([&test] {
        int count = 1;
        char name[] = "settings";
        char* arguments[] = {name, nullptr};
        const QCoreApplication application(count, arguments);
        test();
    });
}

class SharedSettings : public testing::Test
{
protected:
    SharedSettings() { folder.write(oldBytes); }

    void expectBothConfirmed() const
    {
        const Values after = readAfterRestart(folder.filePath());
        EXPECT_EQ(after.value(keyOfFirst).toString(), QStringLiteral("2"));
        EXPECT_EQ(after.value(keyOfSecond).toString(), QStringLiteral("3"));
        EXPECT_EQ(after.size(), 3);
    }

    SettingsFolder folder;
};

} // namespace

// The file may grow to just before the first one's group.
TEST_F(SharedSettings, SaveAfterTheOthersFailedOneDoesNotForgetTheOther)
{
    withApplication([this] {
        const SettingsHandle first = openSettings(folder.filePath());
        const SettingsHandle second = openSettings(folder.filePath());
        limitFiles(static_cast<rlim_t>(oldBytes.size()));
        first->setValue(keyOfFirst, QStringLiteral("2"));
        EXPECT_FALSE(saveSettings(*first, groupOfFirst));
        second->setValue(keyOfSecond, QStringLiteral("3"));
        EXPECT_FALSE(saveSettings(*second, groupOfSecond));
        EXPECT_EQ(folder.bytes(), oldBytes);
        limitFiles(RLIM_INFINITY);
        EXPECT_TRUE(saveSettings(*second, groupOfSecond));
    });
    expectBothConfirmed();
}

TEST_F(SharedSettings, SaveWhileTheOthersIsPendingDoesNotForgetTheOther)
{
    withApplication([this] {
        const SettingsHandle first = openSettings(folder.filePath());
        const SettingsHandle second = openSettings(folder.filePath());
        limitFiles(static_cast<rlim_t>(oldBytes.size()));
        first->setValue(keyOfFirst, QStringLiteral("2"));
        second->setValue(keyOfSecond, QStringLiteral("3"));
        EXPECT_FALSE(saveSettings(*second, groupOfSecond));
        EXPECT_EQ(folder.bytes(), oldBytes);
        limitFiles(RLIM_INFINITY);
        // The first one's own request is still on its way.
        QCoreApplication::processEvents();
        EXPECT_TRUE(folder.bytes().contains("[Zulu]\nbrightness=2\n"));
    });
    expectBothConfirmed();
}

TEST_F(SharedSettings, ClosingOneThatTheOtherSavedForIsChecked)
{
    withApplication([this] {
        ::alarm(60); // nothing that works takes as long
        SettingsHandle first = openSettings(folder.filePath());
        const SettingsHandle second = openSettings(folder.filePath());
        limitFiles(static_cast<rlim_t>(oldBytes.size()));
        first->setValue(keyOfFirst, QStringLiteral("2"));
        EXPECT_FALSE(saveSettings(*first, groupOfFirst));
        limitFiles(RLIM_INFINITY);
        EXPECT_TRUE(saveSettings(*second, groupOfSecond));
        const QByteArray saved = folder.bytes();
        // The toolkit asks for no save of this: it takes one for pending since the first failed.
        first->setValue(keyOfFirst, QStringLiteral("4"));
        ASSERT_TRUE(QDir().mkdir(folder.filePath() + QStringLiteral(".lock")));
        first.reset(); // the toolkit would wait for its lock file without limit
        EXPECT_EQ(folder.bytes(), saved);
    });
}

TEST_F(SharedSettings, SaveOfOneConfirmsWhatTheOtherCouldNotSave)
{
    withApplication([this] {
        const SettingsHandle first = openSettings(folder.filePath());
        const SettingsHandle second = openSettings(folder.filePath());
        limitFiles(static_cast<rlim_t>(oldBytes.size()));
        first->setValue(keyOfFirst, QStringLiteral("2"));
        EXPECT_FALSE(saveSettings(*first, groupOfFirst));
        limitFiles(RLIM_INFINITY);
        second->setValue(keyOfSecond, QStringLiteral("3"));
        EXPECT_TRUE(saveSettings(*second, groupOfSecond));
        EXPECT_TRUE(folder.bytes().contains("[Zulu]\nbrightness=2\n"));
    });
    expectBothConfirmed();
}

TEST_F(SharedSettings, UnchangedSaveSaysNoWhileTheOthersValueIsNotInTheFile)
{
    withApplication([this] {
        const SettingsHandle first = openSettings(folder.filePath());
        const SettingsHandle second = openSettings(folder.filePath());
        limitFiles(100); // room for the lock file
        first->setValue(keyOfFirst, QStringLiteral("2"));
        EXPECT_FALSE(saveSettings(*first, groupOfFirst));
        second->setValue(keyOfSecond, QStringLiteral("1"));
        EXPECT_FALSE(saveSettings(*second, groupOfSecond));
        limitFiles(RLIM_INFINITY);
        second->setValue(keyOfSecond, QStringLiteral("3"));
        EXPECT_TRUE(saveSettings(*second, groupOfSecond));
    });
    expectBothConfirmed();
}
