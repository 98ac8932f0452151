// Previews that end early, and memory that is not the preview's.
#include "preview_dialog.h"
#include "support/message_boxes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <memory>
#include <optional>

using namespace kestrel::test;

namespace {

constexpr QRgb kNothingCame = qRgb(0, 0, 0) & RGB_MASK;

/// How the last read that brings bytes is to end; without a value as the stand-in has it.
std::optional<SANE_Status> statusWithBytes; // NOLINT: the wrapped function has no other way to it

class PreviewReads : public PreviewTest
{
protected:
    PreviewReads()
    {
        statusWithBytes.reset();
        start();
    }

    static QRgb rgb(QRgb pixel) { return pixel & RGB_MASK; }
};

} // namespace

// The stand-in never fails a read that brings bytes; some backends do. The linker puts this one in
// front of it.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the linker's names
SANE_Status __real_sane_read(SANE_Handle handle, SANE_Byte* data, SANE_Int most, SANE_Int* length);
SANE_Status __wrap_sane_read(SANE_Handle handle, SANE_Byte* data, SANE_Int most, SANE_Int* length);

SANE_Status __wrap_sane_read(SANE_Handle handle, SANE_Byte* data, SANE_Int most, SANE_Int* length)
{
    const SANE_Status status = __real_sane_read(handle, data, most, length);
    return *length > 0 ? statusWithBytes.value_or(status) : status;
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST_F(PreviewReads, AReadThatFailsAtOnceLeavesThePicture)
{
    scan(colourFrame(20, 10));
    for (const SANE_Status status :
         {SANE_STATUS_IO_ERROR, SANE_STATUS_JAMMED, SANE_STATUS_CANCELLED, SANE_STATUS_EOF}) {
        scanner.clearJournal();
        scanner.failNth(CallKind::Read, 1, status);
        const MessageBoxes boxes;
        scan(colourFrame(6, 6));
        EXPECT_TRUE(boxes.shown().empty()) << status;
        EXPECT_EQ(calls(), "sSPRC") << status;
        expectColours(20, 10, 9);
        expectReady();
    }
}

TEST_F(PreviewReads, AReadThatFailsMidwayShowsWhatCame)
{
    for (const SANE_Status status :
         {SANE_STATUS_IO_ERROR, SANE_STATUS_JAMMED, SANE_STATUS_CANCELLED}) {
        scanner.clearJournal();
        FakeFrame frame = colourFrame(20, 10);
        frame.chunks = {120}; // two rows
        scanner.failNth(CallKind::Read, 3, status);
        const MessageBoxes boxes;
        scan(frame);
        EXPECT_TRUE(boxes.shown().empty()) << status;
        EXPECT_EQ(calls(), "sSPRRRC") << status;
        expectColours(20, 10, 4);
        for (int y = 4; y < 9; ++y) {
            EXPECT_EQ(rgb(picture().pixel(0, y)), kNothingCame) << y;
        }
    }
}

TEST_F(PreviewReads, AReadThatGivesNothingEndsThePicture)
{
    FakeFrame frame = colourFrame(20, 10);
    frame.chunks = {180, 0, 180};
    scan(frame);
    EXPECT_EQ(calls(), "sSPRRC");
    expectColours(20, 10, 3);
    EXPECT_EQ(rgb(picture().pixel(0, 3)), kNothingCame);
}

TEST_F(PreviewReads, TheEndOfThePageComesEarly)
{
    FakeFrame frame = colourFrame(20, 10);
    frame.bytes.resize(5 * 60 + 30); // five rows and a half
    scan(frame);
    EXPECT_EQ(calls(), "sSPRRC");
    expectColours(20, 10, 5);
    EXPECT_EQ(rgb(picture().pixel(9, 5)), rgb(colourAt(9, 5)));
    EXPECT_EQ(rgb(picture().pixel(10, 5)), kNothingCame);
}

TEST_F(PreviewReads, BytesThatComeWithAFailureCountAndAreTheLast)
{
    for (const SANE_Status status :
         {SANE_STATUS_IO_ERROR, SANE_STATUS_JAMMED, SANE_STATUS_CANCELLED, SANE_STATUS_NO_DOCS}) {
        scanner.clearJournal();
        statusWithBytes = status;
        FakeFrame frame = colourFrame(20, 10);
        frame.chunks = {240};
        scan(frame);
        EXPECT_EQ(calls(), "sSPRC") << status;
        expectColours(20, 10, 4);
        EXPECT_EQ(rgb(picture().pixel(0, 4)), kNothingCame);
    }
}

TEST_F(PreviewReads, BytesThatComeWithTheEndAreNotTheLast)
{
    statusWithBytes = SANE_STATUS_EOF;
    FakeFrame frame = colourFrame(20, 10);
    frame.chunks = {240};
    scan(frame);
    EXPECT_EQ(calls(), "sSPRRRC");
    expectColours(20, 10, 9);
}

TEST_F(PreviewReads, WithoutParametersThePictureStaysAndTheScanIsCancelled)
{
    scan(colourFrame(20, 10));
    for (const SANE_Status status : {SANE_STATUS_IO_ERROR, SANE_STATUS_INVAL, SANE_STATUS_NO_MEM}) {
        scanner.clearJournal();
        FakeFrame frame = colourFrame(6, 6);
        frame.parametersStatus = status;
        const MessageBoxes boxes;
        scan(frame);
        EXPECT_TRUE(boxes.shown().empty()) << status;
        EXPECT_EQ(calls(), "sSPC") << status;
        expectColours(20, 10, 9);
        expectReady();
    }
}

TEST_F(PreviewReads, TheLastRowIsNotTheScanners)
{
    // The allocator is made to fill what it hands out: glibc with the complement of this, the
    // address sanitizer's, which takes no orders, with bytes of its own.
    const int fill = mallopt(M_PERTURB, 0x5a) == 1 ? 0xa5 : 0xbe;
    FakeFrame frame = colourFrame(60, 9);
    std::memset(frame.bytes.data() + 8 * 180, 0x33, 180);
    scan(frame);
    mallopt(M_PERTURB, 0);
    expectColours(60, 9, 8);
    for (int x = 0; x < 60; ++x) {
        EXPECT_EQ(rgb(picture().pixel(x, 8)), rgb(qRgb(fill, fill, fill))) << x;
    }
}

TEST_F(PreviewReads, TheBoxKeepsACopyOfItsOwn)
{
    struct Free
    {
        void operator()(void* memory) const { std::free(memory); }
    };
    scan(colourFrame(60, 40));
    // The buffers of the scan are free by now; whoever gets them next writes into them.
    for (const std::size_t size : {60U * 40 * 3, 60U * 40 * 4}) {
        std::array<std::unique_ptr<void, Free>, 8> blocks;
        for (auto& block : blocks) {
            block.reset(std::malloc(size));
            ASSERT_NE(block, nullptr);
            std::memset(block.get(), 0x77, size);
        }
    }
    expectColours(60, 40, 39);
    box().grab(); // painting reads it, too
}
