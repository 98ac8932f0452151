// Whatever allocation of a save fails, the toolkit's own among them: the file is the old one or the
// new one, and nothing that was not written is called saved. Every third one fails in turn;
// KESTREL_RELIABILITY=full takes each.
#include "settings/settings_file.h"

#include "child_process.h"
#include "no_room.h"
#include "settings_folder.h"
#include "support/failing_malloc.h"

#include <array>
#include <new>

#include <fcntl.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QStringList group{QStringLiteral("ScannerA")};
const QString key = QStringLiteral("ScannerA/zoom");
const QByteArray oldBytes = "[ScannerA]\nfill=" + QByteArray(1000, 'x') + "\nzoom=1\n";
const QByteArray newBytes = "[ScannerA]\nfill=" + QByteArray(1000, 'x') + "\nzoom=2\n";

/// How a save in a process of its own has ended.
enum class End : char
{
    Saved,
    Refused,
    Thrown,
    Never, ///< the toolkit ended the process
};

struct Outcome
{
    End end = End::Never;
    long allocations = 0;
};

Outcome saveOnce(const SettingsFolder& folder, rlim_t largest)
{
    Outcome outcome;
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(key, QStringLiteral("2"));
    const FileSizeLimit limit(largest);
    Allocations::isCounting = true;
    try {
        const bool isSaved = saveSettings(*settings, group);
        Allocations::isCounting = false;
        outcome.end = isSaved ? End::Saved : End::Refused;
    } catch (const std::bad_alloc&) {
        Allocations::isCounting = false;
        outcome.end = End::Thrown;
    }
    outcome.allocations = Allocations::counted;
    return outcome;
}

/// Saves in a process of its own, where the allocation @p number fails.
Outcome saveWithoutMemory(const SettingsFolder& folder, long number, rlim_t largest)
{
    std::array<int, 2> pipe{};
    EXPECT_EQ(::pipe2(pipe.data(), O_CLOEXEC), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open("/dev/null", O_WRONLY), STDERR_FILENO); // the toolkit's farewell
        ::alarm(60);                                          // nothing that works takes as long
        Allocations::failing = number;
        const Outcome outcome = saveOnce(folder, largest);
        const ssize_t told = ::write(pipe[1], &outcome, sizeof outcome);
        ::_exit(told == sizeof outcome ? 0 : 1);
    }
    ::close(pipe[1]);
    Outcome outcome;
    if (::read(pipe[0], &outcome, sizeof outcome) != sizeof outcome) {
        outcome = {};
    }
    ::close(pipe[0]);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_FALSE(WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM) << number;
    return outcome;
}

void walk(rlim_t largest, End withMemory)
{
    const SettingsFolder folder;
    folder.write(oldBytes);
    const Outcome whole = saveWithoutMemory(folder, 0, largest);
    ASSERT_EQ(whole.end, withMemory);
    ASSERT_GT(whole.allocations, 100);
    long ended = 0;
    const int step = qgetenv("KESTREL_RELIABILITY") == "full" ? 1 : 3;
    for (long number = 1; number <= whole.allocations; number += step) {
        folder.write(oldBytes);
        const Outcome outcome = saveWithoutMemory(folder, number, largest);
        const SettingsHandle settings = openSettings(folder.filePath());
        const QByteArray bytes = folder.bytes();
        EXPECT_TRUE(bytes == oldBytes || bytes == newBytes)
            << number << ": " << bytes.toStdString();
        EXPECT_NE(outcome.end, End::Thrown) << number;
        EXPECT_TRUE(outcome.end != End::Saved || bytes == newBytes) << number;
        ended += outcome.end == End::Never ? 1 : 0;
    }
    EXPECT_LT(ended, whole.allocations / step / 10) << "the toolkit ends nearly every process";
}

} // namespace

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

TEST(SavingWithoutMemory, LeavesTheOldFileOrTheNewOne)
{
    walk(RLIM_INFINITY, End::Saved);
}

TEST(SavingWithoutMemory, AndWithoutRoomLeavesTheOldFile)
{
    walk(static_cast<rlim_t>(oldBytes.size()) - 3, End::Refused);
}
