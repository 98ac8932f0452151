// What a save could not write, for something that was in its way: it is tried again, and never by
// the toolkit alone.
#include "settings/settings_file.h"

#include "child_process.h"
#include "settings_folder.h"

#include <QCoreApplication>
#include <QTimer>

#include <sys/stat.h>
#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");
const QByteArray oldBytes = "[ScannerA]\nbrightness=1\n";
const QByteArray newBytes = "[ScannerA]\nbrightness=12\n";
constexpr std::chrono::milliseconds atOnce{0};

/// A file with a directory in place of the toolkit's lock file: it can't be saved.
class LeftOver : public testing::Test
{
protected:
    LeftOver() { folder.write(oldBytes); }

    void obstruct() const { ASSERT_TRUE(QDir().mkdir(lockPath())); }
    void clearTheWay() const { ASSERT_TRUE(QDir().rmdir(lockPath())); }

    SettingsHandle openWithLeftOver() const
    {
        SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(keyA, QStringLiteral("12"));
        obstruct();
        EXPECT_FALSE(saveSettings(*settings));
        return settings;
    }

    /// Runs @p test in a process with an application object, which hands out requests for a save.
    template <typename Test>
    static void withApplication(const Test& test)
    {
        inChildProcess([&test] {
            ::alarm(60); // nothing that works takes as long
            int count = 1;
            char name[] = "settings";
            char* arguments[] = {name, nullptr};
            QCoreApplication application(count, arguments);
            test(application);
        });
    }

    /// Runs an event loop that ends as soon as it is reached.
    static void quit(QCoreApplication& application)
    {
        QTimer::singleShot(0, &application, &QCoreApplication::quit);
        EXPECT_EQ(QCoreApplication::exec(), 0);
    }

    const SettingsFolder folder;

private:
    QString lockPath() const { return folder.filePath() + QStringLiteral(".lock"); }
};

} // namespace

TEST_F(LeftOver, IsWrittenOnceNothingIsInTheWay)
{
    inChildProcess([this] {
        const SettingsHandle settings = openWithLeftOver();
        saveLeftOvers(settings.get(), atOnce);
        EXPECT_EQ(folder.bytes(), oldBytes);
        clearTheWay();
        saveLeftOvers(settings.get(), atOnce);
        EXPECT_EQ(folder.bytes(), newBytes);
    });
}

TEST_F(LeftOver, FileThatHoldsEverythingIsNotTouched)
{
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    ASSERT_TRUE(saveSettings(*settings));
    struct stat before
    {
    };
    ASSERT_EQ(::stat(nameOf(folder).constData(), &before), 0);
    saveLeftOvers(settings.get(), atOnce);
    struct stat after
    {
    };
    ASSERT_EQ(::stat(nameOf(folder).constData(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mtim.tv_sec, before.st_mtim.tv_sec);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    // A save would bring it back.
    ASSERT_TRUE(QFile::remove(folder.filePath()));
    saveLeftOvers(settings.get(), atOnce);
    EXPECT_TRUE(folder.files().isEmpty());
}

TEST_F(LeftOver, IsWrittenWhenTheApplicationQuits)
{
    withApplication([this](QCoreApplication& application) {
        const SettingsHandle settings = openWithLeftOver();
        clearTheWay();
        quit(application);
        EXPECT_EQ(folder.bytes(), newBytes);
    });
}

TEST_F(LeftOver, OfAClosedObjectIsWrittenWhenTheApplicationQuits)
{
    withApplication([this](QCoreApplication& application) {
        openWithLeftOver().reset();
        clearTheWay();
        EXPECT_EQ(folder.bytes(), oldBytes);
        quit(application);
        EXPECT_EQ(folder.bytes(), newBytes);
    });
}

TEST_F(LeftOver, QuittingWithTheObstacleInPlaceHoldsNobodyUp)
{
    withApplication([this](QCoreApplication& application) {
        const SettingsHandle settings = openWithLeftOver();
        quit(application);
        EXPECT_EQ(folder.bytes(), oldBytes);
        clearTheWay();
        EXPECT_TRUE(saveSettings(*settings));
        EXPECT_EQ(folder.bytes(), newBytes);
    });
}

// A host may store something as its last act: no event loop follows that would save it.
TEST_F(LeftOver, ValueThatIsSetAtTheEndIsWrittenWhenTheApplicationQuits)
{
    withApplication([this](QCoreApplication& application) {
        SettingsHandle settings;
        QObject::connect(&application, &QCoreApplication::aboutToQuit, &application,
                         [&settings] { settings->setValue(keyA, QStringLiteral("12")); });
        settings = openSettings(folder.filePath());
        quit(application);
        EXPECT_EQ(folder.bytes(), newBytes);
    });
}

TEST_F(LeftOver, OfARequestThatCameWithAGroupOpenIsWritten)
{
    withApplication([this](QCoreApplication&) {
        const SettingsHandle settings = openSettings(folder.filePath());
        settings->beginGroup(QStringLiteral("ScannerA"));
        settings->setValue(QStringLiteral("brightness"), QStringLiteral("12"));
        QCoreApplication::sendPostedEvents();
        settings->endGroup();
        EXPECT_EQ(folder.bytes(), oldBytes);
        saveLeftOvers(settings.get(), atOnce);
        EXPECT_EQ(folder.bytes(), newBytes);
    });
}

// The toolkit's destructor would wait for its lock file without limit.
TEST_F(LeftOver, ClosingAfterARequestThatCameWithAGroupOpenIsGuarded)
{
    withApplication([this](QCoreApplication&) {
        SettingsHandle settings = openSettings(folder.filePath());
        settings->beginGroup(QStringLiteral("ScannerA"));
        settings->setValue(QStringLiteral("brightness"), QStringLiteral("12"));
        QCoreApplication::sendPostedEvents();
        settings->endGroup();
        obstruct();
        settings.reset();
        EXPECT_EQ(folder.bytes(), oldBytes);
        clearTheWay();
        EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toInt(), 12);
        EXPECT_EQ(folder.bytes(), newBytes);
    });
}
