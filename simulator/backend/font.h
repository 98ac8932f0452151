#pragma once

#include <array>
#include <cstdint>

namespace kestrel::sim {

constexpr int glyphWidth = 5;
constexpr int glyphHeight = 7;

/// One letter as seven rows of five dots; the highest of the five bits is the left dot.
using Glyph = std::array<std::uint8_t, glyphHeight>;

/// The picture of @p letter; small letters are drawn as capitals, unknown signs as a box.
const Glyph& glyphFor(char letter) noexcept;

} // namespace kestrel::sim
