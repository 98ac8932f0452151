#include "rules/pixels.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

#if defined(__x86_64__)
#include <tmmintrin.h>
#endif

#include <sys/mman.h>
#include <unistd.h>

namespace kestrel {
namespace {

// From this size on, memory comes fresh from the system.
constexpr std::size_t kFreshMemory = std::size_t{4} << 20U;

/// Asks for large pages behind @p memory: touching fresh memory in small ones takes several times
/// as long as the conversion into it. Where there are none, nothing changes.
void preferLargePages(void* memory, std::size_t size)
{
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const auto gap = (page - reinterpret_cast<std::uintptr_t>(memory) % page) % page;
    if (size >= kFreshMemory) {
        madvise(static_cast<unsigned char*>(memory) + gap, (size - gap) / page * page,
                MADV_HUGEPAGE);
    }
}

void convertOneByOne(const unsigned char* rgb, std::uint32_t* pixels, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i, rgb += 3) {
        pixels[i] =
            std::uint32_t{rgb[0]} << 16U | std::uint32_t{rgb[1]} << 8U | std::uint32_t{rgb[2]};
    }
}

#if defined(__x86_64__)
/// Four pixels at once, for the processors that can pick bytes.
/// @return how many of the pixels it has converted
__attribute__((target("ssse3"))) std::size_t
convertFourByFour(const unsigned char* rgb, std::uint32_t* pixels, std::size_t count)
{
    const __m128i order = _mm_setr_epi8(2, 1, 0, -1, 5, 4, 3, -1, 8, 7, 6, -1, 11, 10, 9, -1);
    std::size_t i = 0;
    // Sixteen bytes are read for the twelve of four pixels: two more pixels must follow.
    for (; i + 6 <= count; i += 4) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(rgb + 3 * i));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels + i), _mm_shuffle_epi8(bytes, order));
    }
    return i;
}
#endif

void convertPixels(const unsigned char* rgb, std::uint32_t* pixels, std::size_t count)
{
    std::size_t done = 0;
#if defined(__x86_64__)
    if (__builtin_cpu_supports("ssse3") != 0) {
        done = convertFourByFour(rgb, pixels, count);
    }
#endif
    convertOneByOne(rgb + 3 * done, pixels + done, count - done);
}

std::optional<std::size_t> bytesOfRow(const FrameShape& shape)
{
    if (shape.width <= 0) {
        return std::nullopt;
    }
    const auto width = static_cast<std::size_t>(shape.width);
    switch (shape.layout) {
    case PixelLayout::Rgb24:
        return width * 3;
    case PixelLayout::Gray8:
        return width;
    case PixelLayout::Bilevel1:
        return (width + 7) / 8;
    }
    return std::nullopt;
}

void widenRow(const unsigned char* from, unsigned char* rgb, std::size_t width, PixelLayout layout)
{
    switch (layout) {
    case PixelLayout::Rgb24:
        std::memcpy(rgb, from, width * 3);
        break;
    case PixelLayout::Gray8:
        for (std::size_t x = 0; x < width; ++x) {
            std::memset(rgb + 3 * x, from[x], 3);
        }
        break;
    case PixelLayout::Bilevel1:
        for (std::size_t x = 0; x < width; ++x) {
            const bool black = (from[x / 8] >> (7 - x % 8) & 1) != 0;
            std::memset(rgb + 3 * x, black ? 0 : 255, 3);
        }
        break;
    }
}

} // namespace

std::optional<std::size_t> pixelBytes(int width, int height, std::size_t bytesPerPixel)
{
    if (width <= 0 || height <= 0 || bytesPerPixel == 0) {
        return std::nullopt;
    }
    // Two positive ints can not overflow 64 bits; the third factor can.
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    constexpr auto most = static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max());
    if (pixels > most / bytesPerPixel) {
        return std::nullopt;
    }
    return pixels * bytesPerPixel;
}

unsigned char* rgb24To32(const unsigned char* rgb, int width, int height)
{
    if (width >= 0 && height >= 0 && (width == 0 || height == 0)) {
        return static_cast<unsigned char*>(std::malloc(1)); // nothing to fill, but no failure
    }
    const auto size = pixelBytes(width, height, 4);
    if (!size) {
        return nullptr;
    }
    auto* pixels = static_cast<std::uint32_t*>(std::malloc(*size));
    if (pixels != nullptr && height >= 2) {
        preferLargePages(pixels, *size);
        // Rows follow each other without gaps on both sides: all but the last are one run.
        convertPixels(rgb, pixels, *size / 4 - static_cast<std::size_t>(width));
    }
    return reinterpret_cast<unsigned char*>(pixels);
}

std::vector<unsigned char> packedRgb24(std::vector<unsigned char> bytes, const FrameShape& shape)
{
    const auto packedSize = pixelBytes(shape.width, shape.height, 3);
    const auto rowBytes = bytesOfRow(shape);
    if (!packedSize || *packedSize > kMaximumPackedBytes || !rowBytes || shape.bytesPerLine <= 0 ||
        static_cast<std::size_t>(shape.bytesPerLine) < *rowBytes) {
        return {};
    }
    const auto stride = static_cast<std::size_t>(shape.bytesPerLine);
    const auto rows = static_cast<std::size_t>(shape.height);
    const auto width = static_cast<std::size_t>(shape.width);
    if (shape.layout == PixelLayout::Rgb24 && stride == *rowBytes) {
        bytes.resize(*packedSize);
        return bytes;
    }
    // Rows that have not arrived count as bytes of 0, so they need not be there.
    std::vector<unsigned char> packed(*packedSize, shape.layout == PixelLayout::Bilevel1 ? 255 : 0);
    std::vector<unsigned char> lastRow(*rowBytes);
    for (std::size_t row = 0; row < rows && row * stride < bytes.size(); ++row) {
        const unsigned char* from = bytes.data() + row * stride;
        const std::size_t there = bytes.size() - row * stride;
        if (there < *rowBytes) {
            std::memcpy(lastRow.data(), from, there);
            from = lastRow.data();
        }
        widenRow(from, packed.data() + row * width * 3, width, shape.layout);
    }
    return packed;
}

void scaleNearest(const std::uint32_t* from, std::size_t fromStride, std::uint32_t* to,
                  std::size_t toStride, const ScaledPart& part)
{
    // The pixel whose area holds the middle of the scaled one.
    const auto nearest = [](std::int64_t at, int size, std::int64_t fullSize) {
        return static_cast<std::size_t>((2 * at + 1) * size / (2 * fullSize));
    };
    std::vector<std::size_t> columns(static_cast<std::size_t>(part.partWidth));
    for (std::size_t x = 0; x < columns.size(); ++x) {
        columns[x] = nearest(part.left + static_cast<std::int64_t>(x), part.width, part.fullWidth);
    }
    for (int y = 0; y < part.partHeight; ++y, to += toStride) {
        const std::uint32_t* row =
            from + nearest(part.top + y, part.height, part.fullHeight) * fromStride;
        std::transform(columns.begin(), columns.end(), to,
                       [row](std::size_t column) { return row[column]; });
    }
}

} // namespace kestrel
