/// @file
/// What happens to the bytes of a frame on their way to the preview, on plain memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kestrel {

/// How a frame from the scanner holds its pixels.
enum class PixelLayout
{
    Rgb24,    ///< three bytes a pixel: red, green, blue
    Gray8,    ///< one byte a pixel, 255 is white
    Bilevel1, ///< one bit a pixel, first pixel in the highest bit, 1 is black
};

/// The shape of a frame.
struct FrameShape
{
    int width = 0;        ///< pixels a row
    int height = 0;       ///< rows
    int bytesPerLine = 0; ///< from one row to the next, padding included
    PixelLayout layout = PixelLayout::Rgb24;
};

/// Frames that would take more than this as packed RGB are refused: 256 MiB.
constexpr std::size_t kMaximumPackedBytes = std::size_t{256} << 20U;

/// @return width x height x bytesPerPixel, or nothing when a factor is not above 0 or the product
/// is
///         beyond what memory can be asked for
std::optional<std::size_t> pixelBytes(int width, int height, std::size_t bytesPerPixel);

/// Converts packed 24-bit RGB to pixels of the bytes B, G, R, 0. The last row is left unconverted.
/// @param rgb rows of 3 x @p width bytes; only read when @p height is 2 or more
/// @return 4 x @p width x @p height bytes to be released with free(); null when there is no memory
/// or a size is negative; a size of 0 gives memory that nothing is written to
unsigned char* rgb24To32(const unsigned char* rgb, int width, int height);

/// Brings a frame into packed 24-bit RGB: drops the padding, widens gray and bilevel.
/// @param bytes what has arrived; bytes missing at the end count as 0. Handed through when nothing
///        needs to be done
/// @return 3 x width x height bytes, empty when the shape makes no picture: a size not above 0,
/// rows
///         shorter than their pixels, or more than kMaximumPackedBytes
std::vector<unsigned char> packedRgb24(std::vector<unsigned char> bytes, const FrameShape& shape);

/// A part of a scaled picture; lengths in pixels.
struct ScaledPart
{
    int width; ///< of the picture
    int height;
    std::int64_t fullWidth; ///< of the scaled picture, above 0
    std::int64_t fullHeight;
    std::int64_t left; ///< where the part begins, within the scaled picture like all of it
    std::int64_t top;
    int partWidth;
    int partHeight;
};

/// Scales a part of a picture by taking the nearest pixel.
/// @param from the picture, its rows @p fromStride pixels apart
/// @param to where the part goes, its rows @p toStride pixels apart
void scaleNearest(const std::uint32_t* from, std::size_t fromStride, std::uint32_t* to,
                  std::size_t toStride, const ScaledPart& part);

} // namespace kestrel
