// Settings panels, colour detection, binarisation and colour dropout.
#include "rules_mode.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QSpinBox>
#include <QTabWidget>

#include <gtest/gtest.h>

#include <array>
#include <string>

using namespace kestrel::test;

namespace {

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
