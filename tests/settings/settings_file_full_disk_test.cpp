// Saving when there is no room: on a file system of sixteen pages, mounted in a namespace of the
// test's own, and with a limit on the size of files.
#include "settings/settings_file.h"

#include "child_process.h"
#include "no_room.h"
#include "settings_folder.h"

#include <csignal>

using namespace kestrel;
using namespace kestrel::test;

namespace {

constexpr int keyCount = 200;

QString keyNamed(int number)
{
    return QStringLiteral("ScannerA/setting_with_a_long_name_%1").arg(number);
}

void setAll(QSettings& settings, const QString& value)
{
    for (int i = 0; i < keyCount; ++i) {
        settings.setValue(keyNamed(i), value);
    }
}

Values allWith(const QString& value)
{
    Values values;
    for (int i = 0; i < keyCount; ++i) {
        values.insert(keyNamed(i), value);
    }
    return values;
}

bool saveWithin(rlim_t bytes, QSettings& settings)
{
    const FileSizeLimit limit(bytes);
    return saveSettings(settings);
}

struct Outcome
{
    bool saved;
    Values after;
};

/// What a save reports must be what the next start finds: all of the new values, or the old file.
void expectOldOrNew(const Outcome& outcome, const Values& old)
{
    if (outcome.saved) {
        EXPECT_EQ(outcome.after, allWith(QStringLiteral("new")));
    } else {
        EXPECT_EQ(outcome.after, old);
    }
}

} // namespace

TEST(SettingsOnAFullDisk, OldFileOrNewFileAtEveryNumberOfFreePages)
{
    const SettingsFolder folder;
    const QString mount = QFileInfo(folder.filePath()).path();
    const QString report = QFileInfo(mount).path() + QStringLiteral("/report-%1").arg(::getpid());
    for (int freePages = 0; freePages <= pages; ++freePages) {
        inChildProcess([&] {
            mountTinyDisk(mount);
            if (testing::Test::HasFatalFailure()) {
                return;
            }
            const SettingsHandle settings = openSettings(folder.filePath());
            setAll(*settings, QStringLiteral("old"));
            ASSERT_TRUE(saveSettings(*settings));
            fill(mount, freePages);
            setAll(*settings, QStringLiteral("new"));
            const bool saved = saveSettings(*settings);
            expectOldOrNew({saved, readAfterRestart(folder.filePath())},
                           allWith(QStringLiteral("old")));
            EXPECT_EQ(settings->value(keyNamed(0)).toString(), QStringLiteral("new"));
            EXPECT_EQ(folder.files().size(), 2)
                << folder.files().join(QLatin1Char(' ')).toStdString();
            // What could not be written is not forgotten.
            ASSERT_TRUE(QFile::remove(mount + QStringLiteral("/filler")));
            EXPECT_TRUE(saveSettings(*settings));
            EXPECT_EQ(readAfterRestart(folder.filePath()), allWith(QStringLiteral("new")));
            QFile file(report);
            ASSERT_TRUE(file.open(QIODevice::Append));
            file.write(saved ? "n" : "o");
        });
    }
    QFile file(report);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray outcomes = file.readAll();
    file.remove();
    EXPECT_EQ(outcomes.size(), pages + 1);
    EXPECT_GE(outcomes.count('o'), 1) << "the disk was never full: nothing was tested";
    EXPECT_GE(outcomes.count('n'), 1) << "the disk was always full";
}

TEST(SettingsOnAFullDisk, FirstSaveLeavesAWholeFileOrNone)
{
    const SettingsFolder folder;
    const QString mount = QFileInfo(folder.filePath()).path();
    for (int freePages = 0; freePages <= pages; ++freePages) {
        inChildProcess([&] {
            mountTinyDisk(mount);
            if (testing::Test::HasFatalFailure()) {
                return;
            }
            fill(mount, freePages);
            const SettingsHandle settings = openSettings(folder.filePath());
            setAll(*settings, QStringLiteral("new"));
            const bool saved = saveSettings(*settings);
            expectOldOrNew({saved, readAfterRestart(folder.filePath())}, {});
            EXPECT_EQ(QFile::exists(folder.filePath()), saved);
            EXPECT_EQ(settings->value(keyNamed(0)).toString(), QStringLiteral("new"));
        });
    }
}

