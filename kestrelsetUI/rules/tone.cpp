#include "rules/tone.h"

#include <algorithm>

namespace kestrel {
namespace {

constexpr int kMiddle = 127;
constexpr int kFullContrast = 100;
constexpr int kFullSlope = 99;

int limited(std::int64_t value)
{
    return static_cast<int>(std::clamp<std::int64_t>(value, 0, 255));
}

int withContrast(int channel, int contrast)
{
    const std::int64_t distance = channel - kMiddle;
    if (contrast == kFullContrast) {
        return limited(channel + distance * kFullSlope);
    }
    if (contrast <= 0 || contrast > kFullContrast) {
        // The whole sum over 100, so that it is the sum that is cut off and not the addend.
        return limited((std::int64_t{channel} * 100 + distance * contrast) / 100);
    }
    // Single precision on purpose: the results are those of its rounding.
    const float slope = 1.0F / (1.0F - static_cast<float>(contrast) / 100.0F) - 1.0F;
    const float value = static_cast<float>(channel) + static_cast<float>(distance) * slope;
    return static_cast<int>(std::clamp(value, 0.0F, 255.0F));
}

} // namespace

ToneTable toneTable(int brightness, int contrast)
{
    ToneTable table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        const int brightened = limited(static_cast<std::int64_t>(i) + brightness);
        table[i] = static_cast<std::uint8_t>(withContrast(brightened, contrast));
    }
    return table;
}

void applyTone(const ToneTable& table, const std::uint32_t* from, std::uint32_t* to,
               std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t pixel = from[i];
        to[i] = (pixel & 0xff000000U) | std::uint32_t{table[(pixel >> 16U) & 0xffU]} << 16U |
                std::uint32_t{table[(pixel >> 8U) & 0xffU]} << 8U | table[pixel & 0xffU];
    }
}

} // namespace kestrel
