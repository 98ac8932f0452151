#include "rules/gamma.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace kestrel {

bool setupGammaTable(int* table, double gamma)
{
    std::array<double, kGammaTableSize> powers{};
    double largest = 0.0;
    for (std::size_t i = 0; i < powers.size(); ++i) {
        powers[i] = std::pow(static_cast<double>(i), gamma);
        largest = std::max(largest, powers[i]);
    }
    for (std::size_t i = 0; i < powers.size(); ++i) {
        const double entry = std::round(255.0 * (powers[i] / largest));
        // An exponent that no gamma gives overflows to infinity over infinity, which is no number.
        table[i] = std::isnan(entry) ? 0 : static_cast<int>(std::min(entry, 255.0));
    }
    return true;
}

double gammaExponent(int slider) noexcept
{
    return static_cast<double>(static_cast<float>(1.0 / (slider / 100.0)));
}

GammaState gammaFromSlider(int slider) noexcept
{
    return {slider, slider / 100.0, gammaExponent(slider)};
}

GammaState gammaFromValue(double value) noexcept
{
    const double scaled = std::clamp(value * 100.0, static_cast<double>(kGammaSliderMin),
                                     static_cast<double>(kGammaSliderMax));
    return gammaFromSlider(static_cast<int>(scaled));
}

} // namespace kestrel
