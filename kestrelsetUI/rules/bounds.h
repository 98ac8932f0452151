/// @file
/// Lower bounds that one control sets for another.
#pragma once

#include <algorithm>
#include <optional>

namespace kestrel {

/// The smallest despeckle ratio for a dot count; nothing up to 8 dots.
std::optional<int> minimumDespeckleRatio(int dots) noexcept;
/// The despeckle ratio for a dot count: raised to its minimum, never lowered.
int despeckleRatio(int ratio, int dots) noexcept;

/// The power-off time, in minutes, that goes with a power-saving time: never the earlier of the
/// two. Holds whichever of them was moved.
constexpr int powerOffTime(int powerOff, int powerSaving) noexcept
{
    return std::max(powerOff, powerSaving);
}

} // namespace kestrel
