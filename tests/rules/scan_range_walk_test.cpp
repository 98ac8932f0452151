// Random walks over a paper tab without widgets: the rules' lists of writes are made up before the
// first one is written, and must still give what reading live at every statement gives.
#include "rules/scan_range_panels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

using namespace kestrel;
using namespace kestrel::test;

namespace {

struct Device
{
    double width;
    double height;
    double smallest;
};

constexpr Device kDevices[] = {{216.0, 297.0, 0.0},   {215.9, 355.6, 0.0},  {216.0, 356.0, 50.8},
                               {216.0, 5080.0, 50.8}, {304.8, 431.8, 0.0},  {300.0, 300.0, 10.0},
                               {420.0, 297.0, 0.0},   {105.0, 148.0, 10.0}, {431.8, 3048.0, 50.8}};

enum class Step
{
    Size,
    Orientation,
    Alignment,
    Left,
    Top,
    Width,
    Height,
    LongPaper
};

/// One thing that a user may do, the same on both panels.
struct Move
{
    Step step;
    double value;
    unsigned choice;
};

void apply(Panel& panel, const Move& move, const Device& device)
{
    switch (move.step) {
    case Step::Size:
        panel.selectSize(static_cast<int>(move.choice % panel.sizes.size()));
        break;
    case Step::Orientation:
        panel.clickOrientation(move.choice % 2 == 1);
        break;
    case Step::Alignment:
        panel.toggleAlignment();
        break;
    case Step::Left:
        if (panel.leftEnabled) {
            panel.left.set(move.value);
        }
        break;
    case Step::Top:
        panel.top.set(move.value);
        break;
    case Step::Width:
        panel.width.set(move.value);
        break;
    case Step::Height:
        panel.height.set(move.value);
        break;
    case Step::LongPaper:
        // A longer bed, or the normal one again, with the whole of it selected.
        panel.guard = true;
        panel.height.maximum = move.choice % 2 == 1 ? device.height * 2.0 : device.height;
        panel.height.set(std::min(panel.height.value, panel.height.maximum));
        panel.height.set(panel.height.maximum);
        panel.top.set(0.0);
        panel.selectSize(static_cast<int>(panel.sizes.size()) - 1);
        panel.guard = false;
        break;
    }
}

Move randomMove(std::mt19937& random, const Device& device)
{
    const auto step = static_cast<Step>(random() % 8);
    const bool vertical = step == Step::Top || step == Step::Height;
    const double limit = (vertical ? device.height : device.width) * 1.1;
    const double value =
        std::round(std::uniform_real_distribution<double>(0.0, limit)(random) * 10.0);
    return {step, value / 10.0, static_cast<unsigned>(random())};
}

void expectSound(const Panel& panel, const Move& move, bool changed)
{
    constexpr double slack = 1e-6;
    EXPECT_FALSE(panel.guard);
    EXPECT_LE(panel.deepest, kDeepest) << "a rule came back to itself";
    EXPECT_GE(panel.left.value, 0.0);
    EXPECT_LE(panel.left.value + panel.width.value, panel.width.maximum + slack);
    // A paper chosen while the area is moved down is not moved up again; an edit by hand moves it.
    const bool edited = move.step == Step::Top || move.step == Step::Height;
    if (edited && changed && panel.height.value > panel.height.minimum) {
        EXPECT_LE(panel.top.value + panel.height.value, panel.height.maximum + slack);
    }
    if (move.step == Step::LongPaper) {
        EXPECT_EQ(panel.top.value, 0.0);
        EXPECT_EQ(panel.height.value, panel.height.maximum);
    }
    if (move.step == Step::Height && changed) {
        EXPECT_EQ(panel.sizeIndex, 0);
    }
    EXPECT_EQ(panel.leftEnabled, !panel.aligned);
    EXPECT_LE(panel.length.minimum, 0.0);
    EXPECT_EQ(panel.length.minimum, std::min(0.0, panel.length.maximum));
}

} // namespace

TEST(ScanRangeWalk, RulesAndLiveModelStayAlikeOnEveryScanner)
{
    std::mt19937 random(4711);
    for (const Device& device : kDevices) {
        RulePanel byRule(device.width, device.height, device.smallest);
        LivePanel byModel(device.width, device.height, device.smallest);
        for (int i = 0; i < 20000; ++i) {
            const Move move = randomMove(random, device);
            const std::string before = byRule.state();
            apply(byRule, move, device);
            apply(byModel, move, device);
            ASSERT_EQ(byRule.state(), byModel.state())
                << device.width << " x " << device.height << ", step "
                << static_cast<int>(move.step) << " " << move.value << " from " << before;
            expectSound(byRule, move, byRule.state() != before);
            ASSERT_FALSE(HasFailure())
                << "step " << static_cast<int>(move.step) << " " << move.value << " from " << before
                << " to " << byRule.state();
        }
    }
}
