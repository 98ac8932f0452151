// A scanner that nobody here has written: the backend "test" that comes with SANE, through the real
// libsane, with everything that it can switch on.
#include "reliability/session.h"
#include "support/host.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <sane/sane.h>
#include <sane/saneopts.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <dlfcn.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace kestrel::test;

namespace {

/// Waits until every other thread is gone or waits where it can't hold the allocator's lock, nor
/// wait for it: for a pipe, for the clock, or for work; not on a plain mutex.
void waitForOtherThreads()
{
    const auto waits = [](const QString& thread) {
        QFile call(QStringLiteral("/proc/self/task/%1/syscall").arg(thread));
        if (!call.open(QIODevice::ReadOnly)) {
            return true;
        }
        // "running", or the number of the call and its arguments
        const QList<QByteArray> words = call.readAll().split(' ');
        if (words.size() < 4) {
            return words.first().isEmpty();
        }
        const int number = words[0].toInt();
        const bool isMutex = words[2] == "0x80" && words[3] == "0x2";
        const std::array<int, 7> harmless = {SYS_write,          SYS_read,     SYS_poll,
                                             SYS_ppoll,          SYS_pselect6, SYS_nanosleep,
                                             SYS_clock_nanosleep};
        return (number == SYS_futex && !isMutex) ||
               std::find(harmless.begin(), harmless.end(), number) != harmless.end();
    };
    const QDir threads(QStringLiteral("/proc/self/task"));
    const QString own = QString::number(gettid());
    const auto allWait = [&] {
        const QStringList names = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return std::all_of(names.begin(), names.end(),
                           [&](const QString& name) { return name == own || waits(name); });
    };
    while (!allWait()) {
        std::this_thread::yield();
    }
}

constexpr const char* kFeeder = "Automatic Document Feeder";
constexpr int kSheets = 10; // then the feeder is empty

/// Called once, when the next picture is begun.
std::function<void()>& atNextStart()
{
    static std::function<void()> look;
    return look;
}

using Choice = std::pair<std::string, std::string>;

/// @return the bytes of a value for @p option, in as many words as hold them
std::vector<SANE_Word> valueOf(const SANE_Option_Descriptor& option, const std::string& text)
{
    switch (option.type) {
    case SANE_TYPE_BUTTON:
        return {0};
    case SANE_TYPE_STRING: {
        std::vector<SANE_Word> words(static_cast<std::size_t>(option.size) / sizeof(SANE_Word) + 1);
        text.copy(reinterpret_cast<char*>(words.data()), static_cast<std::size_t>(option.size) - 1);
        return words;
    }
    case SANE_TYPE_FIXED:
        return {SANE_FIX(std::stod(text))};
    default:
        return {std::stoi(text)};
    }
}

class SaneTestBackend : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        // libsane remembers its first folder of configuration.
        static const TempConfigDir folder;
        folder.write(QStringLiteral("dll.conf"), "test\n");
        folder.write(QStringLiteral("test.conf"), "number_of_devices 2\n");
        setenv("SANE_CONFIG_DIR", folder.path(), 1);
    }
    SaneTestBackend()
    {
        SANE_Int version = 0;
        sane_init(&version, nullptr);
        EXPECT_EQ(sane_open("test:0", &m_handle), SANE_STATUS_GOOD);
    }
    ~SaneTestBackend() override
    {
        if (m_handle != nullptr) {
            sane_close(m_handle);
        }
        sane_exit();
    }

    SANE_Int find(const std::string& name) const
    {
        SANE_Int count = 0;
        sane_control_option(m_handle, 0, SANE_ACTION_GET_VALUE, &count, nullptr);
        for (SANE_Int i = 1; i < count; ++i) {
            const auto* const option = sane_get_option_descriptor(m_handle, i);
            if (option != nullptr && option->name != nullptr && name == option->name) {
                return i;
            }
        }
        ADD_FAILURE() << "the backend has no " << name;
        return 0;
    }

    /// Sets an option and looks whether it was taken as it is; a button is pressed.
    void set(const Choice& choice)
    {
        const SANE_Int index = find(choice.first);
        const auto* const option = sane_get_option_descriptor(m_handle, index);
        ASSERT_NE(option, nullptr);
        std::vector<SANE_Word> value = valueOf(*option, choice.second);
        SANE_Int info = 0;
        EXPECT_EQ(sane_control_option(m_handle, index, SANE_ACTION_SET_VALUE, value.data(), &info),
                  SANE_STATUS_GOOD);
        EXPECT_EQ(info & SANE_INFO_INEXACT, 0);
        expectHeld(choice);
    }

    void expectHeld(const Choice& choice) const
    {
        SCOPED_TRACE(choice.first + " = " + choice.second);
        const SANE_Int index = find(choice.first);
        const auto* const option = sane_get_option_descriptor(m_handle, index);
        ASSERT_NE(option, nullptr);
        if (option->type == SANE_TYPE_BUTTON) {
            return;
        }
        const std::vector<SANE_Word> value = valueOf(*option, choice.second);
        std::vector<SANE_Word> held(value.size());
        EXPECT_EQ(sane_control_option(m_handle, index, SANE_ACTION_GET_VALUE, held.data(), nullptr),
                  SANE_STATUS_GOOD);
        if (option->type == SANE_TYPE_STRING) {
            EXPECT_STREQ(reinterpret_cast<const char*>(held.data()), choice.second.c_str());
        } else {
            EXPECT_EQ(held, value);
        }
    }

    std::vector<std::string> entriesOf(const std::string& name) const
    {
        std::vector<std::string> entries;
        const auto* const option = sane_get_option_descriptor(m_handle, find(name));
        for (auto entry = option->constraint.string_list; *entry != nullptr; ++entry) {
            entries.emplace_back(*entry);
        }
        return entries;
    }

    /// A user's session with the backend set so. The preview itself is in colour and begins with
    /// all that was set.
    void live(const std::vector<Choice>& choices)
    {
        for (const Choice& choice : choices) {
            SCOPED_TRACE(choice.first + " = " + choice.second);
            set(choice);
        }
        atNextStart() = [this, choices] {
            SCOPED_TRACE("as the preview begins");
            expectHeld({"mode", "Color"});
            std::for_each(choices.begin(), choices.end(),
                          [this](const Choice& choice) { expectHeld(choice); });
        };
        const TempConfigDir folder;
        {
            UserSession user;
            user.run(m_handle, folder.path(), 1);
        }
        EXPECT_FALSE(std::exchange(atNextStart(), nullptr)) << "there was no preview";
        const Texts stored = readSettingsFile(folder.file(QStringLiteral("ScannerA.ini")));
        EXPECT_EQ(stored.value(QStringLiteral("ScannerA/brightness")), QStringLiteral("33"));
        EXPECT_EQ(stored.value(QStringLiteral("ScannerA/ultrasonic")), QStringLiteral("Enable"));
        // The host scans after all that.
        EXPECT_EQ(sane_start(m_handle), SANE_STATUS_GOOD);
        sane_cancel(m_handle);
    }

    SANE_Handle m_handle = nullptr;
    BoxCloser m_boxes;
};

} // namespace

