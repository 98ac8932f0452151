/// @file
/// Brightness and contrast of the preview, on plain memory.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kestrel {

/// What becomes of a channel value: one entry for each of the 256.
using ToneTable = std::array<std::uint8_t, 256>;

/// @param brightness added first, limited to 0..255
/// @param contrast 0 none, 1..99 spread with a growing slope, 100 all but black and white; below 0
/// and
///        above 100 in proportion
ToneTable toneTable(int brightness, int contrast);

/// Sends red, green and blue of each pixel through @p table and keeps the alpha.
/// @param from pixels as 0xAARRGGBB
/// @param to where the results go; may be @p from
/// @param count pixels
void applyTone(const ToneTable& table, const std::uint32_t* from, std::uint32_t* to,
               std::size_t count);

} // namespace kestrel
