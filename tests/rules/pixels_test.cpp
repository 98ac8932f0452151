#include "rules/pixels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <numeric>
#include <ostream>
#include <utility>

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

using namespace kestrel;
using Bytes = std::vector<unsigned char>;

namespace {

constexpr int kMax = std::numeric_limits<int>::max();
constexpr int kMin = std::numeric_limits<int>::min();

struct Free
{
    void operator()(unsigned char* memory) const { std::free(memory); }
};
using Converted = std::unique_ptr<unsigned char, Free>;

/// Bytes that all differ from their neighbours.
Bytes counted(std::size_t size)
{
    Bytes bytes(size);
    unsigned int value = 1;
    for (unsigned char& byte : bytes) {
        value = value * 73U + 29U;
        byte = static_cast<unsigned char>(value % 251U);
    }
    return bytes;
}

} // namespace

TEST(PixelBytes, IsTheProductOrNothing)
{
    EXPECT_EQ(pixelBytes(2, 3, 4), 24U);
    EXPECT_EQ(pixelBytes(1, 1, 1), 1U);
    EXPECT_EQ(pixelBytes(kMax, 1, 4), std::size_t{kMax} * 4);
    EXPECT_EQ(pixelBytes(0, 3, 4), std::nullopt);
    EXPECT_EQ(pixelBytes(3, 0, 4), std::nullopt);
    EXPECT_EQ(pixelBytes(3, 3, 0), std::nullopt);
    EXPECT_EQ(pixelBytes(-1, -1, 4), std::nullopt);
    EXPECT_EQ(pixelBytes(kMin, kMin, 4), std::nullopt);
    EXPECT_EQ(pixelBytes(kMax, kMax, 4), std::nullopt);
    EXPECT_EQ(pixelBytes(kMax, kMax, std::numeric_limits<std::size_t>::max()), std::nullopt);
}

TEST(Rgb24To32, SwapsTheBytesOfEveryPixelButThoseOfTheLastRow)
{
    // Widths around the steps in which pixels are taken, so that each has its remainder.
    for (int width = 1; width <= 40; ++width) {
        for (const int height : {2, 3, 7}) {
            // Not a byte of the last row is there, so reading one shows under a sanitizer.
            const auto converted =
                static_cast<std::size_t>(width) * (static_cast<std::size_t>(height) - 1);
            const Bytes rgb = counted(converted * 3);
            const Converted pixels(rgb24To32(rgb.data(), width, height));
            ASSERT_NE(pixels, nullptr);
            for (std::size_t i = 0; i < converted; ++i) {
                ASSERT_EQ(pixels.get()[4 * i], rgb[3 * i + 2])
                    << width << 'x' << height << " at " << i;
                ASSERT_EQ(pixels.get()[4 * i + 1], rgb[3 * i + 1]);
                ASSERT_EQ(pixels.get()[4 * i + 2], rgb[3 * i]);
                ASSERT_EQ(pixels.get()[4 * i + 3], 0);
            }
        }
    }
}

TEST(Rgb24To32, LeavesTheLastRowAsTheMemoryCame)
{
    // The allocator is made to fill what it hands out: glibc with the complement of this, the
    // address sanitizer's, which takes no orders, with bytes of its own. Small blocks would be left
    // out.
    const int fill = mallopt(M_PERTURB, 0x5a) == 1 ? 0xa5 : 0xbe;
    constexpr std::size_t kWidth = 300;
    const Bytes rgb = counted(kWidth * 3 * 3);
    const Converted some(rgb24To32(rgb.data(), kWidth, 3));
    const Converted none(rgb24To32(rgb.data(), kWidth, 1));
    mallopt(M_PERTURB, 0);
    ASSERT_NE(some, nullptr);
    ASSERT_NE(none, nullptr);
    EXPECT_EQ(some.get()[4 * kWidth * 2 - 1], 0);
    for (std::size_t i = 0; i < 4 * kWidth; ++i) {
        EXPECT_EQ(some.get()[4 * kWidth * 2 + i], fill) << i;
        EXPECT_EQ(none.get()[i], fill) << i;
    }
}

TEST(Rgb24To32, ReadsNotAByteBehindTheRowsItConverts)
{
    // The source ends where a page begins that nobody may touch.
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* const memory =
        mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    unsigned char* const end = static_cast<unsigned char*>(memory) + page;
    ASSERT_EQ(mprotect(end, page, PROT_NONE), 0);
    for (int width = 1; width <= 40; ++width) {
        std::fill(end - 3 * width, end, static_cast<unsigned char>(width));
        const Converted pixels(rgb24To32(end - 3 * width, width, 2));
        ASSERT_NE(pixels, nullptr);
        EXPECT_EQ(pixels.get()[4 * (width - 1)], width);
    }
    munmap(memory, 2 * page);
}

