// Crop, rotation, background and despeckle, and the labels of sliders.
#include "rules_paper.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSpinBox>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

using namespace kestrel::test;

namespace {

struct LabelRow
{
    const char* slider;
    const char* label;
};

class ValueLabels : public PaperRules, public testing::WithParamInterface<LabelRow>
{
};

struct DotsRow
{
    int from;
    int to;
    int minimum;
};

class DespeckleBound : public PaperRules, public testing::WithParamInterface<DotsRow>
{
};

} // namespace

TEST_F(PaperRules, CropChoiceEnablesItsControls)
{
    combo("source").setCurrentText(kFlatbed); // for the third item
    auto& crop = combo("autocropdeskew");
    ASSERT_EQ(crop.count(), 3);
    for (const int index : {1, 0, 2, 1, 2, 0}) {
        choose(crop, index);
        const bool fixed = index == 0;
        for (const char* name : {"fixed_sizesetting", "widget", "widget_3", "widget_4"}) {
            EXPECT_EQ(enabledItself(name), fixed) << name << ' ' << index;
        }
        EXPECT_EQ(enabledItself("widget_length_detection"), fixed);
        EXPECT_EQ(enabledItself("autocropdeskew_widget"), !fixed) << index;
    }
}

TEST_F(PaperRules, AutomaticCropForgetsThePreviewArea)
{
    const std::array<const char*, 4> offsets{"offset_x", "offset_y", "offset_w", "offset_h"};
    auto& crop = combo("autocropdeskew");
    real("offset_w").setValue(100.0);
    real("offset_h").setValue(120.0);
    real("offset_x").setValue(10.0);
    real("offset_y").setValue(20.0);
    for (const char* name : offsets) {
        ASSERT_GT(real(name).value(), 0.0) << name;
    }
    choose(crop, 1);
    for (const char* name : offsets) {
        EXPECT_EQ(real(name).value(), 0.0) << name;
    }
    choose(crop, 0);
    for (const char* name : offsets) {
        EXPECT_EQ(real(name).value(), 0.0) << name;
    }
    real("offset_w").setValue(50.0);
    crop.setCurrentIndex(-1);
    EXPECT_EQ(real("offset_w").value(), 0.0);
    EXPECT_TRUE(widget("autocropdeskew_widget").isEnabled());
}

TEST_F(PaperRules, FixedSizeLeavesThePreviewArea)
{
    auto& crop = combo("autocropdeskew");
    choose(crop, 1);
    real("offset_w").setValue(50.0);
    choose(crop, 0);
    EXPECT_EQ(real("offset_w").value(), 50.0);
}

TEST_F(PaperRules, OrientationModeGoesWithAutomaticRotation)
{
    auto& rotate = combo("rotate");
    ASSERT_EQ(rotate.count(), 5);
    for (const int index : {4, 0, 4, 1, 4, 2, 4, 3}) {
        choose(rotate, index);
        EXPECT_EQ(widget("auto_orientation_mode").isEnabled(), index == 4) << index;
        EXPECT_EQ(widget("label_rotate_mode").isEnabled(), index == 4) << index;
    }
    rotate.setCurrentIndex(4);
    rotate.setCurrentIndex(-1);
    EXPECT_FALSE(widget("auto_orientation_mode").isEnabled());
}

TEST_F(PaperRules, BackgroundListFollowsTheProcessing)
{
    const QStringList smoothing{QStringLiteral("自动"), QStringLiteral("网纹")};
    const QStringList removal{QStringLiteral("白色"), QStringLiteral("自动")};
    auto& processing = combo("background_processing");
    auto& list = combo("background_processing_setting");
    choose(processing, 1);
    EXPECT_TRUE(widget("background_widget").isEnabled());
    EXPECT_EQ(items(list), smoothing);
    choose(list, 1);
    choose(processing, 2);
    EXPECT_TRUE(widget("background_widget").isEnabled());
    EXPECT_EQ(items(list), removal);
    EXPECT_EQ(list.currentIndex(), 0);
    choose(list, 1);
    choose(processing, 0);
    EXPECT_FALSE(widget("background_widget").isEnabled());
    EXPECT_EQ(items(list), removal);
    EXPECT_EQ(list.currentIndex(), 1);
    choose(processing, 1);
    EXPECT_EQ(items(list), smoothing);
    choose(processing, 0);
    EXPECT_EQ(items(list), smoothing);
    processing.setCurrentIndex(-1);
    EXPECT_TRUE(widget("background_widget").isEnabled());
    EXPECT_EQ(items(list), smoothing);
}

