#include "settings/toolkit_lock.h"

#include "settings/directory_lock.h"
#include "settings/guarded_save.h"
#include "settings/settings_file.h"

#include "child_process.h"
#include "refused_calls.h"
#include "settings_folder.h"
#include "support/messages.h"

#include <QDateTime>
#include <QDir>
#include <QLockFile>

#include <chrono>
#include <csignal>
#include <memory>
#include <utility>

#include <sys/wait.h>
#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QDeadlineTimer expired(0);

QString lockPathIn(const SettingsFolder& folder)
{
    return folder.filePath() + QStringLiteral(".lock");
}

} // namespace

TEST(ToolkitLock, IsFreeAndLeavesNothingBehind)
{
    const SettingsFolder folder;
    EXPECT_TRUE(canTakeToolkitLock(folder.filePath(), expired));
    EXPECT_TRUE(folder.files().isEmpty());
}

TEST(ToolkitLock, AnotherHoldersCantBeTaken)
{
    const SettingsFolder folder;
    QLockFile lock(lockPathIn(folder));
    ASSERT_TRUE(lock.tryLock(0));
    EXPECT_FALSE(canTakeToolkitLock(folder.filePath(), expired));
    EXPECT_FALSE(canTakeToolkitLock(folder.filePath(), std::chrono::milliseconds(20)));
    lock.unlock();
    EXPECT_TRUE(canTakeToolkitLock(folder.filePath(), expired));
}

TEST(ToolkitLock, HoldersThatTakesItsTimeKeepsIt)
{
    const SettingsFolder folder;
    QLockFile lock(lockPathIn(folder));
    ASSERT_TRUE(lock.tryLock(0));
    QFile file(lockPathIn(folder));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-2),
                                 QFileDevice::FileModificationTime));
    file.close();
    EXPECT_FALSE(canTakeToolkitLock(folder.filePath(), expired));
    EXPECT_TRUE(QFile::exists(lockPathIn(folder)));
    lock.unlock();
    EXPECT_TRUE(folder.files().isEmpty());
}

TEST(ToolkitLock, WhatIsNoFileCantBeTaken)
{
    const SettingsFolder folder;
    ASSERT_TRUE(QDir().mkdir(lockPathIn(folder)));
    EXPECT_FALSE(canTakeToolkitLock(folder.filePath(), QDeadlineTimer::Forever));
    ASSERT_TRUE(QDir().rmdir(lockPathIn(folder)));
    ASSERT_TRUE(QFile::link(QStringLiteral("nowhere"), lockPathIn(folder)));
    EXPECT_FALSE(canTakeToolkitLock(folder.filePath(), QDeadlineTimer::Forever));
    EXPECT_FALSE(canTakeToolkitLock(folder.filePath(QStringLiteral("no/folder.ini")),
                                    QDeadlineTimer::Forever));
}

TEST(ToolkitLock, OneThatNobodyHasSignedGoesAtTheFirstTry)
{
    for (const int seconds : {-2, 20}) { // the second one: the clock has been set back since
        const SettingsFolder folder;
        folder.write("", QStringLiteral("ScannerA.ini.lock"));
        QFile lock(lockPathIn(folder));
        ASSERT_TRUE(lock.open(QIODevice::ReadWrite));
        ASSERT_TRUE(lock.setFileTime(QDateTime::currentDateTime().addSecs(seconds),
                                     QFileDevice::FileModificationTime));
        lock.close();
        EXPECT_TRUE(canTakeToolkitLock(folder.filePath(), expired)) << seconds;
    }
}

// Too young at the first try to tell whether its process was killed.
TEST(ToolkitLock, OneThatNobodySignsMeanwhileGoesWhileOthersAreWaitedFor)
{
    const SettingsFolder folder;
    folder.write("", QStringLiteral("ScannerA.ini.lock"));
    EXPECT_TRUE(canTakeToolkitLock(folder.filePath(), std::chrono::seconds(20)));
}