TEST(SettingsOnAFullDisk, RemovedGroupStaysRemovedInMemoryAndIsRemovedLater)
{
    const SettingsFolder folder;
    const QString mount = QFileInfo(folder.filePath()).path();
    for (int freePages = 0; freePages <= 4; ++freePages) {
        inChildProcess([&] {
            mountTinyDisk(mount);
            if (testing::Test::HasFatalFailure()) {
                return;
            }
            const SettingsHandle settings = openSettings(folder.filePath());
            setAll(*settings, QStringLiteral("old"));
            settings->setValue(QStringLiteral("Office/source"), QStringLiteral("1"));
            ASSERT_TRUE(saveSettings(*settings));
            fill(mount, freePages);
            settings->remove(QStringLiteral("Office"));
            saveSettings(*settings);
            EXPECT_FALSE(settings->contains(QStringLiteral("Office/source")));
            ASSERT_TRUE(QFile::remove(mount + QStringLiteral("/filler")));
            EXPECT_TRUE(saveSettings(*settings));
            EXPECT_EQ(readAfterRestart(folder.filePath()), allWith(QStringLiteral("old")));
        });
    }
}

TEST(SettingsOnAFullDisk, OldFileOrNewFileAtEveryLimitOfSize)
{
    const SettingsFolder folder;
    for (const rlim_t limit :
         {0, 1, 20, 100, 511, 512, 1000, 4095, 4096, 4097, 8000, 8192, 9000, 9600, 20000, 60000}) {
        inChildProcess([&] {
            const QString path = folder.filePath(QString::number(limit));
            const SettingsHandle settings = openSettings(path);
            setAll(*settings, QStringLiteral("old"));
            ASSERT_TRUE(saveSettings(*settings));
            setAll(*settings, QStringLiteral("new"));
            const bool saved = saveWithin(limit, *settings);
            expectOldOrNew({saved, readAfterRestart(path)}, allWith(QStringLiteral("old")));
            // Old and new file are of the same size.
            const auto size = static_cast<rlim_t>(QFileInfo(path).size());
            EXPECT_EQ(saved, limit >= size) << "limit " << limit << ", size " << size;
        });
    }
}

// Also where the file ends just before the new group, or with a line of it.
TEST(SettingsOnAFullDisk, NewGroupIsMissedAtEveryLimitOfSizeThatCutsIt)
{
    const SettingsFolder folder;
    // The limit holds for the toolkit's small lock file, too.
    const QString filler(1000, QLatin1Char('x'));
    const QByteArray added("\n[Zoo]\nb=2\nc=3\n");
    for (int room = 0; room <= added.size(); ++room) {
        inChildProcess([&] {
            const QString path = folder.filePath(QString::number(room));
            const SettingsHandle settings = openSettings(path);
            settings->setValue(QStringLiteral("Alpha/a"), filler);
            ASSERT_TRUE(saveSettings(*settings));
            settings->setValue(QStringLiteral("Zoo/b"), QStringLiteral("2"));
            settings->setValue(QStringLiteral("Zoo/c"), QStringLiteral("3"));
            const bool isSaved = [&] {
                const FileSizeLimit limit(static_cast<rlim_t>(QFileInfo(path).size() + room));
                return saveSettings(*settings, {QStringLiteral("Zoo")});
            }();
            EXPECT_EQ(isSaved, room == added.size()) << room;
            EXPECT_EQ(readAfterRestart(path).size(), isSaved ? 3 : 1) << room;
            // Whatever is told now: nothing of what was refused is forgotten.
            EXPECT_TRUE(saveSettings(*settings, {QStringLiteral("Alpha")}));
            EXPECT_EQ(readAfterRestart(path).size(), 3) << room;
        });
    }
}

TEST(SettingsOnAFullDisk, SignalsOfTheHostAreAsBefore)
{
    const SettingsFolder folder;
    inChildProcess([&] {
        const SettingsHandle settings = openSettings(folder.filePath());
        setAll(*settings, QStringLiteral("old"));
        EXPECT_FALSE(saveWithin(100, *settings));
        sigset_t mask{};
        ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, nullptr, &mask), 0);
        EXPECT_EQ(sigismember(&mask, SIGXFSZ), 0);
        ASSERT_EQ(::sigpending(&mask), 0);
        EXPECT_EQ(sigismember(&mask, SIGXFSZ), 0);
    });
}
