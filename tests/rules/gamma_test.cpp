#include "rules/gamma.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

using namespace kestrel;

namespace {

std::array<int, kGammaTableSize> tableFor(double gamma)
{
    std::array<int, kGammaTableSize> table{};
    table.fill(-1);
    EXPECT_TRUE(setupGammaTable(table.data(), gamma));
    return table;
}

} // namespace

TEST(GammaTable, ExponentOneIsTheIdentity)
{
    const auto table = tableFor(1.0);
    for (int i = 0; i < kGammaTableSize; ++i) {
        EXPECT_EQ(table[static_cast<std::size_t>(i)], i);
    }
}

TEST(GammaTable, ExponentOneHalfIsTheRoundedRoot)
{
    const auto table = tableFor(0.5);
    EXPECT_EQ(table[0], 0);
    EXPECT_EQ(table[1], 16);
    EXPECT_EQ(table[64], 128);
    EXPECT_EQ(table[128], 181);
    EXPECT_EQ(table[255], 255);
}

TEST(GammaTable, ExponentZeroIsWhiteThroughoutEvenAtBlack)
{
    for (const int entry : tableFor(0.0)) {
        EXPECT_EQ(entry, 255);
    }
}

TEST(GammaTable, EveryEntryIsTheNearestWholeNumberAtEverySliderPosition)
{
    for (int slider = kGammaSliderMin; slider <= kGammaSliderMax; ++slider) {
        const double exponent = gammaExponent(slider);
        const auto table = tableFor(exponent);
        for (int i = 0; i < kGammaTableSize; ++i) {
            const double exact = 255.0 * std::exp(exponent * std::log(i / 255.0));
            ASSERT_NEAR(table[static_cast<std::size_t>(i)], exact, 0.5 + 1e-9)
                << slider << " " << i;
        }
    }
}

TEST(GammaTable, ExponentsThatNoGammaGivesStayWithinAByte)
{
    for (const double exponent : {-1.0, -400.0, 400.0, 1e300, std::nan("")}) {
        for (const int entry : tableFor(exponent)) {
            EXPECT_GE(entry, 0) << exponent;
            EXPECT_LE(entry, 255) << exponent;
        }
    }
}

TEST(GammaExponent, IsTheReciprocalInSinglePrecision)
{
    EXPECT_EQ(gammaExponent(100), 1.0);
    EXPECT_EQ(gammaExponent(200), 0.5);
    EXPECT_EQ(gammaExponent(50), 2.0);
    EXPECT_EQ(gammaExponent(220), 0.4545454680919647216796875);
    EXPECT_EQ(gammaExponent(300), 0.3333333432674407958984375);
    EXPECT_EQ(gammaExponent(30), 3.3333332538604736328125);
    EXPECT_NE(gammaExponent(220), 1.0 / 2.2);
}

TEST(GammaControls, TypedValuesAreTruncatedAndTheBoxShowsTheSlider)
{
    struct Row
    {
        double typed;
        int slider;
        double shown;
    };
    constexpr Row rows[] = {{1.15, 114, 1.14}, {2.01, 200, 2.0},  {0.57, 56, 0.56},
                            {0.3, 30, 0.3},    {3.0, 300, 3.0},   {1.0, 100, 1.0},
                            {2.2, 220, 2.2},   {0.58, 57, 0.57},  {0.29, 30, 0.3},
                            {3.01, 300, 3.0},  {1e300, 300, 3.0}, {-1.0, 30, 0.3}};
    for (const Row& row : rows) {
        const GammaState state = gammaFromValue(row.typed);
        EXPECT_EQ(state.slider, row.slider) << row.typed;
        EXPECT_DOUBLE_EQ(state.value, row.shown) << row.typed;
        EXPECT_EQ(state.exponent, gammaExponent(row.slider)) << row.typed;
    }
}

TEST(GammaControls, SliderRestsWhereItWasPut)
{
    const GammaState state = gammaFromSlider(115);
    EXPECT_EQ(state.slider, 115);
    EXPECT_DOUBLE_EQ(state.value, 1.15);
    EXPECT_EQ(state.exponent, static_cast<double>(static_cast<float>(1.0 / 1.15)));
}

TEST(GammaControls, AStoredSliderPositionNeverDrifts)
{
    for (int hundredths = kGammaSliderMin; hundredths <= kGammaSliderMax; ++hundredths) {
        const GammaState typed = gammaFromValue(hundredths / 100.0);
        EXPECT_LE(hundredths - typed.slider, 1);
        GammaState loaded = typed;
        for (int round = 0; round < 5; ++round) {
            loaded = gammaFromSlider(loaded.slider);
        }
        EXPECT_EQ(loaded.slider, typed.slider);
        EXPECT_EQ(loaded.value, typed.value);
        EXPECT_EQ(loaded.exponent, typed.exponent);
    }
}