TEST_F(PaperRules, BackgroundListsMatchTheScannersValues)
{
    scanner.takeTexts();
    struct Row
    {
        int processing;
        int setting;
        const char* value;
    };
    for (const Row row :
         {Row{1, 0, "Auto"}, Row{1, 1, "Moire"}, Row{2, 0, "White"}, Row{2, 1, "Auto"}}) {
        combo("background_processing").setCurrentIndex(row.processing);
        combo("background_processing_setting").setCurrentIndex(row.setting);
        scanner.clearJournal();
        dialog().setAllParam();
        EXPECT_EQ(scanner.journal().setsOf("background-processing-setting"), (Strings{row.value}));
    }
}

TEST_P(ValueLabels, ShowTheirSlider)
{
    auto& slider = bar(GetParam().slider);
    const int first = slider.minimum();
    const int last = slider.maximum();
    ASSERT_LT(first, last);
    // The power-off time stops at the power-saving time; that one to its least first.
    bar("powersaving_time").setValue(1);
    for (const int value : {last, first, (first + last) / 2, first + 1, last - 1}) {
        slider.setValue(value);
        EXPECT_EQ(slider.value(), value);
        EXPECT_EQ(label(GetParam().label), QString::number(value));
    }
    slider.setValue(last + 1000);
    EXPECT_EQ(label(GetParam().label), QString::number(last));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ValueLabels,
    testing::Values(LabelRow{"blankpage_threshold", "blankpage_threshold_value"},
                    LabelRow{"background_processing_sensitivity", "label_background"},
                    LabelRow{"cachemode_value", "cachemode_value_label"},
                    LabelRow{"cachemode_image_num", "cachemode_image_num_label"},
                    LabelRow{"cachemode_page_num", "cachemode_page_num_label"},
                    LabelRow{"powersaving_time", "powersaving_value"},
                    LabelRow{"poweroff_time", "poweroff_value"}),
    [](const auto& info) { return std::string(info.param.slider); });

TEST_P(DespeckleBound, RaisesTheRatioAndNeverLowersIt)
{
    const DotsRow& row = GetParam();
    auto& dots = spin("despeckle_dotsnumber");
    auto& ratio = spin("despeckle_ratios");
    for (int n = row.from; n <= row.to; ++n) {
        for (const int before : {1, row.minimum - 1, row.minimum, row.minimum + 1, 30}) {
            if (before < 1) {
                continue;
            }
            dots.setValue(n == 0 ? 1 : 0);
            ratio.setValue(before);
            dots.setValue(n);
            EXPECT_EQ(ratio.value(), std::max(before, row.minimum)) << n << " dots, " << before;
            EXPECT_EQ(dots.value(), n);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, DespeckleBound,
                         testing::Values(DotsRow{0, 8, 1}, DotsRow{9, 24, 2}, DotsRow{25, 48, 3},
                                         DotsRow{49, 80, 4}, DotsRow{81, 120, 5},
                                         DotsRow{121, 168, 6}, DotsRow{169, 224, 7},
                                         DotsRow{225, 255, 8}),
                         [](const auto& info) { return "From" + std::to_string(info.param.from); });

TEST_F(PaperRules, DespeckleEdgesAsTyped)
{
    click(button("lineart_front_image"));
    click(button("despeckle"));
    auto& dots = spin("despeckle_dotsnumber");
    auto& ratio = spin("despeckle_ratios");
    struct Row
    {
        const char* dots;
        int before;
        int after;
    };
    for (const Row row : {Row{"24", 1, 2}, Row{"25", 1, 3}, Row{"225", 12, 12}, Row{"8", 1, 1},
                          Row{"225", 1, 8}, Row{"224", 1, 7}}) {
        dots.setValue(0);
        ratio.setValue(row.before);
        type(dots, QString::fromLatin1(row.dots));
        EXPECT_EQ(ratio.value(), row.after) << row.dots;
    }
    // The ratio may go below the bound afterwards; it is looked at when the dots change.
    ratio.setValue(1);
    EXPECT_EQ(ratio.value(), 1);
    EXPECT_EQ(dots.value(), 224);
}
