// Drivers that write behind what they announce, or count more than they wrote. The stand-in is well
// behaved, so this program brings its own driver.
#include "scanner/frame_reader.h"
#include "scanner/sane_device.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

using kestrel::Frame;
using kestrel::readFrame;
using kestrel::SaneDevice;

namespace {

constexpr std::size_t kSlack = 64; // bytes that a driver may write behind the announced size

/// What the driver does; its address is the handle.
struct Driver
{
    std::vector<SANE_Byte> value;    ///< written whole, whatever size the option announces
    SANE_Int lines = 4;              ///< of 10 bytes each
    std::vector<SANE_Int> overcount; ///< for each read: bytes counted beyond those asked for
    int reads = 0;
    std::vector<SANE_Byte> taken; ///< what a set was given, twice the size of a text
};

Driver& driverOf(SANE_Handle handle)
{
    return *static_cast<Driver*>(handle);
}

SANE_Option_Descriptor option(SANE_Value_Type type, SANE_Int size)
{
    SANE_Option_Descriptor descriptor{};
    descriptor.name = "o";
    descriptor.type = type;
    descriptor.size = size;
    return descriptor;
}

} // namespace

extern "C" {

const SANE_Option_Descriptor* sane_get_option_descriptor(SANE_Handle /*handle*/, SANE_Int /*index*/)
{
    return nullptr;
}

SANE_Status sane_control_option(SANE_Handle handle, SANE_Int /*index*/, SANE_Action action,
                                void* value, SANE_Int* /*info*/)
{
    if (action == SANE_ACTION_SET_VALUE) {
        const auto* const bytes = static_cast<const SANE_Byte*>(value);
        driverOf(handle).taken.assign(bytes, bytes + 2 * kestrel::kStringValueSize);
        return SANE_STATUS_GOOD;
    }
    const auto& bytes = driverOf(handle).value;
    std::copy(bytes.begin(), bytes.end(), static_cast<SANE_Byte*>(value));
    return SANE_STATUS_GOOD;
}

SANE_Status sane_get_parameters(SANE_Handle handle, SANE_Parameters* parameters)
{
    *parameters = {SANE_FRAME_GRAY, SANE_TRUE, 10, 10, driverOf(handle).lines, 8};
    return SANE_STATUS_GOOD;
}

SANE_Status sane_read(SANE_Handle handle, SANE_Byte* data, SANE_Int most, SANE_Int* length)
{
    auto& driver = driverOf(handle);
    const auto number = static_cast<std::size_t>(driver.reads++);
    if (number >= driver.overcount.size()) {
        *length = 0;
        return SANE_STATUS_EOF;
    }
    const SANE_Int written = std::min(most, SANE_Int{10});
    std::memset(data, 'x', static_cast<std::size_t>(written));
    *length = driver.overcount[number] > 0 ? most + driver.overcount[number] : written;
    return SANE_STATUS_GOOD;
}
}

TEST(CarelessDriver, ATextThatRunsOverItsSizeIsReadWhole)
{
    for (const std::size_t behind : {std::size_t{1}, std::size_t{16}, kSlack - 1}) {
        for (const SANE_Int size : {4, 8, 64}) {
            const std::string text(static_cast<std::size_t>(size) + behind, 't');
            Driver driver;
            driver.value.assign(text.c_str(), text.c_str() + text.size() + 1);
            const auto descriptor = option(SANE_TYPE_STRING, size);
            const auto read = SaneDevice(&driver).readText(1, descriptor);
            ASSERT_TRUE(read);
            EXPECT_EQ(read->toStdString(), text) << size;
        }
    }
}

TEST(CarelessDriver, ATextWithoutATerminatorEndsWithTheRoomForIt)
{
    Driver driver;
    driver.value.assign(8 + kSlack, 't');
    const auto read = SaneDevice(&driver).readText(1, option(SANE_TYPE_STRING, 8));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->size(), static_cast<int>(8 + kSlack));
}

// A text of the full 64 bytes has no terminator; a driver that looks for one must meet it.
TEST(CarelessDriver, BehindATextAreZeroesAndNothingElse)
{
    for (const SANE_Int size : {0, 4, 64}) {
        const std::string text(kestrel::kStringValueSize, 't');
        Driver driver;
        EXPECT_EQ(SaneDevice(&driver).writeText(1, text.c_str(), size), SANE_STATUS_GOOD);
        std::vector<SANE_Byte> expected(text.begin(), text.end());
        expected.resize(2 * text.size(), 0);
        EXPECT_EQ(driver.taken, expected) << size;
    }
}

TEST(CarelessDriver, AReadThatCountsMoreThanItWasAskedForEndsTheFrame)
{
    for (const SANE_Int lines : {4, -1}) {
        Driver driver;
        driver.lines = lines;
        driver.overcount = {0, 1, 0};
        const Frame frame = readFrame(&driver);
        EXPECT_EQ(frame.received, 10U) << lines;
        EXPECT_EQ(frame.lines(), lines > 0 ? lines : 1);
        EXPECT_EQ(driver.reads, 2) << lines;
        EXPECT_GE(frame.bytes.size(), frame.received);
    }
}