TEST(Rgb24To32, OneRowReadsNothing)
{
    const Converted pixels(rgb24To32(nullptr, 1000, 1));
    EXPECT_NE(pixels, nullptr);
}

TEST(Rgb24To32, ConvertsAWholePage)
{
    constexpr int kWidth = 2480;
    constexpr int kHeight = 3508;
    const Bytes rgb = counted(std::size_t{kWidth} * kHeight * 3);
    const Converted pixels(rgb24To32(rgb.data(), kWidth, kHeight));
    ASSERT_NE(pixels, nullptr);
    std::size_t wrong = 0;
    for (std::size_t i = 0; i < std::size_t{kWidth} * (kHeight - 1); ++i) {
        wrong += static_cast<std::size_t>(
            pixels.get()[4 * i] != rgb[3 * i + 2] || pixels.get()[4 * i + 1] != rgb[3 * i + 1] ||
            pixels.get()[4 * i + 2] != rgb[3 * i] || pixels.get()[4 * i + 3] != 0);
    }
    EXPECT_EQ(wrong, 0U);
}

TEST(Rgb24To32, NothingToConvertIsNoFailure)
{
    for (const auto& [width, height] :
         std::initializer_list<std::pair<int, int>>{{0, 4}, {4, 0}, {0, 0}}) {
        const Converted pixels(rgb24To32(nullptr, width, height));
        EXPECT_NE(pixels, nullptr) << width << 'x' << height;
    }
}

TEST(Rgb24To32, SizesThatMakeNoPictureGiveNull)
{
    const Bytes rgb(16);
    for (const auto& [width, height] : std::initializer_list<std::pair<int, int>>{
             {-1, 4}, {4, -1}, {-4, -4}, {kMin, kMin}, {kMax, kMax}}) {
        const Converted pixels(rgb24To32(rgb.data(), width, height));
        EXPECT_EQ(pixels, nullptr) << width << 'x' << height;
    }
}

TEST(PackedRgb24, HandsPackedRgbThrough)
{
    Bytes bytes = counted(3 * 5 * 4);
    const Bytes expected = bytes;
    const unsigned char* const memory = bytes.data();
    const Bytes packed = packedRgb24(std::move(bytes), {5, 4, 15, PixelLayout::Rgb24});
    EXPECT_EQ(packed, expected);
    EXPECT_EQ(packed.data(), memory);
}

