// One allocation fails while a new scanner's first state is stored, the toolkit's own among them:
// no version stands without the settings that it speaks for. Some eighty fail in turn;
// KESTREL_RELIABILITY=full takes each.
#include "reliability/stand_in.h"
#include "support/host.h"

#include <QSettings>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace kestrel::test;

extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_realloc(void* memory, std::size_t size);

namespace {

bool isArmed = false;    ///< the next value that is stored begins the count
bool isCounting = false; ///< from there on
long counted = 0;
long failing = 0;

bool fails()
{
    return isCounting && ++counted == failing;
}

enum class Left : unsigned char
{
    AllFit,  ///< there were fewer allocations than that
    Whole,   ///< a version and all settings of both groups
    Nothing, ///< no version
    Halves,
    Exception, ///< left the exported function
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

Left bindOnce(long number)
{
    const TempConfigDir folder;
    FakeScanner scanner = scannerWithPicture();
    ScannerIdentity record = identity();
    {
        UserSession user;
        failing = number;
        isArmed = true;
        initKestrelSetUI(user.dialog().host(), scanner.handle(), &record, folder.path());
        isArmed = false;
        isCounting = false;
    }
    if (counted < number) {
        return Left::AllFit;
    }
    const Texts file = readSettingsFile(folder.file(QStringLiteral("ScannerA.ini")));
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
std::optional<Left> bindInOwnProcess(long number)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open("/dev/null", O_WRONLY), STDERR_FILENO); // the toolkit's farewell
        ::alarm(60);
        try {
            ::_exit(static_cast<int>(bindOnce(number)));
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

extern "C" void* malloc(std::size_t size)
{
    return fails() ? nullptr : __libc_malloc(size);
}

extern "C" void* realloc(void* memory, std::size_t size)
{
    return fails() ? nullptr : __libc_realloc(memory, size);
}

void* operator new(std::size_t size)
{
    if (void* const memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void QSettings::setValue(const QString& key, const QVariant& value)
{
    using SetValue = void (*)(QSettings*, const QString&, const QVariant&);
    static const auto original = reinterpret_cast<SetValue>(
        ::dlsym(RTLD_NEXT, "_ZN9QSettings8setValueERK7QStringRK8QVariant"));
    if (std::exchange(isArmed, false)) {
        isCounting = true;
    }
    original(this, key, value);
}

TEST(FirstStateWithoutMemory, IsNotedWholeOrNotAtAll)
{
    constexpr long all_of_the_version = 20;
    int wholes = 0;
    int nothings = 0;
    int ended = 0;
    for (long number = 1;; number += isFullForm() || number < all_of_the_version ? 1 : 41) {
        const auto left = bindInOwnProcess(number);
        if (left == Left::AllFit) {
            break;
        }
        EXPECT_NE(left, Left::Halves) << number;
        EXPECT_NE(left, Left::Exception) << number;
        wholes += left == Left::Whole ? 1 : 0;
        nothings += left == Left::Nothing ? 1 : 0;
        ended += left ? 0 : 1;
    }
    EXPECT_GT(wholes, 0);
    EXPECT_GT(nothings, 0);
    EXPECT_LE(ended, nothings) << "the toolkit ends nearly every process";
    std::printf("%d times whole, %d not noted, %d ended by the toolkit\n", wholes, nothings, ended);
}