// As on a disk that has become read-only: the toolkit would wait for itself, without limit.
TEST(ToolkitLock, OwnOneThatCantBeRemovedCantBeTaken)
{
    const SettingsFolder folder;
    inChildProcess([&folder] {
        refuseRemovals();
        const ExpectedWarnings stuck(QStringLiteral("remove our own lock file"));
        EXPECT_FALSE(canTakeToolkitLock(folder.filePath(), expired));
    });
    EXPECT_TRUE(QFile::exists(lockPathIn(folder)));
}

TEST(ToolkitLock, ThatOfAnEndedProcessIsTaken)
{
    const SettingsFolder folder;
    inChildProcess([&folder] {
        auto* const lock = new QLockFile(lockPathIn(folder));
        EXPECT_TRUE(lock->tryLock(0));
    });
    ASSERT_EQ(folder.files().size(), 1);
    EXPECT_TRUE(canTakeToolkitLock(folder.filePath(), expired));
}

TEST(ToolkitLock, ProcessThatEndedWhileItRemovedALockBlocksNobody)
{
    const SettingsFolder folder;
    inChildProcess([&folder] {
        auto* const lock = new QLockFile(lockPathIn(folder));
        EXPECT_TRUE(lock->tryLock(0));
    });
    QFile second(lockPathIn(folder) + QStringLiteral(".rmlock"));
    ASSERT_TRUE(second.open(QIODevice::WriteOnly));
    ASSERT_TRUE(second.setFileTime(QDateTime::currentDateTime().addSecs(-2),
                                   QFileDevice::FileModificationTime));
    second.close();
    EXPECT_TRUE(canTakeToolkitLock(folder.filePath(), expired));
}

TEST(DirectoryLock, IsFreeAgainAlthoughAForkedChildHasItToo)
{
    const SettingsFolder folder;
    const QString directory = QFileInfo(folder.filePath()).path();
    auto lock = std::make_unique<DirectoryLock>(directory, expired);
    ASSERT_TRUE(lock->isHeld());
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ::pause();
        ::_exit(0);
    }
    lock.reset();
    EXPECT_TRUE(DirectoryLock(directory, expired).isHeld());
    ::kill(child, SIGKILL);
    EXPECT_EQ(::waitpid(child, nullptr, 0), child);
}

TEST(DirectoryLock, LinkToAFileAndTheFileHaveOne)
{
    const SettingsFolder folder;
    const SettingsFolder elsewhere;
    const QString target = elsewhere.filePath(QStringLiteral("real.ini"));
    elsewhere.write("", QStringLiteral("real.ini"));
    ASSERT_TRUE(QFile::link(target, folder.filePath()));
    for (const auto& [first, second] :
         {std::pair(folder.filePath(), target), std::pair(target, folder.filePath())}) {
        const DirectoryLock lock = DirectoryLock::ofFile(first, expired);
        EXPECT_TRUE(lock.isHeld());
        EXPECT_FALSE(DirectoryLock::ofFile(second, expired).isHeld());
    }
}

TEST(ToolkitLock, SaveWithoutTimeTriesEachLockOnce)
{
    const SettingsFolder folder;
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(QStringLiteral("ScannerA/brightness"), QStringLiteral("12"));
    {
        const DirectoryLock others(QFileInfo(folder.filePath()).path(), expired);
        ASSERT_TRUE(others.isHeld());
        EXPECT_EQ(saveGuarded(*settings, {}, expired), SaveOutcome::Failed);
    }
    QLockFile lock(lockPathIn(folder));
    ASSERT_TRUE(lock.tryLock(0));
    EXPECT_EQ(saveGuarded(*settings, {}, expired), SaveOutcome::Failed);
    lock.unlock();
    EXPECT_EQ(saveGuarded(*settings, {}, expired), SaveOutcome::Complete);
    EXPECT_EQ(folder.bytes(), "[ScannerA]\nbrightness=12\n");
}
