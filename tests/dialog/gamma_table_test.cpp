// The gamma table for every exponent.
#include "dialog_fixture.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

using namespace kestrel::test;

namespace {

class GammaTable : public DialogTest
{
protected:
    std::array<int, 256> table(double gamma)
    {
        std::array<int, 256> filled{};
        filled.fill(-1);
        EXPECT_TRUE(dialog().SetupGammaTable1(filled.data(), gamma));
        return filled;
    }
};

} // namespace

TEST_F(GammaTable, OneIsTheIdentity)
{
    const auto filled = table(1.0);
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(filled[static_cast<std::size_t>(i)], i);
    }
}

TEST_F(GammaTable, AHalfBrightens)
{
    const auto filled = table(0.5);
    EXPECT_EQ(filled[0], 0);
    EXPECT_EQ(filled[64], 128);
    EXPECT_EQ(filled[255], 255);
}

TEST_F(GammaTable, ZeroIsWhiteThroughout)
{
    for (const int entry : table(0.0)) {
        EXPECT_EQ(entry, 255);
    }
}

TEST_F(GammaTable, TwoDarkens)
{
    const auto filled = table(2.0);
    EXPECT_EQ(filled[0], 0);
    EXPECT_EQ(filled[16], 1); // 255 * 256 / 65025 = 1.004
    EXPECT_EQ(filled[128], 64);
    EXPECT_EQ(filled[255], 255);
}

TEST_F(GammaTable, EntriesFollowThePowerForEveryGammaOfTheSlider)
{
    for (int v = 30; v <= 300; v += 10) {
        const double gamma = static_cast<double>(static_cast<float>(1.0 / (v / 100.0)));
        const auto filled = table(gamma);
        for (int i = 0; i < 256; ++i) {
            const double exact = 255.0 * (std::pow(i, gamma) / std::pow(255, gamma));
            EXPECT_EQ(filled[static_cast<std::size_t>(i)], static_cast<int>(std::round(exact)))
                << v << " " << i;
        }
    }
}

TEST_F(GammaTable, OddExponentsStayWithinTheByte)
{
    for (const double gamma : {-1.0, 1e9, -1e9, 1e-300, std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        for (const int entry : table(gamma)) {
            EXPECT_GE(entry, 0) << gamma;
            EXPECT_LE(entry, 255) << gamma;
        }
    }
}
