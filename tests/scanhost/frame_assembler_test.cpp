#include <frame_assembler.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

using kestrel::FrameAssembler;
using kestrel::FrameProblem;
using Bytes = std::vector<SANE_Byte>;

SANE_Parameters parametersOf(SANE_Frame format, int depth, int width, int lines, int bytesPerLine)
{
    SANE_Parameters parameters{};
    parameters.format = format;
    parameters.last_frame = SANE_TRUE;
    parameters.depth = depth;
    parameters.pixels_per_line = width;
    parameters.lines = lines;
    parameters.bytes_per_line = bytesPerLine;
    return parameters;
}

QImage assemble(const SANE_Parameters& parameters, const Bytes& bytes, std::size_t pieceSize,
                int dpi = 300)
{
    FrameAssembler assembler(parameters);
    for (std::size_t at = 0; at < bytes.size(); at += pieceSize) {
        EXPECT_TRUE(assembler.append(bytes.data() + at, std::min(pieceSize, bytes.size() - at)));
    }
    return assembler.finish(dpi);
}

Bytes counting(std::size_t size)
{
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<SANE_Byte>(i * 7 + 3);
    }
    return bytes;
}

} // namespace

TEST(FrameAssembler, SetBitsOfABilevelFrameAreBlackLeftmostFirst)
{
    // 10 pixels: the first, the last but one and, on the second line, the tenth.
    const QImage image =
        assemble(parametersOf(SANE_FRAME_GRAY, 1, 10, 2, 2), {0x80, 0x80, 0x00, 0x40}, 100);
    ASSERT_EQ(image.size(), QSize(10, 2));
    EXPECT_EQ(image.depth(), 1);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 10; ++x) {
            const bool black = (y == 0 && (x == 0 || x == 8)) || (y == 1 && x == 9);
            EXPECT_EQ(qGray(image.pixel(x, y)), black ? 0 : 255) << x << ',' << y;
        }
    }
}

TEST(FrameAssembler, GrayKeepsItsLevels)
{
    const QImage image =
        assemble(parametersOf(SANE_FRAME_GRAY, 8, 3, 2, 3), {0, 127, 255, 10, 20, 30}, 100);
    ASSERT_EQ(image.format(), QImage::Format_Grayscale8);
    EXPECT_EQ(qGray(image.pixel(1, 0)), 127);
    EXPECT_EQ(qGray(image.pixel(2, 0)), 255);
    EXPECT_EQ(qGray(image.pixel(0, 1)), 10);
}

TEST(FrameAssembler, WideGrayKeepsAllSixteenBits)
{
    const std::uint16_t level = 0x1234;
    Bytes bytes(2);
    std::memcpy(bytes.data(), &level, 2);
    const QImage image = assemble(parametersOf(SANE_FRAME_GRAY, 16, 1, 1, 2), bytes, 1);
    ASSERT_EQ(image.format(), QImage::Format_Grayscale16);
    EXPECT_EQ(reinterpret_cast<const std::uint16_t*>(image.constScanLine(0))[0], level);
}

TEST(FrameAssembler, ColoursComeRedGreenBlue)
{
    const QImage image =
        assemble(parametersOf(SANE_FRAME_RGB, 8, 2, 1, 6), {1, 2, 3, 200, 150, 100}, 100);
    EXPECT_EQ(image.pixel(0, 0), qRgb(1, 2, 3));
    EXPECT_EQ(image.pixel(1, 0), qRgb(200, 150, 100));
}

