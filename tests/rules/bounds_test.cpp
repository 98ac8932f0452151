#include "rules/bounds.h"

#include <gtest/gtest.h>

#include <limits>

using namespace kestrel;

namespace {

struct DespeckleEdge
{
    int dots;
    int minimum; // 0: no rule
};

constexpr DespeckleEdge kDespeckleEdges[] = {
    {std::numeric_limits<int>::min(), 0},
    {-1, 0},
    {0, 0},
    {8, 0},
    {9, 2},
    {24, 2},
    {25, 3},
    {48, 3},
    {49, 4},
    {80, 4},
    {81, 5},
    {120, 5},
    {121, 6},
    {168, 6},
    {169, 7},
    {224, 7},
    {225, 8},
    {226, 8},
    {288, 8},
    {289, 8},
    {1000, 8},
    {std::numeric_limits<int>::max(), 8},
};

} // namespace

TEST(DespeckleRatio, MinimumStepsAtTheSquaresOfOddNumbers)
{
    for (const auto& edge : kDespeckleEdges) {
        EXPECT_EQ(minimumDespeckleRatio(edge.dots).value_or(0), edge.minimum)
            << edge.dots << " dots";
    }
}

TEST(DespeckleRatio, IsRaisedToTheMinimumAndNeverLowered)
{
    for (const auto& edge : kDespeckleEdges) {
        for (int ratio = 0; ratio <= 20; ++ratio) {
            const int expected = ratio < edge.minimum ? edge.minimum : ratio;
            EXPECT_EQ(despeckleRatio(ratio, edge.dots), expected) << ratio << " at " << edge.dots;
        }
    }
}

TEST(DespeckleRatio, WithoutARuleEvenANegativeRatioStays)
{
    EXPECT_EQ(despeckleRatio(-3, 8), -3);
}

TEST(PowerTimes, SavingTimeDragsTheOffTimeUp)
{
    EXPECT_EQ(powerOffTime(120, 200), 200);
    EXPECT_EQ(powerOffTime(120, 120), 120);
    EXPECT_EQ(powerOffTime(120, 119), 120);
}

TEST(PowerTimes, OffTimeStopsAtTheSavingTime)
{
    EXPECT_EQ(powerOffTime(100, 200), 200);
    EXPECT_EQ(powerOffTime(1, 1), 1);
    EXPECT_EQ(powerOffTime(480, 240), 480);
}
