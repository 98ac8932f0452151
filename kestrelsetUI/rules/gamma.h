/// @file
/// Gamma: the table for the scanner, and the slider and spin box that show it.
#pragma once

namespace kestrel {

constexpr int kGammaTableSize = 256;
/// Limits of the gamma slider, which holds the gamma times 100.
constexpr int kGammaSliderMin = 30;
constexpr int kGammaSliderMax = 300;

/// Fills a table with 255 * (i / 255)^gamma, rounded.
/// @param table 256 entries, the caller's; each becomes 0..255
/// @param gamma exponent; 1.0 gives the identity, 0.0 gives 255 throughout
/// @return true
bool setupGammaTable(int* table, double gamma);

/// The exponent for a slider position: 1 / gamma in single precision.
double gammaExponent(int slider) noexcept;

/// Slider, spin box and table exponent at rest. One control writes the other and is not written
/// back by it, otherwise the truncation below would pull a value down step by step.
struct GammaState
{
    int slider;      ///< gamma times 100
    double value;    ///< the spin box
    double exponent; ///< for `setupGammaTable`
};

/// The slider was put at a position.
GammaState gammaFromSlider(int slider) noexcept;
/// A gamma was typed. The slider takes it truncated toward zero, in double precision (1.15 gives
/// 114), within its limits; the spin box then shows the slider's position.
GammaState gammaFromValue(double value) noexcept;

} // namespace kestrel
