#include "rules/bounds.h"

namespace kestrel {

std::optional<int> minimumDespeckleRatio(int dots) noexcept
{
    // From the area of a square of 3, 5, 7 .. 15 dots on, the ratio is at least 2, 3, 4 .. 8.
    std::optional<int> minimum;
    for (int k = 1; k <= 7 && dots >= (2 * k + 1) * (2 * k + 1); ++k) {
        minimum = k + 1;
    }
    return minimum;
}

int despeckleRatio(int ratio, int dots) noexcept
{
    return std::max(ratio, minimumDespeckleRatio(dots).value_or(ratio));
}

} // namespace kestrel
