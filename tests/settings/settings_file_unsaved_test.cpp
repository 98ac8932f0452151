// Opening a file again while something that belongs into it could not be saved: the toolkit would
// write it at once, unchecked, and wait for its lock file without limit.
#include "settings/directory_lock.h"
#include "settings/settings_file.h"

#include "child_process.h"
#include "no_room.h"
#include "settings_folder.h"

#include <QCoreApplication>
#include <QLockFile>

#include <functional>
#include <memory>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");
const QString keyB = QStringLiteral("ScannerA/contrast");
const QByteArray oldBytes = "[ScannerA]\nbrightness=1\n";

// Only to end what would never end; nothing that works takes as long.
constexpr unsigned secondsUntilHung = 60;

class SettingsUnsaved : public testing::Test
{
protected:
    SettingsUnsaved() { folder.write(oldBytes); }

    QString lockPath() const { return folder.filePath() + QStringLiteral(".lock"); }

    /// The second object that is opened holds what the first could not save.
    void expectSharedAndSavedOnceThereIsAWay(const std::function<void()>& clearTheWay)
    {
        ::alarm(secondsUntilHung);
        SettingsHandle first = openSettings(folder.filePath());
        first->setValue(keyA, QStringLiteral("12"));
        EXPECT_FALSE(saveSettings(*first));
        const SettingsHandle second = openSettings(folder.filePath());
        EXPECT_EQ(second->value(keyA).toString(), QStringLiteral("12"));
        second->setValue(keyB, QStringLiteral("13"));
        EXPECT_EQ(first->value(keyB).toString(), QStringLiteral("13"));
        first.reset();
        EXPECT_EQ(second->value(keyA).toString(), QStringLiteral("12"));
        EXPECT_EQ(folder.bytes(), oldBytes);
        clearTheWay();
        EXPECT_TRUE(saveSettings(*second));
        EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\ncontrast=13\n");
    }

    const SettingsFolder folder;
};

} // namespace

TEST_F(SettingsUnsaved, DirectoryInPlaceOfTheLockFileHoldsNobodyUp)
{
    inChildProcess([this] {
        ASSERT_TRUE(QDir().mkdir(lockPath()));
        expectSharedAndSavedOnceThereIsAWay([this] { ASSERT_TRUE(QDir().rmdir(lockPath())); });
    });
}

TEST_F(SettingsUnsaved, LockFileOfALivingProcessHoldsNobodyUp)
{
    QLockFile lockOfAnother(lockPath());
    ASSERT_TRUE(lockOfAnother.tryLock(0));
    inChildProcess([this] {
        expectSharedAndSavedOnceThereIsAWay([this] { ASSERT_TRUE(QFile::remove(lockPath())); });
    });
    // Unlocking expects it.
    folder.write("", QStringLiteral("ScannerA.ini.lock"));
}

TEST_F(SettingsUnsaved, LockFileOfThisProcessHoldsNobodyUp)
{
    inChildProcess([this] {
        QLockFile lock(lockPath());
        ASSERT_TRUE(lock.tryLock(0));
        expectSharedAndSavedOnceThereIsAWay([&lock] { lock.unlock(); });
    });
}

TEST_F(SettingsUnsaved, ClosedObjectsValuesAreThereAgainAndReachTheFileLater)
{
    inChildProcess([this] {
        ::alarm(secondsUntilHung);
        ASSERT_TRUE(QDir().mkdir(lockPath()));
        for (int round = 0; round < 3; ++round) {
            const SettingsHandle settings = openSettings(folder.filePath());
            EXPECT_EQ(settings->value(keyA).toInt(), round == 0 ? 1 : 11 + round);
            settings->setValue(keyA, QString::number(12 + round));
        }
        EXPECT_EQ(folder.bytes(), oldBytes);
        ASSERT_TRUE(QDir().rmdir(lockPath()));
        EXPECT_EQ(openSettings(folder.filePath())->value(keyA).toInt(), 14);
        EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=14\n");
    });
}

TEST_F(SettingsUnsaved, LimitOnTheSizeOfFilesDoesNotEndTheHost)
{
    inChildProcess([this] {
        const SettingsHandle first = openSettings(folder.filePath());
        first->setValue(keyA, QStringLiteral("12"));
        std::signal(SIGXFSZ, SIG_DFL); // whoever tries to write more is ended
        limitFiles(10);
        EXPECT_FALSE(saveSettings(*first));
        const SettingsHandle second = openSettings(folder.filePath());
        EXPECT_EQ(second->value(keyA).toString(), QStringLiteral("12"));
        EXPECT_EQ(folder.bytes(), oldBytes);
        limitFiles(RLIM_INFINITY);
        EXPECT_TRUE(saveSettings(*second));
        EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
    });
}

