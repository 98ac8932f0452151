// What each option that is known by name does to its control when a scanner is bound.
#include "dialog_fixture.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>

#include <dialogs/customresolution.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>

using namespace kestrel::test;

namespace {

using Option = FakeOption;

/// A scanner with one option and the count.
FakeScanner scannerWith(const Option& option)
{
    FakeScanner scanner;
    scanner.add(option);
    return scanner;
}

bool contains(const QSignalSpy& spy, double value)
{
    for (const QList<QVariant>& arguments : spy) {
        if (std::abs(arguments.at(0).toDouble() - value) < 1e-9) {
            return true;
        }
    }
    return false;
}

using Discovery = DialogTest;

/// An option with a word that becomes a check state.
struct CheckRow
{
    const char* option;
    const char* control;
};

class DiscoveryChecks : public DialogTest, public testing::WithParamInterface<CheckRow>
{
};

struct SwitchRow
{
    const char* option;
    const char* control;
};

class DiscoverySwitches : public DialogTest, public testing::WithParamInterface<SwitchRow>
{
};

struct ChoiceRow
{
    const char* option;
    const char* control;
    Strings entries;
};

class DiscoveryChoices : public DialogTest, public testing::WithParamInterface<ChoiceRow>
{
};

struct ValueRow
{
    const char* option;
    const char* control;
    int value;
};

class DiscoveryValues : public DialogTest, public testing::WithParamInterface<ValueRow>
{
};

struct LengthRow
{
    const char* option;
    const char* control;
    double min;
    double max;
    double value;
};

class DiscoveryLengths : public DialogTest, public testing::WithParamInterface<LengthRow>
{
};

struct BarRow
{
    const char* option;
    const char* control;
    int min;
    int max;
};

class DiscoveryBars : public DialogTest, public testing::WithParamInterface<BarRow>
{
};

template <typename Row>
std::string rowName(const testing::TestParamInfo<Row>& info)
{
    std::string name = info.param.option;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

} // namespace

TEST_P(DiscoveryChecks, NonZeroChecksAndZeroUnchecks)
{
    for (const SANE_Word word : {1, 0, -1, 0, 17}) {
        FakeScanner scanner = scannerWith(Option::boolean(GetParam().option, false).word(word));
        bind(scanner, ("Scanner" + std::to_string(word)).c_str());
        EXPECT_EQ(checked(GetParam().control), word != 0) << word;
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, DiscoveryChecks,
                         testing::Values(CheckRow{"adv-color-dropout", "adv_color_dropout"},
                                         CheckRow{"prefeed", "prefeed"},
                                         CheckRow{"blank-page-removal", "remove_blankpage"},
                                         CheckRow{"punch-hole-removal", "punch_hole_removal"},
                                         CheckRow{"cachemode-use-default",
                                                  "cachemode_use_default"}),
                         rowName<CheckRow>);

TEST_P(DiscoverySwitches, EnableChecksAndAnythingElseUnchecks)
{
    int round = 0;
    for (const auto& [text, on] :
         {std::pair("Enable", true), std::pair("Disable", false), std::pair("Enable", true),
          std::pair("enable", false), std::pair("Enable", true), std::pair("", false),
          std::pair("Enable", true), std::pair("Enabled", false)}) {
        FakeScanner scanner = scannerWith(Option::text(GetParam().option, text));
        bind(scanner, ("Scanner" + std::to_string(round++)).c_str());
        EXPECT_EQ(checked(GetParam().control), on) << text;
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, DiscoverySwitches,
                         testing::Values(SwitchRow{"ultrasonic", "ultrasonic"},
                                         SwitchRow{"powersaving", "powersaving"},
                                         SwitchRow{"poweroff", "poweroff"}),
                         rowName<SwitchRow>);

TEST_P(DiscoveryChoices, TheIndexIsThatOfTheTable)
{
    const Strings& entries = GetParam().entries;
    for (std::size_t i = entries.size(); i-- > 0;) {
        FakeScanner scanner = scannerWith(Option::choice(GetParam().option, entries, entries[i]));
        bind(scanner, ("Scanner" + std::to_string(i)).c_str());
        EXPECT_EQ(combo(GetParam().control).currentIndex(), static_cast<int>(i)) << entries[i];
    }
}

TEST_P(DiscoveryChoices, LetterCaseDoesNotMatter)
{
    std::string value = GetParam().entries.back();
    for (char& letter : value) {
        letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    }
    FakeScanner scanner = scannerWith(Option::text(GetParam().option, value));
    bind(scanner);
    EXPECT_EQ(combo(GetParam().control).currentIndex(),
              static_cast<int>(GetParam().entries.size()) - 1);
}

TEST_P(DiscoveryChoices, AnUnknownValueLeavesTheCombo)
{
    combo(GetParam().control).setCurrentIndex(1);
    FakeScanner scanner = scannerWith(Option::text(GetParam().option, "Something else"));
    bind(scanner);
    EXPECT_EQ(combo(GetParam().control).currentIndex(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DiscoveryChoices,
    testing::Values(
        ChoiceRow{"gray_doc_type", "gray_doc_type", {"Document", "Photo", "Normal"}},
        ChoiceRow{"gray-doc-type", "gray_doc_type", {"Document", "Photo", "Normal"}},
        ChoiceRow{
            "binarization", "binarization", {"Dynamic Threshold", "Fixed Processing", "Diffusion"}},
        ChoiceRow{"color-dropout", "color_dropout", {"No color dropout", "Red", "Green", "Blue"}},
        ChoiceRow{"rotate", "rotate", {"None", "90", "180", "270", "Auto Orientation"}},
        ChoiceRow{
            "auto-orientation-mode", "auto_orientation_mode", {"Quick", "Full text", "Complexity"}},
        ChoiceRow{"cachemode", "cachemode", {"None", "Page Number", "Memory Size"}}),
    [](const testing::TestParamInfo<ChoiceRow>& info) {
        return std::string(info.param.option) == "gray_doc_type" ? std::string("underscored_type")
                                                                 : rowName<ChoiceRow>(info);
    });

TEST_P(DiscoveryValues, TheValueIsTaken)
{
    FakeScanner scanner = scannerWith(Option::integer(GetParam().option, GetParam().value));
    bind(scanner);
    EXPECT_EQ(bar(GetParam().control).value(), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Rows, DiscoveryValues,
                         testing::Values(ValueRow{"brightness", "brightness_set", -37},
                                         ValueRow{"contrast", "contrast_set", 64},
                                         ValueRow{"binarization-value", "binarization_value", 11},
                                         ValueRow{"blank-page-threshold", "blankpage_threshold",
                                                  73}),
                         rowName<ValueRow>);

TEST_P(DiscoveryLengths, LimitsAndValueComeFromTheScannerInMillimetres)
{
    const LengthRow& row = GetParam();
    QDoubleSpinBox& control = real(row.control);
    control.setSingleStep(7.0);
    QSignalSpy changes(&control, qOverload<double>(&QDoubleSpinBox::valueChanged));
    FakeScanner scanner =
        scannerWith(Option::fixed(row.option, row.value).limits(row.min, row.max));
    bind(scanner);
    EXPECT_DOUBLE_EQ(control.minimum(), row.min);
    EXPECT_DOUBLE_EQ(control.maximum(), row.max);
    EXPECT_DOUBLE_EQ(control.singleStep(), 0.1);
    EXPECT_TRUE(contains(changes, row.value)) << control.value();
}

TEST_P(DiscoveryLengths, IntegersAreMillimetresAsTheyAre)
{
    const LengthRow& row = GetParam();
    QDoubleSpinBox& control = real(row.control);
    QSignalSpy changes(&control, qOverload<double>(&QDoubleSpinBox::valueChanged));
    FakeScanner scanner = scannerWith(Option::integer(row.option, 3).range(1, 4));
    bind(scanner);
    EXPECT_DOUBLE_EQ(control.minimum(), 1.0);
    EXPECT_DOUBLE_EQ(control.maximum(), 4.0);
    EXPECT_TRUE(contains(changes, 3.0)) << control.value();
}

TEST_P(DiscoveryLengths, WithoutARangeTheLimitsStay)
{
    const LengthRow& row = GetParam();
    QDoubleSpinBox& control = real(row.control);
    const double min = control.minimum();
    const double max = control.maximum();
    QSignalSpy changes(&control, qOverload<double>(&QDoubleSpinBox::valueChanged));
    FakeScanner scanner = scannerWith(Option::fixed(row.option, 2.5));
    bind(scanner);
    EXPECT_EQ(control.minimum(), min);
    EXPECT_EQ(control.maximum(), max);
    EXPECT_TRUE(contains(changes, 2.5)) << control.value();
}

TEST_P(DiscoveryLengths, AWordListGivesItsSmallestAndLargestWord)
{
    const LengthRow& row = GetParam();
    QDoubleSpinBox& control = real(row.control);
    FakeScanner scanner =
        scannerWith(Option::fixed(row.option, 3.0).words({5 * 65536, 2 * 65536, 9 * 65536}));
    bind(scanner);
    EXPECT_DOUBLE_EQ(control.minimum(), 2.0);
    EXPECT_DOUBLE_EQ(control.maximum(), 9.0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DiscoveryLengths,
    testing::Values(LengthRow{"br-x", "br_x", 10.0, 215.9, 123.4},
                    LengthRow{"br-y", "br_y", 10.0, 355.6, 234.5},
                    LengthRow{"tl-x", "tl_x", 0.5, 215.9, 12.3},
                    LengthRow{"tl-y", "tl_y", 0.5, 355.6, 23.4},
                    LengthRow{"crop-adjust-top", "crop_adjust_top", -15.0, 15.0, 1.5},
                    LengthRow{"crop-adjust-bottom", "crop_adjust_bottom", -12.5, 15.0, -2.5},
                    LengthRow{"crop-adjust-left", "crop_adjust_left", -15.0, 14.5, 3.5},
                    LengthRow{"crop-adjust-right", "crop_adjust_right", -1.0, 1.0, 0.5},
                    LengthRow{"prefeed-time", "prefeed_time", 0.5, 5.5, 2.5}),
    rowName<LengthRow>);

TEST_F(Discovery, AreaLimitsReachThePreviewToo)
{
    FakeScanner scanner;
    scanner.add(Option::fixed("tl-x", 1.0).limits(0.5, 100.5));
    scanner.add(Option::fixed("tl-y", 1.0).limits(1.5, 101.5));
    scanner.add(Option::fixed("br-x", 1.0).limits(2.5, 102.5));
    scanner.add(Option::fixed("br-y", 1.0).limits(3.5, 103.5));
    bind(scanner);
    EXPECT_DOUBLE_EQ(real("offset_x").minimum(), 0.5);
    EXPECT_DOUBLE_EQ(real("offset_x").maximum(), 100.5);
    EXPECT_DOUBLE_EQ(real("offset_y").minimum(), 1.5);
    EXPECT_DOUBLE_EQ(real("offset_y").maximum(), 101.5);
    EXPECT_DOUBLE_EQ(real("offset_w").minimum(), 2.5);
    EXPECT_DOUBLE_EQ(real("offset_w").maximum(), 102.5);
    EXPECT_DOUBLE_EQ(real("offset_h").minimum(), 3.5);
    EXPECT_DOUBLE_EQ(real("offset_h").maximum(), 103.5);
}

TEST_F(Discovery, ThePreviewSelectionIsSetToZero)
{
    for (const char* name : {"offset_x", "offset_y", "offset_w", "offset_h"}) {
        real(name).setValue(40.0);
    }
    FakeScanner scanner = fullScanner();
    bind(scanner);
    for (const char* name : {"offset_x", "offset_y", "offset_w", "offset_h"}) {
        EXPECT_EQ(real(name).value(), 0.0) << name;
    }
}

TEST_F(Discovery, TheNamesAreComparedWithoutCase)
{
    FakeScanner scanner;
    scanner.add(Option::integer("BRIGHTNESS", 12)).add(Option::text("UltraSonic", "Enable"));
    bind(scanner);
    EXPECT_EQ(bar("brightness_set").value(), 12);
    EXPECT_TRUE(checked("ultrasonic"));
}

TEST_F(Discovery, ANameThatIsOnlySimilarIsNotKnown)
{
    FakeScanner scanner;
    scanner.add(Option::integer("brightness2", 12)).add(Option::integer("bright", 13));
    bind(scanner);
    EXPECT_EQ(bar("brightness_set").value(), 0);
    EXPECT_TRUE(scanner.journal().reads().empty());
}

TEST_F(Discovery, GrayDocTypePhotoIsTheSecondItem)
{
    FakeScanner scanner = fullScanner();
    scanner.option("gray-doc-type").string("Photo");
    bind(scanner);
    EXPECT_EQ(combo("gray_doc_type").currentIndex(), 1);
}

TEST_F(Discovery, ModeIsReadAndNothingTaken)
{
    FakeScanner scanner = scannerWith(Option::choice("mode", {"Lineart", "Color"}, "Lineart"));
    bind(scanner);
    EXPECT_EQ(scanner.journal().reads(), (Strings{"mode"}));
    EXPECT_EQ(dialog().mask(), 4);
    EXPECT_TRUE(checked("front_color"));
}

class ResolutionLimit : public DialogTest
{
protected:
    int limitOf(const Option& option)
    {
        FakeScanner scanner = scannerWith(option);
        bind(scanner);
        EXPECT_EQ(child<QSpinBox>(dialog(), "spinBox_resolution").minimum(), 72);
        return child<QSpinBox>(dialog(), "spinBox_resolution").maximum();
    }
};

TEST_F(ResolutionLimit, IsTheUpperEndOfTheRange)
{
    EXPECT_EQ(limitOf(Option::integer("resolution", 300).range(50, 1200)), 1200);
    EXPECT_EQ(child<QLabel>(*dialog().custom_resolution, "label").text(),
              QStringLiteral("[ 范围：72 ～ 1200 dpi ]"));
}

TEST_F(ResolutionLimit, OfAFixedPointOptionIsInDpi)
{
    EXPECT_EQ(limitOf(Option::fixed("resolution", 300).limits(50, 800)), 800);
}

TEST_F(ResolutionLimit, IsTheLargestWordOfAList)
{
    EXPECT_EQ(limitOf(Option::integer("resolution", 300).words({100, 400, 200})), 400);
}

TEST_F(ResolutionLimit, IsSixHundredWithoutAConstraint)
{
    EXPECT_EQ(limitOf(Option::integer("resolution", 300)), 600);
    EXPECT_EQ(limitOf(Option::integer("resolution", 300).range(50, 1200)), 1200);
    EXPECT_EQ(limitOf(Option::integer("resolution", 300)), 600);
    EXPECT_EQ(limitOf(Option::text("resolution", "x").strings({"a", "b"})), 600);
}

TEST_F(Discovery, AnActiveCropOptionAddsTheDocumentSize)
{
    FakeScanner scanner = scannerWith(Option::boolean("autocropdeskew", false));
    bind(scanner);
    EXPECT_EQ(itemsOf("autocropdeskew"),
              (QStringList{QStringLiteral("固定尺寸"), QStringLiteral("原稿尺寸")}));
    bind(scanner);
    EXPECT_EQ(itemsOf("autocropdeskew").size(), 2);
}

TEST_F(Discovery, AnInactiveCropOptionAddsNothing)
{
    FakeScanner scanner = scannerWith(Option::boolean("autocropdeskew", false).inactive());
    bind(scanner);
    EXPECT_EQ(itemsOf("autocropdeskew"), (QStringList{QStringLiteral("固定尺寸")}));
}

TEST_F(Discovery, FlatbedMultiCropSetsItsFlag)
{
    FakeScanner scanner = scannerWith(Option::boolean("flatbed-multi-crop", false));
    EXPECT_FALSE(dialog().flatbed_multi_crop);
    bind(scanner);
    EXPECT_TRUE(dialog().flatbed_multi_crop);
}

TEST_F(Discovery, LongPaperAvailabilityFollowsTheOption)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    EXPECT_TRUE(dialog().long_paper_available);
    EXPECT_EQ(dialog().long_paper_option, scanner.indexOf("long-paper-scan"));
    EXPECT_FALSE(widget("long_paper_scan").isHidden());

    FakeScanner without = fullScanner();
    without.option("long-paper-scan").inactive();
    bind(without, "Other");
    EXPECT_FALSE(dialog().long_paper_available);
    EXPECT_TRUE(widget("long_paper_scan").isHidden());
}

TEST_F(Discovery, BackgroundColourIsHiddenWhileInactiveAndNeverRead)
{
    for (const bool inactive : {true, false}) {
        FakeScanner scanner = scannerWith(
            Option::choice("bg-color-setting", {"No processing", "Black", "White"}, "White")
                .inactive(inactive));
        bind(scanner, inactive ? "Without" : "With");
        EXPECT_EQ(widget("background_setting_label").isHidden(), inactive);
        EXPECT_EQ(widget("background_setting_combobox").isHidden(), inactive);
        EXPECT_EQ(combo("background_setting_combobox").currentIndex(), 0);
        for (const Call& call : scanner.journal().of(CallKind::Get)) {
            EXPECT_NE(call.name, "bg-color-setting");
        }
    }
}

TEST_F(Discovery, PrefeedEnablesItsTime)
{
    for (const bool on : {true, false, true}) {
        FakeScanner scanner = scannerWith(Option::boolean("prefeed", on));
        bind(scanner, on ? "On" : "Off");
        EXPECT_EQ(real("prefeed_time").isEnabledTo(&dialog()), on);
        EXPECT_FALSE(widget("groupBox_prefeed").isHidden());
    }
}

TEST_F(Discovery, InactivePrefeedHidesItsGroup)
{
    FakeScanner scanner = scannerWith(Option::boolean("prefeed", true).inactive());
    bind(scanner);
    EXPECT_TRUE(widget("groupBox_prefeed").isHidden());
    EXPECT_FALSE(checked("prefeed"));
}

TEST_F(Discovery, BlankPageRemovalEnablesItsThreshold)
{
    for (const bool on : {true, false, true}) {
        FakeScanner scanner = scannerWith(Option::boolean("blank-page-removal", on));
        bind(scanner, on ? "On" : "Off");
        EXPECT_EQ(widget("blankpage_threshold").isEnabledTo(&dialog()), on);
    }
}

TEST_F(Discovery, CacheDefaultDisablesItsPanel)
{
    for (const bool on : {false, true, false}) {
        FakeScanner scanner = scannerWith(Option::boolean("cachemode-use-default", on));
        bind(scanner, on ? "On" : "Off");
        EXPECT_EQ(widget("cachemode_widget").isEnabledTo(widget("cachemode_memory").window()), !on);
    }
}

TEST_P(DiscoveryBars, LimitsAndStepComeFromTheScanner)
{
    const BarRow& row = GetParam();
    bar(row.control).setSingleStep(9);
    FakeScanner scanner = scannerWith(Option::integer(row.option, row.max).range(row.min, row.max));
    bind(scanner);
    EXPECT_EQ(bar(row.control).minimum(), row.min);
    EXPECT_EQ(bar(row.control).maximum(), row.max);
    EXPECT_EQ(bar(row.control).singleStep(), 1);
}

TEST_P(DiscoveryBars, WithoutARangeTheLimitsStay)
{
    const BarRow& row = GetParam();
    const int min = bar(row.control).minimum();
    const int max = bar(row.control).maximum();
    FakeScanner scanner = scannerWith(Option::integer(row.option, min));
    bind(scanner);
    EXPECT_EQ(bar(row.control).minimum(), min);
    EXPECT_EQ(bar(row.control).maximum(), max);
}

INSTANTIATE_TEST_SUITE_P(Rows, DiscoveryBars,
                         testing::Values(BarRow{"background-processing-sensitivity",
                                                "background_processing_sensitivity", -5, 25},
                                         BarRow{"cachemode-value", "cachemode_value", 16, 700},
                                         BarRow{"powersaving-time", "powersaving_time", 5, 60}),
                         rowName<BarRow>);

TEST_F(Discovery, CacheValueAndPowerSavingTimeAreTaken)
{
    FakeScanner scanner;
    scanner.add(Option::integer("cachemode-value", 333).range(1, 700));
    scanner.add(Option::integer("powersaving-time", 44).range(1, 60));
    bind(scanner);
    EXPECT_EQ(bar("cachemode_value").value(), 333);
    EXPECT_EQ(bar("powersaving_time").value(), 44);
}

TEST_F(Discovery, ThePowerOffTimeStartsAtOneAndKeepsItsValue)
{
    bar("poweroff_time").setValue(100);
    FakeScanner scanner = scannerWith(Option::integer("poweroff-time", 33).range(10, 300));
    bind(scanner);
    EXPECT_EQ(bar("poweroff_time").minimum(), 1);
    EXPECT_EQ(bar("poweroff_time").maximum(), 300);
    EXPECT_EQ(bar("poweroff_time").singleStep(), 1);
    EXPECT_EQ(bar("poweroff_time").value(), 100);
}

TEST_F(Discovery, TheBackgroundListHasTheTwoKnownEntries)
{
    FakeScanner scanner = scannerWith(Option::choice(
        "background-processing-setting", {"Moire", "Something", "Auto", "White"}, "Auto"));
    bind(scanner);
    EXPECT_EQ(itemsOf("background_processing_setting"),
              (QStringList{QStringLiteral("网纹"), QStringLiteral("自动")}));
    bind(scanner);
    EXPECT_EQ(itemsOf("background_processing_setting").size(), 2);
}

TEST_F(Discovery, TheBackgroundListFollowsTheScanner)
{
    FakeScanner scanner =
        scannerWith(Option::choice("background-processing-setting", {"Auto"}, "Auto"));
    bind(scanner);
    EXPECT_EQ(itemsOf("background_processing_setting"), (QStringList{QStringLiteral("自动")}));
}

TEST_F(Discovery, OnlyTheSerialLineOfTheSerialNumberRemains)
{
    FakeScanner scanner = scannerWith(Option::text("serial-number", "KS-7"));
    bind(scanner);
    EXPECT_EQ(dialog().serial_text, QStringLiteral("序列号:  KS-7\n"));
    EXPECT_TRUE(information().contains(QStringLiteral("序列号:  KS-7\n")));
    EXPECT_FALSE(information().contains(QStringLiteral("扫描仪型号")));
}

TEST_F(Discovery, DeviceInfoGivesTheUsbLine)
{
    const std::vector<std::pair<const char*, QString>> rows{
        {"638:2b1f", QStringLiteral("VID/PID   :    0x638/0x2b1f\n")},
        {"638:2b1f:more", QStringLiteral("VID/PID   :    0x638/0x2b1f\n")},
        {":", QStringLiteral("VID/PID   :    0x/0x\n")},
        {"%2:%1", QStringLiteral("VID/PID   :    0x%2/0x%1\n")},
        {"638", QString()},
        {"", QString()},
    };
    int round = 0;
    for (const auto& [value, line] : rows) {
        FakeScanner scanner = scannerWith(Option::text("device-info", value));
        bind(scanner, ("Scanner" + std::to_string(round++)).c_str());
        EXPECT_EQ(dialog().counter_text, line) << value;
    }
}

TEST_F(Discovery, RollerCountersGiveALineEach)
{
    FakeScanner scanner;
    scanner.add(Option::integer("padscan-count", 12)).add(Option::integer("roller-count", 34));
    bind(scanner);
    EXPECT_EQ(dialog().counters.separation_roller_count, 12U);
    EXPECT_EQ(dialog().counters.feed_roller_count, 34U);
    EXPECT_EQ(dialog().counter_text,
              QStringLiteral("自动分纸滚轮/垫片次数：12\n自动进纸滚轮次数：34\n"));
}

TEST_F(Discovery, RollerCountersAreUnsigned)
{
    FakeScanner scanner = scannerWith(Option::integer("padscan-count", -1));
    bind(scanner);
    EXPECT_EQ(dialog().counters.separation_roller_count, 4294967295U);
    EXPECT_EQ(dialog().counter_text, QStringLiteral("自动分纸滚轮/垫片次数：4294967295\n"));
}

TEST_F(Discovery, InactiveCountersAreLeftOut)
{
    FakeScanner scanner;
    scanner.add(Option::integer("padscan-count", 12).inactive());
    scanner.add(Option::integer("roller-count", 34).inactive());
    bind(scanner);
    EXPECT_EQ(dialog().counters.separation_roller_count, 0U);
    EXPECT_EQ(dialog().counters.feed_roller_count, 0U);
    EXPECT_TRUE(dialog().counter_text.isEmpty());
}

TEST_F(Discovery, CounterLinesStandInTheOrderOfTheOptions)
{
    FakeScanner scanner;
    scanner.add(Option::integer("roller-count", 3)).add(Option::text("device-info", "1:2"));
    scanner.add(Option::integer("padscan-count", 4));
    bind(scanner);
    EXPECT_EQ(dialog().counter_text, QStringLiteral("自动进纸滚轮次数：3\nVID/PID   :    0x1/0x2\n"
                                                    "自动分纸滚轮/垫片次数：4\n"));
}

TEST_F(Discovery, AnInactiveEjectOptionHidesItsGroup)
{
    FakeScanner scanner =
        scannerWith(Option::boolean("eject-paper-opposite-side", false).inactive());
    bind(scanner);
    EXPECT_TRUE(widget("eject_paper_groupBox").isHidden());
    FakeScanner with = scannerWith(Option::boolean("eject-paper-opposite-side", false));
    bind(with, "With");
    EXPECT_FALSE(widget("eject_paper_groupBox").isHidden());
}

TEST_F(Discovery, ReadsAskForNoInfoAndFitTheOption)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const std::vector<Call> gets = scanner.journal().of(CallKind::Get);
    ASSERT_FALSE(gets.empty());
    EXPECT_EQ(gets.front().index, 0);
    for (const Call& call : gets) {
        EXPECT_FALSE(call.infoAsked) << call.name;
        EXPECT_FALSE(call.nullValue) << call.name;
    }
}

TEST_F(Discovery, WhatTheScannerLacksStaysAsTheFormHasIt)
{
    FakeScanner scanner;
    DialogProbe untouched;
    bind(scanner);
    for (const char* name : {"brightness_set", "contrast_set", "binarization_value", "gamma_set",
                             "cachemode_value", "powersaving_time", "poweroff_time"}) {
        EXPECT_EQ(bar(name).value(), child<QAbstractSlider>(untouched, name).value()) << name;
        EXPECT_EQ(bar(name).maximum(), child<QAbstractSlider>(untouched, name).maximum()) << name;
    }
    for (const char* name : {"rotate", "cachemode", "binarization", "autocropdeskew"}) {
        EXPECT_EQ(itemsOf(name), items(child<QComboBox>(untouched, name))) << name;
        EXPECT_EQ(combo(name).currentIndex(), 0) << name;
    }
    EXPECT_EQ(combo("source").count(), 0);
}
