// Several processes at the same file.
#include "settings/directory_lock.h"
#include "settings/settings_file.h"

#include "child_process.h"
#include "settings_folder.h"
#include "watched_file.h"

#include <QProcess>

#include <chrono>
#include <memory>
#include <vector>

using namespace kestrel;
using namespace kestrel::test;

namespace {

constexpr int rounds = 15;

std::unique_ptr<QProcess> startWriter(const QString& path, const QString& group, int first)
{
    auto writer = std::make_unique<QProcess>();
    writer->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    writer->start(qEnvironmentVariable("KESTREL_SETTINGS_WRITER"),
                  {path, group, QString::number(first), QString::number(rounds)});
    EXPECT_TRUE(writer->waitForStarted()) << "KESTREL_SETTINGS_WRITER names no program";
    return writer;
}

} // namespace

TEST(SettingsProcesses, TwoWritersLoseNothingAndNobodySeesATornFile)
{
    const SettingsFolder folder;
    const QString groups[] = {QStringLiteral("A"), QStringLiteral("B")};
    const std::unique_ptr<QProcess> writers[] = {startWriter(folder.filePath(), groups[0], 1000),
                                                 startWriter(folder.filePath(), groups[1], 2000)};
    int looks = 0;
    while (writers[0]->state() != QProcess::NotRunning ||
           writers[1]->state() != QProcess::NotRunning) {
        const QByteArray content = contentOf(folder.filePath());
        EXPECT_NE(commonNumber(content, groups[0]), -2) << content.constData();
        EXPECT_NE(commonNumber(content, groups[1]), -2) << content.constData();
        ++looks;
        for (const auto& writer : writers) {
            writer->waitForFinished(1);
        }
    }
    for (const auto& writer : writers) {
        EXPECT_EQ(writer->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(writer->exitCode(), 0);
    }
    EXPECT_GT(looks, 0);
    const QByteArray content = contentOf(folder.filePath());
    EXPECT_EQ(commonNumber(content, groups[0]), 1000 + rounds - 1);
    EXPECT_EQ(commonNumber(content, groups[1]), 2000 + rounds - 1);
    EXPECT_EQ(folder.files(), QStringList(QStringLiteral("ScannerA.ini")));
}

TEST(SettingsProcesses, WritersOfTheSameGroupLeaveOneOfTheirStates)
{
    const SettingsFolder folder;
    const QString group = QStringLiteral("A");
    const std::unique_ptr<QProcess> writers[] = {startWriter(folder.filePath(), group, 1000),
                                                 startWriter(folder.filePath(), group, 2000)};
    for (const auto& writer : writers) {
        EXPECT_TRUE(writer->waitForFinished(-1) || writer->state() == QProcess::NotRunning);
        EXPECT_EQ(writer->exitCode(), 0);
    }
    const int number = commonNumber(contentOf(folder.filePath()), group);
    EXPECT_TRUE(number == 1000 + rounds - 1 || number == 2000 + rounds - 1) << number;
}

TEST(SettingsProcesses, WriterThroughALinkAndWriterOfItsTargetLoseNothing)
{
    const SettingsFolder folder;
    const SettingsFolder elsewhere;
    const QString target = elsewhere.filePath(QStringLiteral("real.ini"));
    elsewhere.write("[Old]\nk=1\n", QStringLiteral("real.ini"));
    ASSERT_TRUE(QFile::link(target, folder.filePath()));
    const QString groups[] = {QStringLiteral("A"), QStringLiteral("B")};
    const std::unique_ptr<QProcess> writers[] = {startWriter(folder.filePath(), groups[0], 1000),
                                                 startWriter(target, groups[1], 2000)};
    for (const auto& writer : writers) {
        EXPECT_TRUE(writer->waitForFinished(-1) || writer->state() == QProcess::NotRunning);
        EXPECT_EQ(writer->exitCode(), 0);
    }
    const QByteArray content = contentOf(target);
    EXPECT_EQ(commonNumber(content, groups[0]), 1000 + rounds - 1);
    EXPECT_EQ(commonNumber(content, groups[1]), 2000 + rounds - 1);
    EXPECT_TRUE(QFileInfo(folder.filePath()).isSymLink());
    EXPECT_EQ(elsewhere.files(), QStringList(QStringLiteral("real.ini")));
}

// A save that waited for the other without limit would be ended by the alarm.
TEST(SettingsProcesses, SaveInAFolderThatAnotherProcessKeepsLockedEndsAndFails)
{
    const SettingsFolder folder;
    const DirectoryLock others(QFileInfo(folder.filePath()).path(),
                               std::chrono::milliseconds::zero());
    ASSERT_TRUE(others.isHeld());
    inChildProcess([&folder] {
        ::alarm(60);
        const SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(QStringLiteral("A/b"), QStringLiteral("1"));
        EXPECT_FALSE(saveSettings(*settings));
    });
    EXPECT_TRUE(folder.files().isEmpty());
}
