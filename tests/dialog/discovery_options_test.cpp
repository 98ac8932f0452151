// What single options do to their controls when a scanner is bound.
#include "discovery_fixture.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>

#include <gtest/gtest.h>

using namespace kestrel::test;

namespace {

using Discovery = DialogTest;

} // namespace

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