TEST_F(SettingsUnsaved, FolderThatAnotherProcessHoldsIsNotWrittenByOpening)
{
    inChildProcess([this] {
        const SettingsHandle first = openSettings(folder.filePath());
        first->setValue(keyA, QStringLiteral("12"));
        auto others = std::make_unique<DirectoryLock>(QFileInfo(folder.filePath()).path(),
                                                      std::chrono::milliseconds::zero());
        ASSERT_TRUE(others->isHeld());
        const SettingsHandle second = openSettings(folder.filePath());
        EXPECT_EQ(second->value(keyA).toString(), QStringLiteral("12"));
        EXPECT_EQ(folder.bytes(), oldBytes);
        others.reset();
        EXPECT_TRUE(saveSettings(*second));
        EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
    });
}

TEST_F(SettingsUnsaved, WhatIsRequestedIsStillSavedByTheEventLoop)
{
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    const SettingsHandle first = openSettings(folder.filePath());
    first->setValue(keyA, QStringLiteral("12"));
    SettingsHandle second;
    {
        const DirectoryLock others(QFileInfo(folder.filePath()).path(),
                                   std::chrono::milliseconds::zero());
        ASSERT_TRUE(others.isHeld());
        second = openSettings(folder.filePath());
    }
    EXPECT_EQ(folder.bytes(), oldBytes);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
}

TEST_F(SettingsUnsaved, ChangesOfOthersAreSeenByWhoOpensAgain)
{
    inChildProcess([this] {
        ::alarm(secondsUntilHung);
        ASSERT_TRUE(QDir().mkdir(lockPath()));
        const SettingsHandle first = openSettings(folder.filePath());
        first->setValue(keyA, QStringLiteral("12"));
        EXPECT_FALSE(saveSettings(*first));
        ASSERT_TRUE(QDir().rmdir(lockPath()));
        folder.write("[ScannerA]\nbrightness=1\ncontrast=1234\n");
        const SettingsHandle second = openSettings(folder.filePath());
        EXPECT_EQ(second->value(keyA).toString(), QStringLiteral("12"));
        EXPECT_EQ(second->value(keyB).toString(), QStringLiteral("1234"));
        EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\ncontrast=1234\n");
    });
}

// The file holds everything all the same, but the toolkit still wants to write.
TEST_F(SettingsUnsaved, FailedWriteOfTheSameValuesIsNotMadeUpForByOpening)
{
    const QByteArray directory = QFile::encodeName(QFileInfo(folder.filePath()).path());
    ASSERT_EQ(::chmod(directory.constData(), 0777), 0);
    ASSERT_TRUE(QFile::remove(folder.filePath()));
    inChildProcess([this] {
        int argc = 1;
        char name[] = "test";
        char* argv[] = {name, nullptr};
        const QCoreApplication application(argc, argv);
        ::alarm(secondsUntilHung);
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0) {
            ASSERT_EQ(::seteuid(nobody), 0);
        }
        folder.write(oldBytes);
        ASSERT_EQ(::chmod(nameOf(folder).constData(), 0444), 0);
        SettingsHandle first = openSettings(folder.filePath());
        first->setValue(keyA, QStringLiteral("1"));
        EXPECT_TRUE(saveSettings(*first));
        first.reset();
        ASSERT_EQ(::chmod(nameOf(folder).constData(), 0644), 0);
        ASSERT_TRUE(QDir().mkdir(lockPath()));
        const SettingsHandle second = openSettings(folder.filePath());
        EXPECT_EQ(second->value(keyA).toString(), QStringLiteral("1"));
        EXPECT_EQ(folder.bytes(), oldBytes);
    });
}

TEST_F(SettingsUnsaved, ObjectsWithNothingUnsavedAreTwo)
{
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    const SettingsHandle first = openSettings(folder.filePath());
    first->beginGroup(QStringLiteral("ScannerA"));
    const SettingsHandle second = openSettings(folder.filePath());
    EXPECT_EQ(second->group(), QString());
    first->endGroup();
}
