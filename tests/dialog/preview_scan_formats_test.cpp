// Frames of every shape into the preview.
#include "preview_dialog.h"

#include <gtest/gtest.h>

#include <climits>

using namespace kestrel::test;

namespace {

class PreviewFormats : public PreviewTest
{
protected:
    PreviewFormats() { start(); }

    /// Expects @p frame to leave the picture, and the scan to be cancelled once.
    void expectRefused(const FakeFrame& frame, const char* what)
    {
        scan(colourFrame(20, 10));
        scanner.clearJournal();
        scan(frame);
        SCOPED_TRACE(what);
        EXPECT_EQ(scanner.journal().count(CallKind::Cancel), 1);
        expectColours(20, 10, 9);
        expectReady();
    }

    static FakeFrame filled(FakeFrame frame, std::size_t bytes)
    {
        frame.bytes.assign(bytes, 0x55);
        return frame;
    }

    int gray(int x, int y) const
    {
        const QRgb pixel = picture().pixel(x, y);
        EXPECT_EQ(qRed(pixel), qGreen(pixel));
        EXPECT_EQ(qRed(pixel), qBlue(pixel));
        return qRed(pixel);
    }
};

} // namespace

TEST_F(PreviewFormats, PaddingBehindTheRowsIsDropped)
{
    for (const int padding : {0, 1, 2, 3, 4, 61}) {
        scan(colourFrame(20, 10, padding));
        expectColours(20, 10, 9);
    }
}

TEST_F(PreviewFormats, GrayIsWidened)
{
    FakeFrame frame = emptyFrame(SANE_FRAME_GRAY, 8, 7, 4, 9);
    for (int i = 0; i < 36; ++i) {
        frame.bytes.push_back(static_cast<SANE_Byte>(7 * i));
    }
    scan(frame);
    ASSERT_EQ(picture().size(), QSize(7, 4));
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 7; ++x) {
            EXPECT_EQ(gray(x, y), 7 * (9 * y + x)) << x << ", " << y;
        }
    }
}

TEST_F(PreviewFormats, BlackAndWhiteIsWidenedAndOneIsBlack)
{
    FakeFrame frame = emptyFrame(SANE_FRAME_GRAY, 1, 10, 3, 2);
    frame.bytes = {0x80, 0x40, 0x0f, 0x80, 0, 0};
    scan(frame);
    ASSERT_EQ(picture().size(), QSize(10, 3));
    const std::vector<std::string> rows{"#........#", "....#####."};
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 10; ++x) {
            const char expected = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
            EXPECT_EQ(gray(x, y), expected == '#' ? 0 : 255) << x << ", " << y;
        }
    }
}

TEST_F(PreviewFormats, WhatIsNoEightBitColourOrGrayIsNotShown)
{
    expectRefused(filled(emptyFrame(SANE_FRAME_RGB, 16, 4, 4, 24), 96), "16 bit colour");
    expectRefused(filled(emptyFrame(SANE_FRAME_GRAY, 16, 4, 4, 8), 32), "16 bit gray");
    expectRefused(filled(emptyFrame(SANE_FRAME_RGB, 1, 8, 4, 3), 12), "1 bit colour");
    expectRefused(filled(emptyFrame(SANE_FRAME_RED, 8, 4, 4, 4), 16), "red pass");
    expectRefused(filled(emptyFrame(SANE_FRAME_GREEN, 8, 4, 4, 4), 16), "green pass");
    expectRefused(filled(emptyFrame(SANE_FRAME_BLUE, 8, 4, 4, 4), 16), "blue pass");
    expectRefused(filled(emptyFrame(static_cast<SANE_Frame>(7), 8, 4, 4, 12), 48), "unknown");
    expectRefused(filled(emptyFrame(SANE_FRAME_RGB, 0, 4, 4, 12), 48), "depth 0");
    expectRefused(filled(emptyFrame(SANE_FRAME_RGB, -8, 4, 4, 12), 48), "depth -8");
}

TEST_F(PreviewFormats, ShapesThatAreNoPictureAreNotShown)
{
    expectRefused(filled(emptyFrame(SANE_FRAME_RGB, 8, 4, 4, 11), 44), "rows too short");
    expectRefused(filled(emptyFrame(SANE_FRAME_GRAY, 8, 4, 4, 3), 12), "gray rows too short");
    expectRefused(filled(emptyFrame(SANE_FRAME_GRAY, 1, 9, 4, 1), 4), "bilevel rows too short");
    for (const int bad : {0, -1, INT_MIN}) {
        expectRefused(filled(emptyFrame(SANE_FRAME_RGB, 8, bad, 4, 12), 48), "width");
        expectRefused(filled(emptyFrame(SANE_FRAME_RGB, 8, 4, 4, bad), 48), "bytes a line");
    }
    expectRefused(filled(emptyFrame(SANE_FRAME_RGB, 8, INT_MAX, 4, 12), 48), "endless rows");
}

TEST_F(PreviewFormats, WhenTheLinesAreNotKnownTheHeightIsWhatCame)
{
    for (const int lines : {-1, 0, INT_MIN}) {
        FakeFrame frame = colourFrame(20, 10, 4);
        frame.parameters.lines = lines;
        frame.bytes.resize(7 * 64 + 63); // the eighth line is one byte short
        scan(frame);
        expectColours(20, 7, 6);
    }
}

TEST_F(PreviewFormats, UnknownLinesOfWhichLessThanOneCameAreNotShown)
{
    FakeFrame frame = colourFrame(20, 1);
    frame.parameters.lines = -1;
    frame.bytes.pop_back();
    expectRefused(frame, "59 of 60 bytes");
    frame.bytes.clear();
    expectRefused(frame, "nothing");
}

TEST_F(PreviewFormats, APictureOfOnePixelIsShown)
{
    scan(colourFrame(1, 1));
    EXPECT_EQ(picture().size(), QSize(1, 1));
    expectReady();
}

TEST_F(PreviewFormats, ExtremeProportionsAreShown)
{
    scan(colourFrame(100'000, 1));
    EXPECT_EQ(picture().size(), QSize(100'000, 1));
    box().grab();
    scan(colourFrame(1, 100'000));
    expectColours(1, 100'000, 99'999);
    box().grab();
    scan(colourFrame(100'000, 2));
    expectColours(100'000, 2, 1);
    box().grab();
}

TEST_F(PreviewFormats, AFrameBeyond256MebibytesIsNotRead)
{
    const FakeFrame beyond = filled(emptyFrame(SANE_FRAME_RGB, 8, 10'000, 8'948, 30'000), 30'000);
    ASSERT_GT(30'000LL * 8'948, 256LL << 20);
    ASSERT_LE(30'000LL * 8'947, 256LL << 20);
    expectRefused(beyond, "256 MiB");
    EXPECT_EQ(scanner.journal().count(CallKind::Read), 0);
    expectRefused(filled(emptyFrame(SANE_FRAME_RGB, 8, INT_MAX / 3, INT_MAX, INT_MAX), 100),
                  "as large as can be said");
    EXPECT_EQ(scanner.journal().count(CallKind::Read), 0);
}
