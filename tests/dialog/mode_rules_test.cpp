// The six mode boxes, step by step as a user meets them.
#include "rules_mode.h"

#include <QAbstractButton>
#include <QComboBox>

#include <gtest/gtest.h>

#include <string>

using namespace kestrel::test;

namespace {

struct EqualityRow
{
    const char* name;
    int before;
    const char* clicked;
    int after;
};

class SideEquality : public ModeRules, public testing::WithParamInterface<EqualityRow>
{
};

} // namespace

TEST_F(ModeRules, EachBoxStandsForItsBit)
{
    for (std::size_t id = 0; id < 6; ++id) {
        load(id < 3 ? 8 << id : 1 << (id - 3)); // the partner alone: the sides stay equal
        clickBox(kBoxes.at(id));
        EXPECT_EQ(dialog().mask(), (1 << id) | (id < 3 ? 8 << id : 1 << (id - 3))) << kBoxes.at(id);
        EXPECT_TRUE(checked(kTwins.at(id))) << kTwins.at(id);
    }
}

TEST_F(ModeRules, TheLastModeCannotBeRemoved)
{
    for (std::size_t id = 0; id < 6; ++id) {
        load(1 << id);
        clickBox(kBoxes.at(id));
        EXPECT_TRUE(checked(kBoxes.at(id))) << kBoxes.at(id);
        EXPECT_TRUE(checked(kTwins.at(id))) << kTwins.at(id);
        EXPECT_EQ(dialog().mask(), 1 << id) << kBoxes.at(id);
    }
}

TEST_F(ModeRules, TheLastModeCannotBeRemovedOnTheDropoutTab)
{
    for (const std::size_t id : {0U, 1U, 3U, 4U}) {
        load(1 << id);
        clickBox(kTwins.at(id));
        EXPECT_TRUE(checked(kBoxes.at(id))) << kBoxes.at(id);
        EXPECT_TRUE(checked(kTwins.at(id))) << kTwins.at(id);
        EXPECT_EQ(dialog().mask(), 1 << id) << kBoxes.at(id);
    }
}

TEST_F(ModeRules, TheLastModeOfADisabledSideStays)
{
    widget("front_widget").setEnabled(false);
    load(0);
    dialog().setMultistream(1);
    EXPECT_TRUE(checked("front_gray"));
    EXPECT_EQ(dialog().mask(), 2);
    widget("rear_widget").setEnabled(false);
    load(0);
    dialog().setMultistream(3);
    EXPECT_TRUE(checked("rear_bw"));
    EXPECT_EQ(dialog().mask(), 8);
}

TEST_F(ModeRules, AProgramsCheckingDoesNotRunTheRule)
{
    button("front_color").setChecked(false);
    EXPECT_EQ(dialog().mask(), 4);
    EXPECT_FALSE(checked("front_color_dropout"));
    button("rear_gray").setChecked(true);
    EXPECT_EQ(dialog().mask(), 4);
    EXPECT_FALSE(checked("front_gray"));
}

TEST_P(SideEquality, FollowsTheClick)
{
    const EqualityRow& row = GetParam();
    load(row.before);
    clickBox(row.clicked);
    EXPECT_EQ(dialog().mask(), row.after);
    const SidesState s = state();
    for (std::size_t id = 0; id < 6; ++id) {
        EXPECT_EQ(s.boxes.at(id), (row.after >> id & 1) != 0) << kBoxes.at(id);
    }
    EXPECT_EQ(s.boxes, s.twins);
}