// The backend ends its reading thread wherever that is; within an allocation it would leave the
// allocator locked.
extern "C" {
SANE_Status __real_sane_start(SANE_Handle handle);

SANE_Status __wrap_sane_start(SANE_Handle handle)
{
    if (const auto look = std::exchange(atNextStart(), nullptr)) {
        look();
    }
    return __real_sane_start(handle);
}

/// In the place of the C library's: the pipe is closed by now, and who writes to it goes by itself.
__attribute__((visibility("default"))) int pthread_cancel(pthread_t thread)
{
    using Cancel = int (*)(pthread_t);
    static const auto cancel = reinterpret_cast<Cancel>(::dlsym(RTLD_NEXT, "pthread_cancel"));
    waitForOtherThreads();
    return cancel(thread);
}
}

TEST_F(SaneTestBackend, EveryStatusThatReadingCanAnswer)
{
    const auto statuses = entriesOf("read-return-value");
    EXPECT_GE(statuses.size(), 12U);
    for (const std::string& status : statuses) {
        SCOPED_TRACE(status);
        live({{"read-return-value", status}});
        // Only a start that fails is told of.
        EXPECT_TRUE(m_boxes.texts().isEmpty()) << m_boxes.texts().first().toStdString();
    }
}

TEST_F(SaneTestBackend, EveryOptionOfEveryType)
{
    live({{"enable-test-options", "1"}});
}

TEST_F(SaneTestBackend, ShortAndSlowReads)
{
    live({{"read-limit", "1"}, {"read-limit-size", "1"}});
    live({{"read-limit", "0"}, {"read-delay", "1"}, {"read-delay-duration", "1000"}});
}

TEST_F(SaneTestBackend, ParametersThatAreNotTrue)
{
    live({{"fuzzy-parameters", "1"}});
    for (const char* const loss : {"0", "1", "7", "128"}) {
        live({{"ppl-loss", loss}});
    }
}

TEST_F(SaneTestBackend, AScannerMovedByHand)
{
    live({{"hand-scanner", "1"}});
}

TEST_F(SaneTestBackend, OnePassForEachColour)
{
    set({"mode", "Color"});
    set({"three-pass", "1"});
    for (const std::string& order : entriesOf("three-pass-order")) {
        SCOPED_TRACE(order);
        live({{"mode", "Color"}, {"three-pass", "1"}, {"three-pass-order", order}});
    }
}

TEST_F(SaneTestBackend, EveryDepthAndEveryPictureInColour)
{
    for (const std::string& picture : entriesOf("test-picture")) {
        for (const char* const depth : {"1", "8"}) {
            live({{"test-picture", picture}, {"depth", depth}});
        }
        for (const char* const inverted : {"0", "1"}) {
            live({{"test-picture", picture}, {"depth", "16"}, {"invert-endianess", inverted}});
        }
    }
}

TEST_F(SaneTestBackend, AFeederThatHasRunOutOfPaper)
{
    set({"source", kFeeder});
    for (int sheet = 0; sheet < kSheets; ++sheet) {
        EXPECT_EQ(sane_start(m_handle), SANE_STATUS_GOOD) << sheet;
        sane_cancel(m_handle);
    }
    live({{"source", kFeeder}});
    EXPECT_EQ(m_boxes.texts().size(), 1); // a start that fails is told of
}

TEST_F(SaneTestBackend, EverySource)
{
    for (const std::string& source : entriesOf("source")) {
        live({{"source", source}});
    }
    EXPECT_TRUE(m_boxes.texts().isEmpty());
}

TEST_F(SaneTestBackend, AButtonThatPrintsAllOptions)
{
    live({{"print-options", ""}});
}

TEST_F(SaneTestBackend, ReadsThatDoNotWait)
{
    live({{"non-blocking", "1"}});
    live({{"non-blocking", "1"}, {"select-fd", "1"}, {"read-delay", "1"}});
}

TEST_F(SaneTestBackend, AllOfItAtOnce)
{
    live({{"enable-test-options", "1"},
          {"fuzzy-parameters", "1"},
          {"ppl-loss", "7"},
          {"non-blocking", "1"},
          {"read-limit", "1"},
          {"read-limit-size", "13"},
          {"hand-scanner", "1"},
          {"source", kFeeder},
          {"read-return-value", "SANE_STATUS_JAMMED"}});
}