TEST(FrameAssembler, WideColoursKeepAllSixteenBitsAndAreOpaque)
{
    const std::uint16_t samples[] = {0x0102, 0xfffe, 0x8000};
    Bytes bytes(6);
    std::memcpy(bytes.data(), samples, 6);
    const QImage image = assemble(parametersOf(SANE_FRAME_RGB, 16, 1, 1, 6), bytes, 4);
    ASSERT_EQ(image.format(), QImage::Format_RGBX64);
    const QRgba64 pixel = reinterpret_cast<const QRgba64*>(image.constScanLine(0))[0];
    EXPECT_EQ(pixel.red(), samples[0]);
    EXPECT_EQ(pixel.green(), samples[1]);
    EXPECT_EQ(pixel.blue(), samples[2]);
    EXPECT_EQ(pixel.alpha(), 0xffff);
}

TEST(FrameAssembler, PiecesOfAnyLengthGiveTheSamePicture)
{
    const SANE_Parameters parameters = parametersOf(SANE_FRAME_RGB, 8, 7, 5, 23);
    const Bytes bytes = counting(23 * 5);
    const QImage whole = assemble(parameters, bytes, bytes.size());
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece) {
        EXPECT_EQ(assemble(parameters, bytes, piece), whole) << piece;
    }
}

TEST(FrameAssembler, PaddingBehindTheLinesIsDropped)
{
    const QImage padded = assemble(parametersOf(SANE_FRAME_GRAY, 8, 2, 2, 5),
                                   {1, 2, 99, 99, 99, 3, 4, 99, 99, 99}, 3);
    const QImage tight = assemble(parametersOf(SANE_FRAME_GRAY, 8, 2, 2, 2), {1, 2, 3, 4}, 3);
    EXPECT_EQ(padded, tight);
}

TEST(FrameAssembler, UnknownNumberOfLinesEndsWithTheFrame)
{
    const int lines = 2500; // more than the room made at first, and not a multiple of it
    const Bytes bytes = counting(4 * lines);
    const QImage image = assemble(parametersOf(SANE_FRAME_GRAY, 8, 4, -1, 4), bytes, 1000);
    ASSERT_EQ(image.size(), QSize(4, lines));
    for (const int y : {0, 1023, 1024, 2047, 2048, lines - 1}) {
        EXPECT_EQ(qGray(image.pixel(3, y)), bytes[static_cast<std::size_t>(4 * y + 3)]) << y;
    }
}

TEST(FrameAssembler, ShortFrameIsCutToTheLinesThatCame)
{
    const SANE_Parameters parameters = parametersOf(SANE_FRAME_GRAY, 8, 3, 100, 3);
    EXPECT_EQ(assemble(parameters, counting(3 * 40), 7).size(), QSize(3, 40));
    EXPECT_EQ(assemble(parameters, counting(3 * 40 + 2), 7).size(), QSize(3, 40))
        << "half a line is none";
    EXPECT_TRUE(assemble(parameters, counting(2), 7).isNull());
    EXPECT_TRUE(assemble(parameters, {}, 7).isNull());
}