// Bits: front 1 black-and-white, 2 gray, 4 colour; back 8, 16, 32.
INSTANTIATE_TEST_SUITE_P(
    Rows, SideEquality,
    testing::Values(
        EqualityRow{"TheBackFollowsACheckedFrontBox", 4 + 32, "front_gray", 54},
        EqualityRow{"TheBackFollowsAnUncheckedFrontBox", 6 + 48, "front_gray", 36},
        EqualityRow{"TheFrontFollowsACheckedBackBox", 4 + 32, "rear_bw", 45},
        EqualityRow{"TheFrontFollowsAnUncheckedBackBox", 7 + 56, "rear_color", 27},
        EqualityRow{"TheBackGainsWhatTheFrontHas", 5, "rear_gray", 63},
        EqualityRow{"TheFrontGainsWhatTheBackHas", 40, "front_gray", 63},
        EqualityRow{"BlackWhiteGainsGrayAndColour", 48, "front_bw", 63},
        EqualityRow{"ColourGainsGrayAndBlackWhite", 24, "front_color", 63},
        EqualityRow{"BackBlackWhiteGainsColour", 4, "rear_bw", 45},
        EqualityRow{"BackColourGainsGray", 2, "rear_color", 54},
        EqualityRow{"TheSameModeOnTheOtherSideIsEqualAtOnce", 2, "rear_gray", 18},
        EqualityRow{"TheOnlyFrontModeCanGoWhileTheBackProduces", 36, "front_color", 32},
        EqualityRow{"TheOnlyBackModeCanGoWhileTheFrontProduces", 36, "rear_color", 4},
        EqualityRow{"FrontAloneIsFree", 4, "front_bw", 5},
        EqualityRow{"BackAloneIsFree", 32, "rear_bw", 40},
        // Only a file brings sides that differ; the rule mends no more than its steps say.
        EqualityRow{"DifferingSidesFrontBoxUnchecked", 7 + 8, "front_color", 11},
        EqualityRow{"DifferingSidesFrontBoxChecked", 1 + 16, "front_color", 55},
        EqualityRow{"DifferingSidesBackBoxUnchecked", 1 + 56, "rear_color", 25},
        EqualityRow{"DifferingSidesDropoutTab", 36, "rear_gray_dropout", 54}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ModeRules, AutomaticSourceKeepsTheFrontProducing)
{
    combo("source").setCurrentText(kAutomatic);
    load(32);
    clickBox("front_gray"); // the front gains colour
    ASSERT_EQ(dialog().mask(), 54);
    for (std::size_t id = 0; id < 3; ++id) {
        load(9 << id);
        clickBox(kBoxes.at(id));
        EXPECT_TRUE(checked(kBoxes.at(id))) << kBoxes.at(id);
        EXPECT_EQ(dialog().mask(), 9 << id) << kBoxes.at(id);
    }
}

TEST_F(ModeRules, AutomaticSourceWithBackModesAloneKeepsAFrontBoxThatIsClickedOff)
{
    combo("source").setCurrentText(kAutomatic);
    for (int back = 8; back < 64; back += 8) {
        for (std::size_t id = 0; id < 3; ++id) {
            load(back);
            button(kBoxes.at(id)).setChecked(true); // checked on screen, not in the mask
            clickBox(kBoxes.at(id));
            EXPECT_TRUE(checked(kBoxes.at(id))) << back << ' ' << kBoxes.at(id);
            EXPECT_EQ(dialog().mask(), back | 1 << id) << kBoxes.at(id);
        }
    }
}

TEST_F(ModeRules, AutomaticSourceLetsTheBackGo)
{
    combo("source").setCurrentText(kAutomatic);
    load(36);
    clickBox("rear_color");
    EXPECT_EQ(dialog().mask(), 4);
}

TEST_F(ModeRules, FeederLetsTheFrontGo)
{
    load(36);
    clickBox("front_color");
    EXPECT_EQ(dialog().mask(), 32);
    EXPECT_FALSE(checked("front_color"));
}

TEST_F(ModeRules, MultistreamListForEveryMask)
{
    scanner.takeTexts();
    for (int mask = 1; mask < 64; ++mask) {
        dialog().setMask(mask);
        scanner.clearJournal();
        dialog().setAllParam();
        const int front = mask & 7;
        const int back = mask & 56;
        const char* expected = "No Multi-Stream";
        if (front == 3 || back == 24) {
            expected = "Gray + BW";
        } else if (front == 5 || back == 40) {
            expected = "Color + BW";
        } else if (front == 6 || back == 48) {
            expected = "Color + Gray";
        } else if (front == 7 || back == 56) {
            expected = "Color + Gray + BW";
        }
        EXPECT_EQ(scanner.journal().setsOf("multistream-list"), (Strings{expected})) << mask;
    }
    for (const int mask : {64, 128, 192, 68, 255}) {
        dialog().setMask(mask);
        scanner.clearJournal();
        dialog().setAllParam();
        EXPECT_FALSE(scanner.journal().wasSet("multistream-list")) << mask;
    }
}
