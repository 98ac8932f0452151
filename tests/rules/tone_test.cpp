#include "rules/tone.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

using namespace kestrel;

namespace {

constexpr int kMax = std::numeric_limits<int>::max();
constexpr int kMin = std::numeric_limits<int>::min();

int limited(double value)
{
    return static_cast<int>(std::clamp(value, 0.0, 255.0));
}

/// The same, in real numbers and one step after the other.
int modelled(int channel, double brightness, int contrast)
{
    const int c = limited(channel + brightness);
    if (contrast == 100) {
        return limited(c + (c - 127) * 99.0);
    }
    if (contrast >= 1 && contrast <= 99) {
        const float k = 1.0F / (1.0F - static_cast<float>(contrast) / 100.0F) - 1.0F;
        const float value = static_cast<float>(c) + static_cast<float>(c - 127) * k;
        return static_cast<int>(std::min(std::max(value, 0.0F), 255.0F));
    }
    // Hundredths, so that no rounding gets between the sum and its cutting off.
    return limited(std::trunc((c * 100.0 + (c - 127) * double(contrast)) / 100.0));
}

} // namespace

TEST(ToneTable, WithoutAdjustmentsChangesNothing)
{
    const ToneTable table = toneTable(0, 0);
    for (std::size_t c = 0; c < table.size(); ++c) {
        EXPECT_EQ(table[c], c);
    }
}

TEST(ToneTable, AgreesWithTheModelForEverySettingOfTheSliders)
{
    for (int brightness = -255; brightness <= 255; brightness += 17) {
        for (int contrast = -250; contrast <= 250; ++contrast) {
            const ToneTable table = toneTable(brightness, contrast);
            for (int c = 0; c < 256; ++c) {
                ASSERT_EQ(table[static_cast<std::size_t>(c)], modelled(c, brightness, contrast))
                    << "channel " << c << " brightness " << brightness << " contrast " << contrast;
            }
        }
    }
}

TEST(ToneTable, BrightnessIsAddedAndLimited)
{
    const ToneTable brighter = toneTable(50, 0);
    EXPECT_EQ(brighter[0], 50);
    EXPECT_EQ(brighter[205], 255);
    EXPECT_EQ(brighter[206], 255);
    const ToneTable darker = toneTable(-50, 0);
    EXPECT_EQ(darker[49], 0);
    EXPECT_EQ(darker[50], 0);
    EXPECT_EQ(darker[255], 205);
}

TEST(ToneTable, Contrast50DoublesTheDistanceFromTheMiddle)
{
    const ToneTable table = toneTable(0, 50);
    EXPECT_EQ(table[127], 127);
    EXPECT_EQ(table[100], 73);
    EXPECT_EQ(table[150], 173);
    EXPECT_EQ(table[63], 0);
    EXPECT_EQ(table[192], 255);
}

TEST(ToneTable, Contrast100MultipliesBy99)
{
    const ToneTable table = toneTable(0, 100);
    EXPECT_EQ(table[125], 0);
    EXPECT_EQ(table[126], 27);
    EXPECT_EQ(table[127], 127);
    EXPECT_EQ(table[128], 227);
    EXPECT_EQ(table[129], 255);
}

TEST(ToneTable, ContrastBeyondTheSliderIsInProportion)
{
    EXPECT_EQ(toneTable(0, 150)[100], 59); // 59.5, cut off
    EXPECT_EQ(toneTable(0, 150)[137], 152);
    EXPECT_EQ(toneTable(0, -50)[100], 113); // 113.5
    EXPECT_EQ(toneTable(0, -100)[0], 127);
    EXPECT_EQ(toneTable(0, -100)[255], 127);
}

TEST(ToneTable, BrightnessComesBeforeContrast)
{
    EXPECT_EQ(toneTable(27, 50)[100], 127);
    EXPECT_EQ(toneTable(255, 100)[0], 255);
    EXPECT_EQ(toneTable(-255, 50)[255], 0);
}

TEST(ToneTable, ExtremeSettingsStayInRange)
{
    EXPECT_EQ(toneTable(kMax, 0)[0], 255);
    EXPECT_EQ(toneTable(kMin, 0)[255], 0);
    EXPECT_EQ(toneTable(0, kMax)[126], 0);
    EXPECT_EQ(toneTable(0, kMax)[127], 127);
    EXPECT_EQ(toneTable(0, kMax)[128], 255);
    EXPECT_EQ(toneTable(0, kMin)[126], 255);
    EXPECT_EQ(toneTable(0, kMin)[128], 0);
    EXPECT_EQ(toneTable(kMin, kMin)[0], 255);
}

TEST(ApplyTone, EachColourGoesThroughTheTableAndAlphaStays)
{
    ToneTable table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<std::uint8_t>(255 - i);
    }
    const std::vector<std::uint32_t> from{0x00000000U, 0xffffffffU, 0x80102030U, 0x01fe0080U};
    std::vector<std::uint32_t> to(from.size() + 1, 0xdeadbeefU);
    applyTone(table, from.data(), to.data(), from.size());
    EXPECT_EQ(to, (std::vector<std::uint32_t>{0x00ffffffU, 0xff000000U, 0x80efdfcfU, 0x0101ff7fU,
                                              0xdeadbeefU}));
}

TEST(ApplyTone, MayWriteOverItsInput)
{
    std::vector<std::uint32_t> pixels{0xff000000U, 0xff7f7f7fU, 0xffc86432U};
    applyTone(toneTable(10, 0), pixels.data(), pixels.data(), pixels.size());
    EXPECT_EQ(pixels, (std::vector<std::uint32_t>{0xff0a0a0aU, 0xff898989U, 0xffd26e3cU}));
    applyTone(toneTable(10, 0), nullptr, nullptr, 0);
}