TEST(FrameAssembler, LinesBeyondTheAnnouncedOnesAreDropped)
{
    FrameAssembler assembler(parametersOf(SANE_FRAME_GRAY, 8, 2, 2, 2));
    const Bytes bytes{1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_TRUE(assembler.append(bytes.data(), bytes.size()));
    EXPECT_EQ(assembler.permille(), 1000);
    const QImage image = assembler.finish(0);
    ASSERT_EQ(image.size(), QSize(2, 2));
    EXPECT_EQ(qGray(image.pixel(1, 1)), 4);
}

TEST(FrameAssembler, ProgressFollowsTheLines)
{
    FrameAssembler known(parametersOf(SANE_FRAME_GRAY, 8, 1, 8, 1));
    FrameAssembler unknown(parametersOf(SANE_FRAME_GRAY, 8, 1, -1, 1));
    const Bytes three{1, 2, 3};
    known.append(three.data(), three.size());
    unknown.append(three.data(), three.size());
    EXPECT_EQ(known.permille(), 375);
    EXPECT_EQ(unknown.permille(), -1);
    EXPECT_EQ(unknown.lines(), 3);
}

TEST(FrameAssembler, ResolutionIsWrittenIntoThePicture)
{
    const SANE_Parameters parameters = parametersOf(SANE_FRAME_GRAY, 8, 1, 1, 1);
    EXPECT_EQ(assemble(parameters, {0}, 1, 300).dotsPerMeterX(), 11811);
    EXPECT_EQ(assemble(parameters, {0}, 1, 600).dotsPerMeterY(), 23622);
}

TEST(FrameAssembler, WhatCannotBeTakenIsNamed)
{
    struct Row
    {
        SANE_Parameters parameters;
        FrameProblem problem;
    };
    const int huge = 0x7fffffff;
    const std::vector<Row> rows{
        {parametersOf(SANE_FRAME_RED, 8, 10, 10, 10), FrameProblem::ThreePass},
        {parametersOf(SANE_FRAME_GREEN, 8, 10, 10, 10), FrameProblem::ThreePass},
        {parametersOf(SANE_FRAME_BLUE, 8, 10, 10, 10), FrameProblem::ThreePass},
        {parametersOf(static_cast<SANE_Frame>(5), 8, 10, 10, 10), FrameProblem::UnknownKind},
        {parametersOf(SANE_FRAME_GRAY, 0, 10, 10, 10), FrameProblem::Depth},
        {parametersOf(SANE_FRAME_GRAY, 4, 10, 10, 10), FrameProblem::Depth},
        {parametersOf(SANE_FRAME_GRAY, -8, 10, 10, 10), FrameProblem::Depth},
        {parametersOf(SANE_FRAME_RGB, 1, 10, 10, 10), FrameProblem::Depth},
        {parametersOf(SANE_FRAME_RGB, 12, 10, 10, 60), FrameProblem::Depth},
        {parametersOf(SANE_FRAME_GRAY, 8, 0, 10, 10), FrameProblem::Geometry},
        {parametersOf(SANE_FRAME_GRAY, 8, -1, 10, 10), FrameProblem::Geometry},
        {parametersOf(SANE_FRAME_GRAY, 8, huge, 10, huge), FrameProblem::Geometry},
        {parametersOf(SANE_FRAME_GRAY, 8, 10, 0, 10), FrameProblem::Geometry},
        {parametersOf(SANE_FRAME_GRAY, 8, 10, 10, 9), FrameProblem::Geometry},
        {parametersOf(SANE_FRAME_GRAY, 8, 10, 10, 0), FrameProblem::Geometry},
        {parametersOf(SANE_FRAME_GRAY, 8, 10, 10, -5), FrameProblem::Geometry},
        {parametersOf(SANE_FRAME_GRAY, 8, 10, 10, huge), FrameProblem::Geometry},
        {parametersOf(SANE_FRAME_GRAY, 1, 9, 10, 1), FrameProblem::Geometry},
        {parametersOf(SANE_FRAME_RGB, 16, 10, 10, 59), FrameProblem::Geometry},
        {parametersOf(SANE_FRAME_GRAY, 8, 1000, huge, 1000), FrameProblem::TooLarge},
        {parametersOf(SANE_FRAME_RGB, 16, 100'000, 100'000, 600'000), FrameProblem::TooLarge},
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        FrameAssembler assembler(rows[i].parameters);
        EXPECT_EQ(assembler.problem(), rows[i].problem) << "row " << i;
        EXPECT_FALSE(kestrel::frameProblemText(rows[i].problem).isEmpty());
        const Bytes bytes(100);
        EXPECT_FALSE(assembler.append(bytes.data(), bytes.size())) << "row " << i;
        EXPECT_TRUE(assembler.finish(300).isNull()) << "row " << i;
    }
}

TEST(FrameAssembler, ANumberOfLinesBelowMinusOneCountsAsUnknown)
{
    EXPECT_EQ(assemble(parametersOf(SANE_FRAME_GRAY, 8, 2, -7, 2), {1, 2, 3, 4}, 4).size(),
              QSize(2, 2));
}
