// Vendor libraries that would take the host along: cut off, with broken pipes, with exceptions.
#include "vendor_fixture.h"

#include <QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <pthread.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using namespace kestrel;
using namespace kestrel::test;

namespace {

char faulty = '\0'; // the letter of the function that throws; NOLINT: its hook can't take it along

void throwText(char letter)
{
    if (letter == faulty) {
        throw std::runtime_error("the vendor's");
    }
}

void throwNumber(char letter)
{
    if (letter == faulty) {
        throw 1; // NOLINT: nobody says that it is an exception class
    }
}

void endThread(char letter)
{
    if (letter == faulty) {
        pthread_exit(&faulty);
    }
}

/// Unless somebody stops it, the signal ends the program, however that was started.
class BrokenPipe : public VendorLibrary
{
protected:
    BrokenPipe() : m_before(std::signal(SIGPIPE, SIG_DFL)) {}
    ~BrokenPipe() override { std::signal(SIGPIPE, m_before); }

private:
    void (*m_before)(int);
};

using VendorException = VendorLibrary;

} // namespace

// Each is a file of its own: what was loaded stays mapped.
TEST_F(VendorLibrary, ThatWasCopiedInPartIsPassedOver)
{
    const QTemporaryDir dir;
    QFile whole(path(VENDOR_FULL_LIBRARY));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    bool loaded = false;
    for (int length = 0; length <= bytes.size(); length += length < bytes.size() ? 1 : 2) {
        // All lengths around the pages' ends, which is where the loader maps, and some between.
        if ((length + 2) % 4096 > 4 && length % 509 != 0 && length != bytes.size()) {
            continue;
        }
        QFile cut(dir.filePath(QStringLiteral("%1_x64.so.1.0").arg(length)));
        ASSERT_TRUE(cut.open(QIODevice::WriteOnly));
        ASSERT_EQ(cut.write(bytes.constData(), length), length);
        cut.close();
        VendorDriver driver;
        driver.load(cut.fileName());
        EXPECT_TRUE(driver.hasDriver() || !loaded) << "a shorter one was loaded than " << length;
        loaded = driver.hasDriver();
    }
    EXPECT_TRUE(loaded);
}

// Not waited for, either: what somebody has put into a pipe stays there.
TEST_F(VendorLibrary, IsNoPipe)
{
    const QTemporaryDir dir;
    const QString pipe = dir.filePath(QStringLiteral("Scanner_x64.so.1.0"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const int file = ::open(QFile::encodeName(pipe).constData(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(file, 0);
    const std::vector<char> bytes(32768);
    ASSERT_EQ(::write(file, bytes.data(), bytes.size()), 32768);
    m_driver.load(pipe);
    int left = 0;
    EXPECT_EQ(::ioctl(file, FIONREAD, &left), 0);
    EXPECT_EQ(left, 32768);
    EXPECT_FALSE(m_driver.hasDriver());
    EXPECT_FALSE(m_driver.hasLegacyReader());
    ::close(file);
}

TEST_F(BrokenPipe, OfALibraryThatIsLoadedDoesNotEndTheHost)
{
    m_driver.load(path(VENDOR_PIPING_LIBRARY));
    EXPECT_TRUE(m_driver.hasDriver());
}

TEST_F(BrokenPipe, OfAReadDoesNotEndTheHost)
{
    m_full.hook = [](char) { raise(SIGPIPE); };
    m_full.initializeDriver = 1;
    m_legacy.hook = m_full.hook;
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(m_legacy.calls, "L");
    EXPECT_STREQ(m_full.calls, "ITDR");
    expectCounters(m_counters, 102, 102, 105);
}

TEST_F(VendorException, OfADriverLeavesTheCounters)
{
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    for (void (*const hook)(char) : {throwText, throwNumber}) {
        for (const char letter : {'I', 'T', 'D', 'R'}) {
            m_full.hook = hook;
            m_full.initializeDriver = 1;
            faulty = letter;
            EXPECT_NO_THROW(m_driver.readCounters(m_counters)) << letter;
            expectCounters(m_counters, 1, 2, 3);
        }
    }
    EXPECT_STREQ(m_full.calls, "IITITDITDRIITITDITDR");
    m_full.hook = nullptr;
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 102, 102, 105);
}

TEST_F(VendorException, OfALegacyReaderLeavesTheDriverToItself)
{
    faulty = 'L';
    m_legacy.hook = throwText;
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    EXPECT_NO_THROW(m_driver.readCounters(m_counters));
    expectCounters(m_counters, 1, 2, 3);
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    EXPECT_NO_THROW(m_driver.readCounters(m_counters));
    expectCounters(m_counters, 102, 102, 105);
    EXPECT_STREQ(m_legacy.calls, "LL");
}

TEST_F(VendorException, OfADriverLeavesWhatTheLegacyReaderSaid)
{
    faulty = 'R';
    m_full.hook = throwText;
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    EXPECT_NO_THROW(m_driver.readCounters(m_counters));
    expectCounters(m_counters, 100, 100, 103);
}

// It travels as an exception, and the process ends when somebody stops it.
TEST_F(VendorException, TheEndOfAThreadIsNone)
{
    faulty = 'R';
    m_full.hook = endThread;
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    pthread_t thread{};
    const auto read = [](void* driver) -> void* {
        RollerCounters counters;
        static_cast<VendorDriver*>(driver)->readCounters(counters);
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, nullptr, read, &m_driver), 0);
    void* end = nullptr;
    ASSERT_EQ(pthread_join(thread, &end), 0);
    EXPECT_EQ(end, &faulty);
}