TEST(PackedRgb24, DropsThePadding)
{
    const Bytes bytes{1, 2, 3, 4, 5, 6, 99, 99, 7, 8, 9, 10, 11, 12, 99, 99};
    EXPECT_EQ(packedRgb24(bytes, {2, 2, 8, PixelLayout::Rgb24}),
              (Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
}

TEST(PackedRgb24, WidensGray)
{
    EXPECT_EQ(packedRgb24({0, 128, 255, 7}, {2, 2, 2, PixelLayout::Gray8}),
              (Bytes{0, 0, 0, 128, 128, 128, 255, 255, 255, 7, 7, 7}));
    EXPECT_EQ(packedRgb24({1, 2, 99, 3, 4, 99}, {2, 2, 3, PixelLayout::Gray8}),
              (Bytes{1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4}));
}

TEST(PackedRgb24, WidensBilevelWithOneAsBlack)
{
    // Ten pixels a row: the second byte of a row holds two of them and six bits of nothing.
    const Bytes packed = packedRgb24({0x81, 0x7f, 0x00, 0x80}, {10, 2, 2, PixelLayout::Bilevel1});
    const std::vector<int> black{1, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0};
    ASSERT_EQ(packed.size(), black.size() * 3);
    for (std::size_t i = 0; i < packed.size(); ++i) {
        EXPECT_EQ(packed[i], black[i / 3] != 0 ? 0 : 255) << i;
    }
}

TEST(PackedRgb24, MissingBytesCountAsZero)
{
    EXPECT_EQ(packedRgb24({9}, {2, 2, 6, PixelLayout::Rgb24}),
              (Bytes{9, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(packedRgb24({1, 2, 3, 4, 5, 6, 0, 0, 7}, {2, 2, 8, PixelLayout::Rgb24}),
              (Bytes{1, 2, 3, 4, 5, 6, 7, 0, 0, 0, 0, 0}));
    EXPECT_EQ(packedRgb24({5}, {2, 1, 2, PixelLayout::Gray8}), (Bytes{5, 5, 5, 0, 0, 0}));
    EXPECT_EQ(packedRgb24({}, {1, 2, 1, PixelLayout::Bilevel1}), Bytes(6, 255));
    EXPECT_EQ(packedRgb24({0x80}, {9, 1, 2, PixelLayout::Bilevel1}).at(0), 0);
    EXPECT_EQ(packedRgb24({0x80}, {9, 1, 2, PixelLayout::Bilevel1}).at(24), 255);
}

TEST(PackedRgb24, BytesBeyondTheFrameAreDropped)
{
    EXPECT_EQ(packedRgb24(Bytes(100, 3), {1, 2, 3, PixelLayout::Rgb24}), Bytes(6, 3));
    EXPECT_EQ(packedRgb24(Bytes(100, 3), {1, 2, 1, PixelLayout::Gray8}), Bytes(6, 3));
}

TEST(PackedRgb24, ShapesThatMakeNoPictureGiveNothing)
{
    const Bytes bytes(64, 1);
    for (const PixelLayout layout :
         {PixelLayout::Rgb24, PixelLayout::Gray8, PixelLayout::Bilevel1}) {
        for (const FrameShape& shape :
             {FrameShape{0, 2, 6, layout}, FrameShape{2, 0, 6, layout},
              FrameShape{-2, 2, 6, layout}, FrameShape{2, -1, 6, layout},
              FrameShape{2, 2, 0, layout}, FrameShape{2, 2, -6, layout},
              FrameShape{200, 2, 1, layout}, FrameShape{kMax, kMax, kMax, layout},
              FrameShape{kMin, kMin, kMin, layout}, FrameShape{100000, 100000, 300000, layout}}) {
            EXPECT_TRUE(packedRgb24(bytes, shape).empty())
                << shape.width << ' ' << shape.height << ' ' << shape.bytesPerLine;
        }
    }
}

namespace {

struct ScaledSize
{
    int width;
    int height;
    int fullWidth;
    int fullHeight;
};

std::ostream& operator<<(std::ostream& out, const ScaledSize& size)
{
    return out << size.width << 'x' << size.height << " to " << size.fullWidth << 'x'
               << size.fullHeight;
}

class ScaleNearest : public testing::TestWithParam<ScaledSize>
{
};

} // namespace

TEST_P(ScaleNearest, EveryPartIsThatPartOfTheWhole)
{
    const auto [width, height, fullWidth, fullHeight] = GetParam();
    std::vector<std::uint32_t> picture(static_cast<std::size_t>(width * height));
    std::iota(picture.begin(), picture.end(), 0U);
    for (const int left : {0, fullWidth / 3, fullWidth - 1}) {
        for (const int top : {0, fullHeight / 3, fullHeight - 1}) {
            const int partWidth = fullWidth - left;
            const int partHeight = fullHeight - top;
            const auto stride = static_cast<std::size_t>(partWidth) + 2;
            std::vector<std::uint32_t> part(stride * static_cast<std::size_t>(partHeight), 77777U);
            scaleNearest(picture.data(), static_cast<std::size_t>(width), part.data(), stride,
                         {width, height, fullWidth, fullHeight, left, top, partWidth, partHeight});
            for (int y = 0; y < partHeight; ++y) {
                for (int x = 0; x < partWidth; ++x) {
                    const int column = static_cast<int>((left + x + 0.5) * width / fullWidth);
                    const int row = static_cast<int>((top + y + 0.5) * height / fullHeight);
                    ASSERT_EQ(
                        part[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x)],
                        static_cast<std::uint32_t>(row * width + column))
                        << x << ',' << y << " of part at " << left << ',' << top;
                }
                ASSERT_EQ(part[static_cast<std::size_t>(y) * stride + stride - 1], 77777U);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, ScaleNearest,
                         testing::Values(ScaledSize{1, 1, 1, 1}, ScaledSize{1, 1, 7, 5},
                                         ScaledSize{7, 5, 1, 1}, ScaledSize{10, 10, 20, 30},
                                         ScaledSize{20, 30, 10, 10}, ScaledSize{13, 17, 29, 11},
                                         ScaledSize{100, 1, 3, 90}));

TEST(ScaleNearest, HugeScaledPicturesNeedNoMoreThanThePart)
{
    const std::vector<std::uint32_t> picture{1, 2, 3, 4};
    std::vector<std::uint32_t> part(4);
    constexpr std::int64_t kFull = std::int64_t{1} << 40;
    scaleNearest(picture.data(), 4, part.data(), 4,
                 {4, 1, kFull, kFull, kFull / 2 - 2, kFull - 1, 4, 1});
    EXPECT_EQ(part, (std::vector<std::uint32_t>{2, 2, 3, 3}));
}
