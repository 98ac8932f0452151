#include "scanner/frame_reader.h"
#include "support/fake_scanner.h"

#include <gtest/gtest.h>

#include <climits>
#include <numeric>

using kestrel::Frame;
using kestrel::readFrame;
using kestrel::test::CallKind;
using kestrel::test::FakeFrame;
using kestrel::test::FakeScanner;

namespace {

std::vector<SANE_Byte> counting(std::size_t size)
{
    std::vector<SANE_Byte> bytes(size);
    std::iota(bytes.begin(), bytes.end(), SANE_Byte{1});
    return bytes;
}

FakeFrame frameOf(SANE_Int bytesPerLine, SANE_Int lines, std::size_t bytes)
{
    FakeFrame frame;
    frame.parameters = {SANE_FRAME_GRAY, SANE_TRUE, bytesPerLine, bytesPerLine, lines, 8};
    frame.bytes = counting(bytes);
    return frame;
}

class FrameReader : public testing::Test
{
protected:
    Frame read(const FakeFrame& frame)
    {
        m_scanner.addFrame(frame);
        EXPECT_EQ(sane_start(m_scanner.handle()), SANE_STATUS_GOOD);
        return readFrame(m_scanner.handle());
    }
    static std::vector<unsigned char> receivedBytes(const Frame& frame)
    {
        return {frame.bytes.begin(),
                frame.bytes.begin() + static_cast<std::ptrdiff_t>(frame.received)};
    }

    FakeScanner m_scanner;
};

} // namespace

TEST_F(FrameReader, AWholeFrameComesInOnePiece)
{
    const FakeFrame sent = frameOf(10, 6, 60);
    const Frame frame = read(sent);
    EXPECT_EQ(frame.received, 60U);
    EXPECT_EQ(frame.bytes, sent.bytes);
    EXPECT_EQ(frame.lines(), 6);
    EXPECT_EQ(frame.parameters.bytes_per_line, 10);
}

TEST_F(FrameReader, PiecesOfAnySizeArePutTogether)
{
    for (const std::vector<SANE_Int>& chunks :
         {std::vector<SANE_Int>{1}, {7}, {59, 1}, {3, 11, 2}, {60}}) {
        FakeFrame sent = frameOf(10, 6, 60);
        sent.chunks = chunks;
        EXPECT_EQ(read(sent).bytes, sent.bytes);
    }
}

TEST_F(FrameReader, NothingIsReadBeyondTheFrame)
{
    const Frame frame = read(frameOf(10, 6, 100));
    EXPECT_EQ(frame.received, 60U);
    EXPECT_EQ(frame.bytes.size(), 60U);
}

TEST_F(FrameReader, AShortFrameIsFilledWithZeroes)
{
    const Frame frame = read(frameOf(10, 6, 25));
    EXPECT_EQ(frame.received, 25U);
    ASSERT_EQ(frame.bytes.size(), 60U);
    EXPECT_EQ(frame.bytes[24], 25);
    EXPECT_EQ(std::accumulate(frame.bytes.begin() + 25, frame.bytes.end(), 0), 0);
    EXPECT_EQ(frame.lines(), 6);
}

TEST_F(FrameReader, AFailureKeepsWhatArrived)
{
    for (const SANE_Status status :
         {SANE_STATUS_JAMMED, SANE_STATUS_IO_ERROR, SANE_STATUS_CANCELLED, SANE_STATUS_EOF}) {
        FakeFrame sent = frameOf(10, 6, 30);
        sent.end = status;
        const Frame frame = read(sent);
        EXPECT_EQ(receivedBytes(frame), sent.bytes) << status;
    }
}

TEST_F(FrameReader, AnEmptyReadEndsTheFrame)
{
    FakeFrame sent = frameOf(10, 6, 60);
    sent.chunks = {20, 0};
    EXPECT_EQ(read(sent).received, 20U);
}

TEST_F(FrameReader, AnUnknownNumberOfLinesIsReadToTheEnd)
{
    for (const SANE_Int lines : {-1, 0, INT_MIN}) {
        const FakeFrame sent = frameOf(10, lines, 57);
        const Frame frame = read(sent);
        EXPECT_EQ(receivedBytes(frame), sent.bytes) << lines;
        EXPECT_EQ(frame.lines(), 5) << lines;
    }
}

TEST_F(FrameReader, ManyUnknownLinesAreReadWhole)
{
    const FakeFrame sent = frameOf(1000, -1, 3'500'000);
    const Frame frame = read(sent);
    EXPECT_EQ(receivedBytes(frame), sent.bytes);
    EXPECT_EQ(frame.lines(), 3500);
}

TEST_F(FrameReader, UnusableParametersGiveNoBytes)
{
    for (const SANE_Int bytesPerLine : {0, -1, INT_MIN}) {
        const Frame frame = read(frameOf(bytesPerLine, 6, 60));
        EXPECT_TRUE(frame.bytes.empty()) << bytesPerLine;
        EXPECT_EQ(frame.received, 0U);
        EXPECT_EQ(m_scanner.journal().count(CallKind::Read), 0);
    }
    for (const SANE_Int bytesPerLine : {0, -1, INT_MIN}) {
        FakeFrame noBytes = frameOf(10, 6, 60);
        noBytes.parameters.bytes_per_line = bytesPerLine;
        EXPECT_TRUE(read(noBytes).bytes.empty()) << bytesPerLine;
        EXPECT_EQ(m_scanner.journal().count(CallKind::Read), 0);
    }
    FakeFrame noPixels = frameOf(10, 6, 60);
    noPixels.parameters.pixels_per_line = 0;
    EXPECT_TRUE(read(noPixels).bytes.empty());
    FakeFrame refused = frameOf(10, 6, 60);
    refused.parametersStatus = SANE_STATUS_IO_ERROR;
    EXPECT_TRUE(read(refused).bytes.empty());
}

TEST_F(FrameReader, AnAbsurdSizeIsNotRead)
{
    const Frame frame = read(frameOf(1'000'000, 1'000'000, 100));
    EXPECT_TRUE(frame.bytes.empty());
    EXPECT_EQ(frame.received, 0U);
    EXPECT_EQ(m_scanner.journal().count(CallKind::Read), 0);
}
