// Crop, rotation, background, despeckle, long paper, cache, power and the labels of sliders.
#include "dialog_fixture.h"
#include "rules_user.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QSpinBox>
#include <QTabWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

using namespace kestrel::test;

namespace {

const QString kWhole = QStringLiteral("最大扫描范围");

class PaperRules : public DialogTest
{
protected:
    PaperRules() : scanner(fullScanner())
    {
        bind(scanner);
        show();
    }
    ~PaperRules() override { destroy(); }

    QString label(const char* name) const { return static_cast<QLabel&>(widget(name)).text(); }
    /// Whether the widget itself has not been disabled, whatever stands around it.
    bool enabledItself(const char* name) const
    {
        return widget(name).isEnabledTo(widget(name).parentWidget());
    }

    FakeScanner scanner;
};

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

class LongPaper : public PaperRules
{
protected:
    double maximum() { return real("br_y").maximum(); }
    /// Takes the whole-area entry out of the list and stands on A4 upright.
    void dropWhole()
    {
        auto& list = combo("scanrange_setting");
        list.removeItem(list.findText(kWhole));
        list.setCurrentIndex(list.findText(QStringLiteral("ISO A4 - 21.0 x 29.7 厘米")));
        real("tl_y").setValue(12.5);
    }
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

TEST_F(LongPaper, ChangesTheHeightsLimitAndTakesAll)
{
    ASSERT_DOUBLE_EQ(maximum(), 355.6);
    real("tl_y").setValue(20.0);
    click(button("long_paper_scan"));
    EXPECT_DOUBLE_EQ(maximum(), 3000.0);
    EXPECT_DOUBLE_EQ(real("br_y").value(), 3000.0);
    EXPECT_DOUBLE_EQ(real("tl_y").value(), 0.0);
    EXPECT_EQ(combo("scanrange_setting").currentText(), kWhole);
    EXPECT_FALSE(dialog().updating);
    click(button("long_paper_scan"));
    EXPECT_DOUBLE_EQ(maximum(), 355.6);
    EXPECT_DOUBLE_EQ(real("br_y").value(), 355.6);
    EXPECT_EQ(combo("scanrange_setting").currentText(), kWhole);
    EXPECT_FALSE(dialog().updating);
}

TEST_F(LongPaper, WithoutTheWholeAreaInTheListOnlyTheLimitChanges)
{
    dropWhole();
    const int paper = combo("scanrange_setting").currentIndex();
    button("long_paper_scan").setChecked(true);
    EXPECT_DOUBLE_EQ(maximum(), 3000.0);
    EXPECT_DOUBLE_EQ(real("br_y").value(), 297.0);
    EXPECT_DOUBLE_EQ(real("tl_y").value(), 12.5);
    EXPECT_EQ(combo("scanrange_setting").currentIndex(), paper);
    EXPECT_FALSE(dialog().updating);
}

TEST_F(LongPaper, WithoutTheWholeAreaALongHeightIsCut)
{
    dropWhole();
    button("long_paper_scan").setChecked(true);
    real("br_y").setValue(1000.0);
    combo("scanrange_setting").setCurrentIndex(3);
    real("br_y").setValue(1000.0);
    const int paper = combo("scanrange_setting").currentIndex();
    button("long_paper_scan").setChecked(false);
    EXPECT_DOUBLE_EQ(real("br_y").value(), 355.6);
    EXPECT_EQ(combo("scanrange_setting").currentIndex(), paper);
}

TEST_F(LongPaper, TheWholeAreaIsLookedForByItsText)
{
    dropWhole();
    auto& list = combo("scanrange_setting");
    list.insertItem(1, kWhole);
    button("long_paper_scan").setChecked(true);
    EXPECT_EQ(list.currentIndex(), 1);
    EXPECT_DOUBLE_EQ(real("br_y").value(), 3000.0);
}

TEST_F(PaperRules, CacheModeShowsOnePanel)
{
    auto& mode = combo("cachemode");
    child<QTabWidget>(dialog(), "tabWidget").setCurrentIndex(9);
    for (const int index : {1, 2, 0, 2, 1, 0}) {
        choose(mode, index);
        EXPECT_EQ(widget("cachemode_none").isVisible(), index == 0) << index;
        EXPECT_EQ(widget("cachemode_pagecount").isVisible(), index == 1) << index;
        EXPECT_EQ(widget("cachemode_memory").isVisible(), index == 2) << index;
    }
    mode.setCurrentIndex(-1);
    EXPECT_FALSE(widget("cachemode_none").isVisible());
    EXPECT_FALSE(widget("cachemode_pagecount").isVisible());
    EXPECT_TRUE(widget("cachemode_memory").isVisible());
}

TEST_F(PaperRules, CacheDefaultsDisableTheirSliders)
{
    choose(combo("cachemode"), 2);
    for (const bool on : {false, true}) {
        if (checked("cachemode_use_default") != on) {
            click(button("cachemode_use_default"));
        }
        EXPECT_EQ(bar("cachemode_value").isEnabled(), !on);
    }
    choose(combo("cachemode"), 0);
    for (const bool on : {false, true}) {
        if (checked("cachemode_image_num_default") != on) {
            click(button("cachemode_image_num_default"));
        }
        EXPECT_EQ(bar("cachemode_image_num").isEnabled(), !on);
    }
    EXPECT_EQ(bar("cachemode_image_num").minimum(), 1);
    EXPECT_EQ(bar("cachemode_image_num").maximum(), 100);
    EXPECT_EQ(bar("cachemode_page_num").minimum(), 1);
    EXPECT_EQ(bar("cachemode_page_num").maximum(), 25);
}

TEST_F(PaperRules, PowerOffNeverComesBeforePowerSaving)
{
    auto& saving = bar("powersaving_time");
    auto& off = bar("poweroff_time");
    saving.setValue(15);
    off.setValue(120);
    saving.setValue(200);
    EXPECT_EQ(off.value(), 200);
    off.setValue(100);
    EXPECT_EQ(off.value(), 200);
    EXPECT_EQ(label("powersaving_value"), QStringLiteral("200"));
    EXPECT_EQ(label("poweroff_value"), QStringLiteral("200"));
    off.setValue(201);
    EXPECT_EQ(off.value(), 201);
    saving.setValue(50);
    EXPECT_EQ(off.value(), 201);
    off.setValue(50);
    EXPECT_EQ(off.value(), 50);
    off.setValue(49);
    EXPECT_EQ(off.value(), 50);
    saving.setValue(51);
    EXPECT_EQ(off.value(), 51);
}

TEST_F(PaperRules, PowerTimesHoldTheirOrderOverAllPairs)
{
    auto& saving = bar("powersaving_time");
    auto& off = bar("poweroff_time");
    for (int s = 1; s <= 240; s += 17) {
        for (int o = 1; o <= 480; o += 13) {
            saving.setValue(s);
            off.setValue(o);
            EXPECT_EQ(saving.value(), s);
            EXPECT_EQ(off.value(), std::max(s, o)) << s << ' ' << o;
            EXPECT_EQ(label("powersaving_value"), QString::number(s));
            EXPECT_EQ(label("poweroff_value"), QString::number(std::max(s, o)));
        }
    }
}

TEST_F(PaperRules, KeysCannotPullPowerOffUnderPowerSaving)
{
    auto& off = bar("poweroff_time");
    bar("powersaving_time").setValue(118);
    off.setValue(120);
    ASSERT_TRUE(reveal(off));
    ASSERT_TRUE(off.isEnabled());
    off.setFocus();
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(&off, Qt::Key_Left);
    }
    EXPECT_EQ(off.value(), 118);
    QTest::keyClick(&off, Qt::Key_Home);
    EXPECT_EQ(off.value(), 118);
}

TEST_F(PaperRules, PreviewButtonStandsOnThePreviewTabOnly)
{
    auto& tabs = child<QTabWidget>(dialog(), "tabWidget");
    EXPECT_FALSE(button("preview").isVisible());
    for (int index = 0; index < tabs.count(); ++index) {
        tabs.setCurrentIndex(5);
        EXPECT_TRUE(button("preview").isVisible());
        tabs.setCurrentIndex(index);
        EXPECT_EQ(button("preview").isVisible(), tabs.currentIndex() == 5) << index;
    }
    EXPECT_EQ(tabs.tabText(5), QStringLiteral("预览"));
}
