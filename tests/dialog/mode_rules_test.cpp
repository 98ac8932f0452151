// Side modes, colour detection, settings panels, binarisation and colour dropout, step by step as a
// user meets them.
#include "rules_sides.h"
#include "rules_user.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QSpinBox>
#include <QTabWidget>

#include <gtest/gtest.h>

#include <array>

using namespace kestrel::test;

namespace {

class ModeRules : public SidesTest
{
protected:
    ModeRules() : scanner(fullScanner())
    {
        bind(scanner);
        show();
    }
    ~ModeRules() override { destroy(); }

    void clickBox(const char* name) { click(button(name)); }
    FakeScanner scanner;
};

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

struct PanelRow
{
    const char* button;
    bool colour;
    bool gray;
    bool blackWhite;
};

class Panels : public ModeRules, public testing::WithParamInterface<PanelRow>
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

TEST_F(ModeRules, ACheckedBoxOpensItsPanel)
{
    load(2);
    for (const std::size_t id : {0U, 2U, 3U, 4U, 5U, 1U}) {
        if (checked(kBoxes.at(id))) {
            load(id < 3 ? 1 << ((id + 1) % 3) : 8 << ((id + 1) % 3));
        }
        clickBox(kBoxes.at(id));
        EXPECT_EQ(panelButtons(), (Strings{kImageButtons.at(id)})) << kBoxes.at(id);
    }
}

TEST_F(ModeRules, AnUncheckedBoxLeavesThePanel)
{
    clickBox("front_gray");
    clickBox("front_color");
    ASSERT_EQ(dialog().mask(), 2);
    EXPECT_EQ(panelButtons(), (Strings{"gray_front_image"}));
    // Re-checking the last mode does not count as choosing it.
    clickBox("color_front_image");
    clickBox("front_gray");
    EXPECT_EQ(panelButtons(), (Strings{"color_front_image"}));
}

TEST_F(ModeRules, ATwinOpensThePanel)
{
    clickBox("front_bw_dropout");
    EXPECT_EQ(panelButtons(), (Strings{"lineart_front_image"}));
}

TEST_P(Panels, FollowTheImageButton)
{
    const PanelRow& row = GetParam();
    // From every other button.
    for (const char* from : {"color_front_image", "gray_front_image", "lineart_front_image",
                             "color_back_image", "gray_back_image", "lineart_back_image"}) {
        clickBox(from);
        if (std::string(row.button) == "test_button") {
            button(row.button).setChecked(true); // hidden
        } else {
            clickBox(row.button);
        }
        EXPECT_EQ(widget("color_widget").isEnabled(), row.colour) << from;
        EXPECT_EQ(widget("color_correction_widget").isEnabled(), row.colour) << from;
        EXPECT_EQ(widget("gray_widget").isEnabled(), row.gray) << from;
        EXPECT_EQ(widget("binarization_widget").isEnabled(), row.blackWhite) << from;
        EXPECT_EQ(widget("despeckle_groupBox").isEnabled(), row.blackWhite) << from;
        EXPECT_EQ(panelButtons(), (Strings{row.button})) << from;
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, Panels,
                         testing::Values(PanelRow{"color_front_image", true, false, false},
                                         PanelRow{"gray_front_image", false, true, false},
                                         PanelRow{"lineart_front_image", false, false, true},
                                         PanelRow{"color_back_image", true, false, false},
                                         PanelRow{"gray_back_image", false, true, false},
                                         PanelRow{"lineart_back_image", false, false, true},
                                         PanelRow{"test_button", false, false, false}),
                         [](const auto& info) { return std::string(info.param.button); });

TEST_F(ModeRules, DetectionBoxesSetTheirBits)
{
    clickBox("color_detection_image_front");
    EXPECT_EQ(dialog().mask(), 4 + 64);
    EXPECT_TRUE(checked("color_detection_checkbox"));
    clickBox("color_detection_checkbox_2");
    EXPECT_EQ(dialog().mask(), 4 + 64 + 128);
    EXPECT_TRUE(checked("color_detection_image_back"));
    clickBox("color_detection_checkbox");
    EXPECT_EQ(dialog().mask(), 4 + 128);
    EXPECT_FALSE(checked("color_detection_image_front"));
    clickBox("color_detection_image_back");
    EXPECT_EQ(dialog().mask(), 4);
    EXPECT_FALSE(checked("color_detection_checkbox_2"));
}

TEST_F(ModeRules, DetectionReplacesTheModesAndGivesThemBack)
{
    for (const char* name : {"color_detection_image_front", "color_detection_image_back"}) {
        for (const int mask : {4, 7, 54, 63, 9, 32}) {
            load(mask);
            clickBox("lineart_front_image");
            const auto before = state().boxes;
            clickBox(name);
            EXPECT_EQ(state().boxes, (std::array<bool, 6>{})) << name << ' ' << mask;
            EXPECT_EQ(state().twins, (std::array<bool, 6>{})) << name << ' ' << mask;
            EXPECT_EQ(dialog().mask() & 63, mask) << name;
            EXPECT_FALSE(widget("front_widget").isEnabled());
            EXPECT_FALSE(widget("rear_widget").isEnabled());
            EXPECT_EQ(panelButtons(), (Strings{"test_button"}));
            clickBox(name);
            EXPECT_EQ(state().boxes, before) << name << ' ' << mask;
            EXPECT_EQ(state().twins, before) << name << ' ' << mask;
            EXPECT_EQ(dialog().mask(), mask) << name;
            EXPECT_TRUE(widget("front_widget").isEnabled());
            EXPECT_TRUE(widget("rear_widget").isEnabled());
            EXPECT_EQ(panelButtons(), (Strings{"color_front_image"}));
        }
    }
}

TEST_F(ModeRules, DetectionSwapsDropoutForItsOwnTab)
{
    auto& tabs = child<QTabWidget>(dialog(), "tabWidget");
    for (int bits = 0; bits < 4; ++bits) {
        const bool front = (bits & 1) != 0;
        const bool back = (bits & 2) != 0;
        button("color_detection_image_front").setChecked(!front);
        button("color_detection_image_back").setChecked(!back);
        button("color_detection_image_front").setChecked(front);
        button("color_detection_image_back").setChecked(back);
        const bool detecting = front || back;
        EXPECT_EQ(tabs.isTabEnabled(1), detecting) << bits;
        EXPECT_EQ(widget("tab_color_detection").isEnabled(), detecting) << bits;
        EXPECT_EQ(tabs.isTabEnabled(2), !detecting) << bits;
        EXPECT_EQ(widget("tab_colordrop").isEnabled(), !detecting) << bits;
        EXPECT_EQ(widget("groupBox_front_autodetection").isEnabledTo(&tabs), front) << bits;
        EXPECT_EQ(widget("groupBox_back_autodetection").isEnabledTo(&tabs), back) << bits;
    }
}

TEST_F(ModeRules, AutomaticSourceHoldsFrontDetectionWhileTheBackDetects)
{
    combo("source").setCurrentText(kAutomatic);
    clickBox("color_detection_image_back");
    EXPECT_TRUE(checked("color_detection_image_front"));
    EXPECT_EQ(dialog().mask(), 4 + 64 + 128);
    for (const char* name : {"color_detection_image_front", "color_detection_checkbox"}) {
        clickBox(name);
        EXPECT_TRUE(checked("color_detection_image_front")) << name;
        EXPECT_TRUE(checked("color_detection_checkbox")) << name;
        EXPECT_EQ(dialog().mask(), 4 + 64 + 128) << name;
    }
    clickBox("color_detection_image_back");
    EXPECT_TRUE(checked("color_detection_image_front"));
    clickBox("color_detection_image_front");
    EXPECT_EQ(dialog().mask(), 4);
}

TEST_F(ModeRules, FeederLetsTheBackDetectAlone)
{
    clickBox("color_detection_image_back");
    EXPECT_FALSE(checked("color_detection_image_front"));
    EXPECT_FALSE(widget("groupBox_front_autodetection").isEnabled());
    EXPECT_EQ(dialog().mask(), 4 + 128);
}

TEST_F(ModeRules, DetectionHidesTheOpenDropoutTab)
{
    auto& tabs = child<QTabWidget>(dialog(), "tabWidget");
    tabs.setCurrentIndex(2);
    ASSERT_EQ(tabs.currentIndex(), 2);
    button("color_detection_image_front").setChecked(true);
    EXPECT_NE(tabs.currentIndex(), 2);
}

TEST_F(ModeRules, BinarizationSetsRangeAndValue)
{
    struct Row
    {
        int index;
        bool enabled;
        int min;
        int max;
        int value;
    };
    clickBox("lineart_front_image");
    auto& list = combo("binarization");
    auto& slider = bar("binarization_value");
    auto& box = spin("spinBox_9");
    // Each after each: diffusion keeps what the one before left.
    for (const int from : {0, 1, 2}) {
        for (const Row row :
             {Row{0, true, 1, 30, 20}, Row{1, true, 0, 255, 128}, Row{2, false, -1, -1, -1}}) {
            if (row.index == from) {
                continue;
            }
            choose(list, from);
            slider.setValue(25);
            const Row expected =
                row.index == 2 ? Row{2, false, slider.minimum(), slider.maximum(), slider.value()}
                               : row;
            choose(list, row.index);
            EXPECT_EQ(widget("binarization_value_widget").isEnabled(), row.enabled);
            EXPECT_EQ(slider.minimum(), expected.min) << from << " to " << row.index;
            EXPECT_EQ(slider.maximum(), expected.max) << from << " to " << row.index;
            EXPECT_EQ(slider.value(), expected.value) << from << " to " << row.index;
            EXPECT_EQ(box.minimum(), expected.min) << from << " to " << row.index;
            EXPECT_EQ(box.maximum(), expected.max) << from << " to " << row.index;
            EXPECT_EQ(box.value(), expected.value) << from << " to " << row.index;
        }
    }
}

TEST_F(ModeRules, FixedThresholdFrom25Gives128)
{
    clickBox("lineart_front_image");
    bar("binarization_value").setValue(25);
    ASSERT_EQ(spin("spinBox_9").value(), 25);
    choose(combo("binarization"), 1);
    EXPECT_EQ(bar("binarization_value").maximum(), 255);
    EXPECT_EQ(bar("binarization_value").value(), 128);
}

TEST_F(ModeRules, BinarizationByAnyOtherIndexChangesNothing)
{
    bar("binarization_value").setValue(25);
    for (const int index : {-1, 3, 100, -100}) {
        dialog().on_binarization_currentIndexChanged(index);
        EXPECT_EQ(bar("binarization_value").value(), 25) << index;
        EXPECT_EQ(bar("binarization_value").minimum(), 1) << index;
        EXPECT_EQ(bar("binarization_value").maximum(), 30) << index;
        EXPECT_TRUE(
            widget("binarization_value_widget").isEnabledTo(&widget("binarization_widget")));
    }
}

TEST_F(ModeRules, AdvancedDropoutNeedsAColour)
{
    auto& list = combo("color_dropout");
    for (const int index : {1, 0, 2, 0, 3, 0}) {
        choose(list, index);
        EXPECT_EQ(button("adv_color_dropout").isEnabled(), index != 0) << index;
    }
    list.setCurrentIndex(-1);
    EXPECT_TRUE(button("adv_color_dropout").isEnabled());
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
