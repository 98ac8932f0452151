// One allocation fails while a new scanner's first state is stored, the toolkit's own among them:
// no version stands without the settings that it speaks for. Some eighty fail in turn;
// KESTREL_RELIABILITY=full takes each.
#include "reliability/stand_in.h"
#include "support/failing_malloc.h"
#include "support/host.h"

#include <QSettings>

#include <gtest/gtest.h>

#include <cstdio>
#include <new>
#include <optional>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace kestrel::test;

namespace {

const QString fileName = QStringLiteral("ScannerA.ini");

bool isArmed = false; ///< the next value that is stored begins the count

enum class Left : unsigned char
{
    AllFit,  ///< there were fewer allocations than that
    Whole,   ///< a version and all settings of both groups
    Nothing, ///< no version
    Halves,
    Overwritten, ///< what was confirmed has gone
    Exception,   ///< left the exported function
};

/// How many keys of a group the file holds.
int keysOf(const Texts& file, const QString& group)
{
    int keys = 0;
    for (auto entry = file.keyBegin(); entry != file.keyEnd(); ++entry) {
        keys += entry->startsWith(group + QLatin1Char('/')) ? 1 : 0;
    }
    return keys;
}

/// A scanner that described itself by halves at first: confirmed, but its defaults are in doubt.
QByteArray makeDoubtful()
{
    const TempConfigDir folder;
    FakeScanner scanner = scannerWithPicture();
    scanner.option("br-x").undescribed(1);
    UserSession user;
    user.bind(scanner.handle(), folder.path());
    user.edit(1);
    user.ok();
    return folder.read(fileName);
}

/// @param before the settings file, or nothing for a new scanner
Left bindOnce(long number, const QByteArray& before)
{
    const TempConfigDir folder;
    if (!before.isEmpty()) {
        folder.write(fileName, before);
    }
    const Texts confirmed = readSettingsFile(folder.file(fileName));
    FakeScanner scanner = scannerWithPicture();
    ScannerIdentity record = identity();
    {
        UserSession user;
        Allocations::failing = number;
        isArmed = true;
        initKestrelSetUI(user.dialog().host(), scanner.handle(), &record, folder.path());
        isArmed = false;
        Allocations::isCounting = false;
    }
    if (Allocations::counted < number) {
        return Left::AllFit;
    }
    if (!confirmed.isEmpty()) {
        UserSession next;
        next.bind(scanner.handle(), folder.path());
    }
    const Texts file = readSettingsFile(folder.file(fileName));
    for (auto entry = confirmed.begin(); entry != confirmed.end(); ++entry) {
        if (entry.key().startsWith(QLatin1String("ScannerA/")) &&
            file.value(entry.key()) != entry.value()) {
            return Left::Overwritten;
        }
    }
    if (!file.contains(QStringLiteral("ScannerAconfig_version/config_version"))) {
        return Left::Nothing;
    }
    constexpr int all_settings = 63;
    constexpr int default_settings = 62;
    const bool is_whole = keysOf(file, QStringLiteral("ScannerA")) == all_settings &&
                          keysOf(file, QStringLiteral("ScannerAdefault")) >= default_settings;
    return is_whole ? Left::Whole : Left::Halves;
}

/// In a process of its own, which the toolkit may end.
/// @return nothing if it has
std::optional<Left> bindInOwnProcess(long number, const QByteArray& before)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open("/dev/null", O_WRONLY), STDERR_FILENO); // the toolkit's farewell
        ::alarm(60);
        try {
            ::_exit(static_cast<int>(bindOnce(number, before)));
        } catch (const std::bad_alloc&) {
            ::_exit(static_cast<int>(Left::Exception));
        }
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_FALSE(WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM) << number;
    if (!WIFEXITED(status)) {
        return std::nullopt;
    }
    return static_cast<Left>(WEXITSTATUS(status));
}

} // namespace

void QSettings::setValue(const QString& key, const QVariant& value)
{
    using SetValue = void (*)(QSettings*, const QString&, const QVariant&);
    static const auto original = reinterpret_cast<SetValue>(
        ::dlsym(RTLD_NEXT, "_ZN9QSettings8setValueERK7QStringRK8QVariant"));
    if (std::exchange(isArmed, false)) {
        Allocations::isCounting = true;
    }
    original(this, key, value);
}

namespace {

struct Ends
{
    int wholes = 0;
    int nothings = 0;
    int by_toolkit = 0;
};

Ends walk(const QByteArray& before)
{
    constexpr long all_of_the_version = 20;
    Ends ends;
    for (long number = 1;; number += isFullForm() || number < all_of_the_version ? 1 : 41) {
        const auto left = bindInOwnProcess(number, before);
        if (left == Left::AllFit) {
            break;
        }
        EXPECT_NE(left, Left::Halves) << number;
        EXPECT_NE(left, Left::Overwritten) << number;
        EXPECT_NE(left, Left::Exception) << number;
        ends.wholes += left == Left::Whole ? 1 : 0;
        ends.nothings += left == Left::Nothing ? 1 : 0;
        ends.by_toolkit += left ? 0 : 1;
    }
    EXPECT_GT(ends.wholes, 0);
    EXPECT_LE(ends.by_toolkit, (ends.wholes + ends.nothings) / 10);
    std::printf("%d times whole, %d not noted, %d ended by the toolkit\n", ends.wholes,
                ends.nothings, ends.by_toolkit);
    return ends;
}

} // namespace

TEST(FirstStateWithoutMemory, IsNotedWholeOrNotAtAll)
{
    EXPECT_GT(walk({}).nothings, 0);
}

TEST(FirstStateWithoutMemory, IsMadeGoodWithoutHarmToWhatWasConfirmed)
{
    EXPECT_EQ(walk(makeDoubtful()).nothings, 0);
}
