// What the paper source brings into play and takes away, chosen by a user or by a program.
#include "rules_sides.h"
#include "rules_user.h"

#include <kestrelsettingui.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QSpinBox>

#include <gtest/gtest.h>

#include <array>

using namespace kestrel::test;

namespace {

const QString kFixed = QStringLiteral("固定尺寸");
const QString kDocument = QStringLiteral("原稿尺寸");
const QString kSeveral = QStringLiteral("自动多张图像-平台");

class SourceRules : public SidesTest
{
protected:
    void TearDown() override { destroy(); } // before the scanner

    void start(FakeScanner made)
    {
        scanner = std::move(made);
        bind(scanner);
        show();
    }
    int sourceType() { return getScanSourceType(dialog().host()); }
    void choosing(const QString& source) { choose(combo("source"), source); }
    /// Puts another text in front of the rule, as a device's own list might.
    void sourceText(const QString& text)
    {
        combo("source").addItem(text);
        combo("source").setCurrentIndex(combo("source").count() - 1);
    }

    FakeScanner scanner;
};

struct ControlsRow
{
    const char* name;
    QString source;
    int type;
    bool back;
    bool waiting;
    bool multifeed;
};

class SourceControlsTable : public SourceRules, public testing::WithParamInterface<ControlsRow>
{
};

struct CropRow
{
    const char* name;
    bool flag;
    int itemsBefore;
    int selectedBefore;
    QString source;
    QStringList itemsAfter;
    int selectedAfter;
};

class CropList : public SourceRules, public testing::WithParamInterface<CropRow>
{
};

} // namespace

TEST_F(SourceRules, TypeIsFeederBeforeAnySourceWasSeen)
{
    EXPECT_EQ(sourceType(), 0);
    EXPECT_EQ(dialog().get_scan_source_type(), 0);
}

TEST_P(SourceControlsTable, FollowTheChosenSource)
{
    const ControlsRow& row = GetParam();
    start(fullScanner());
    // From each of the other two.
    for (const QString& from : {kFeeder, kFlatbed, kAutomatic}) {
        if (from != row.source) {
            choosing(from);
            choosing(row.source);
            EXPECT_EQ(sourceType(), row.type);
            EXPECT_EQ(dialog().get_scan_source_type(), row.type);
            EXPECT_EQ(widget("widget_rear").isEnabled(), row.back);
            EXPECT_EQ(widget("widget_11").isEnabled(), row.back);
            EXPECT_EQ(widget("scan_waitingjob_widget").isEnabled(), row.waiting);
            EXPECT_EQ(widget("paper_detection").isEnabled(), row.multifeed);
            EXPECT_EQ(button("rear_color").isEnabled(), row.back);
            EXPECT_EQ(button("color_detection_image_back").isEnabled(), row.back);
            EXPECT_TRUE(button("front_color").isEnabled());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, SourceControlsTable,
                         testing::Values(ControlsRow{"Feeder", kFeeder, 0, true, false, true},
                                         ControlsRow{"Flatbed", kFlatbed, 1, false, true, false},
                                         ControlsRow{"Automatic", kAutomatic, 2, true, false,
                                                     true}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(SourceRules, TheOrderOfTheItemsIsOfNoImportance)
{
    start(flatbedAndFeederScanner());
    ASSERT_EQ(itemsOf("source"), (QStringList{kFlatbed, kFeeder}));
    EXPECT_EQ(sourceType(), 1);
    choosing(kFeeder);
    EXPECT_EQ(sourceType(), 0);
    choosing(kFlatbed);
    EXPECT_EQ(sourceType(), 1);
    EXPECT_FALSE(widget("widget_rear").isEnabled());
}

TEST_F(SourceRules, DiscoveryRunsTheRule)
{
    start(flatbedScanner());
    EXPECT_EQ(sourceType(), 1);
    EXPECT_FALSE(widget("widget_rear").isEnabled());
    EXPECT_TRUE(widget("scan_waitingjob_widget").isEnabled());
    EXPECT_FALSE(widget("paper_detection").isEnabled());
}

TEST_F(SourceRules, TheLoaderRunsTheRule)
{
    start(fullScanner());
    combo("source").setCurrentIndex(1);
    dialog().writeConfig(QStringLiteral("onTheGlass"));
    combo("source").setCurrentIndex(0);
    ASSERT_EQ(sourceType(), 0);
    dialog().loadConfig(QStringLiteral("onTheGlass"));
    EXPECT_EQ(sourceType(), 1);
    EXPECT_FALSE(widget("widget_rear").isEnabled());
}

TEST_F(SourceRules, AnUnknownTextChangesOnlyBackAndCropList)
{
    start(fullScanner());
    choosing(kFlatbed);
    ASSERT_EQ(itemsOf("autocropdeskew").size(), 3);
    load(7);
    sourceText(QStringLiteral("Transparency"));
    EXPECT_TRUE(widget("widget_rear").isEnabled());
    EXPECT_EQ(itemsOf("autocropdeskew"), (QStringList{kFixed, kDocument}));
    EXPECT_EQ(sourceType(), 1);
    EXPECT_TRUE(widget("scan_waitingjob_widget").isEnabled());
    EXPECT_FALSE(widget("paper_detection").isEnabled());
    EXPECT_EQ(dialog().mask(), 7);
}

TEST_F(SourceRules, AnUnknownTextLeavesAnEmptyMask)
{
    start(fullScanner());
    load(0);
    sourceText(QStringLiteral("Transparency"));
    EXPECT_EQ(dialog().mask(), 0);
    EXPECT_FALSE(checked("front_color"));
}

TEST_F(SourceRules, AnEmptyListKeepsTheType)
{
    start(fullScanner());
    choosing(kAutomatic);
    combo("source").clear();
    EXPECT_EQ(sourceType(), 2);
    EXPECT_TRUE(widget("widget_rear").isEnabled());
}

TEST_F(SourceRules, EverySourceFillsAnEmptyMask)
{
    start(fullScanner());
    for (const int row : {1, 2, 0}) {
        load(0);
        combo("source").setCurrentIndex(row);
        EXPECT_EQ(dialog().mask(), 4) << row;
        EXPECT_TRUE(checked("front_color")) << row;
        EXPECT_TRUE(checked("front_color_dropout")) << row;
    }
}

TEST_F(SourceRules, FlatbedClearsEveryBackChoice)
{
    start(fullScanner());
    for (int mask = 1; mask < 64; ++mask) {
        combo("source").setCurrentIndex(0);
        load(mask);
        combo("source").setCurrentIndex(1);
        const int left = (mask & 7) != 0 ? mask & 7 : 4;
        EXPECT_EQ(dialog().mask(), left) << mask;
        const SidesState s = state();
        for (std::size_t i = 0; i < 6; ++i) {
            EXPECT_EQ(s.boxes.at(i), (left >> i & 1) != 0) << mask << ' ' << kBoxes.at(i);
        }
        EXPECT_EQ(s.boxes, s.twins) << mask;
    }
}

TEST_F(SourceRules, FlatbedAfterBackGrayAndBlackWhiteAloneGivesFrontColour)
{
    start(fullScanner());
    for (const char* name : {"rear_color", "front_color", "rear_gray", "rear_bw", "rear_color"}) {
        click(button(name));
    }
    ASSERT_EQ(dialog().mask(), 24);
    choosing(kFlatbed);
    EXPECT_EQ(dialog().mask(), 4);
    EXPECT_TRUE(checked("front_color"));
    for (const char* name : {"rear_color", "rear_gray", "rear_bw", "rear_gray_dropout"}) {
        EXPECT_FALSE(checked(name)) << name;
    }
}

TEST_F(SourceRules, OtherSourcesKeepTheBackChoices)
{
    start(fullScanner());
    load(54);
    combo("source").setCurrentIndex(2);
    EXPECT_EQ(dialog().mask(), 54);
    combo("source").setCurrentIndex(0);
    EXPECT_EQ(dialog().mask(), 54);
    EXPECT_TRUE(checked("rear_gray"));
}

TEST_F(SourceRules, FlatbedTurnsBackDetectionOffAndForgetsTheFronts)
{
    start(fullScanner());
    click(button("color_detection_image_back"));
    click(button("color_detection_image_front"));
    ASSERT_EQ(dialog().mask(), 4 + 64 + 128);
    choosing(kFlatbed);
    EXPECT_FALSE(checked("color_detection_image_back"));
    EXPECT_FALSE(checked("color_detection_checkbox_2"));
    EXPECT_TRUE(checked("color_detection_image_front"));
    EXPECT_TRUE(checked("color_detection_checkbox"));
    EXPECT_EQ(dialog().mask(), 4);
    // It counts again when it is toggled.
    click(button("color_detection_image_front"));
    EXPECT_EQ(dialog().mask(), 4);
    click(button("color_detection_image_front"));
    EXPECT_EQ(dialog().mask(), 4 + 64);
}

TEST_F(SourceRules, FlatbedWithBackDetectionAloneShowsTheFrontModesAgain)
{
    start(fullScanner());
    load(36);
    click(button("color_detection_image_back"));
    ASSERT_EQ(dialog().mask(), 36 + 128);
    choosing(kFlatbed);
    EXPECT_EQ(dialog().mask(), 4);
    EXPECT_TRUE(checked("front_color"));
    EXPECT_FALSE(checked("rear_color"));
    EXPECT_TRUE(widget("front_widget").isEnabled());
}

TEST_F(SourceRules, AutomaticBringsFrontDetectionToBackDetection)
{
    start(fullScanner());
    click(button("color_detection_image_back"));
    ASSERT_FALSE(checked("color_detection_image_front"));
    ASSERT_EQ(dialog().mask(), 4 + 128);
    choosing(kAutomatic);
    EXPECT_TRUE(checked("color_detection_image_front"));
    EXPECT_TRUE(checked("color_detection_checkbox"));
    EXPECT_EQ(dialog().mask(), 4 + 64 + 128);
}

TEST_F(SourceRules, AutomaticWithoutBackDetectionLeavesTheFront)
{
    start(fullScanner());
    choosing(kAutomatic);
    EXPECT_FALSE(checked("color_detection_image_front"));
    EXPECT_EQ(dialog().mask(), 4);
}

TEST_F(SourceRules, FeederLeavesDetectionAlone)
{
    start(fullScanner());
    combo("source").setCurrentIndex(2);
    click(button("color_detection_image_back"));
    choosing(kFeeder);
    EXPECT_TRUE(checked("color_detection_image_front"));
    EXPECT_TRUE(checked("color_detection_image_back"));
    EXPECT_EQ(dialog().mask(), 4 + 64 + 128);
}

TEST_P(CropList, FollowsTheSource)
{
    const CropRow& row = GetParam();
    start(fullScanner());
    const int target = combo("source").findText(row.source);
    // A source whose own rule does nothing to the list that is set up below.
    combo("source").setCurrentIndex(target == 0 ? 1 : 0);
    auto& list = combo("autocropdeskew");
    list.clear();
    list.addItems(QStringList{kFixed, kDocument, kSeveral}.mid(0, row.itemsBefore));
    list.setCurrentIndex(row.selectedBefore);
    dialog().flatbed_multi_crop = row.flag;
    combo("source").setCurrentIndex(target);
    EXPECT_EQ(itemsOf("autocropdeskew"), row.itemsAfter);
    EXPECT_EQ(list.currentIndex(), row.selectedAfter);
}

namespace {
const QStringList one{kFixed};
const QStringList two{kFixed, kDocument};
const QStringList three{kFixed, kDocument, kSeveral};
} // namespace

INSTANTIATE_TEST_SUITE_P(
    Rows, CropList,
    testing::Values(CropRow{"FlatbedAddsToTwo", true, 2, 1, kFlatbed, three, 1},
                    CropRow{"AutomaticAddsToTwo", true, 2, 0, kAutomatic, three, 0},
                    CropRow{"FlatbedLeavesOne", true, 1, 0, kFlatbed, one, 0},
                    CropRow{"AutomaticLeavesOne", true, 1, 0, kAutomatic, one, 0},
                    CropRow{"FlatbedLeavesThree", true, 3, 2, kFlatbed, three, 2},
                    CropRow{"AutomaticLeavesThree", true, 3, 2, kAutomatic, three, 2},
                    CropRow{"FeederDropsTheThird", true, 3, 2, kFeeder, two, 0},
                    CropRow{"FeederResetsTheSecond", true, 3, 1, kFeeder, two, 0},
                    CropRow{"FeederLeavesTwo", true, 2, 1, kFeeder, two, 1},
                    CropRow{"FeederLeavesOne", true, 1, 0, kFeeder, one, 0},
                    CropRow{"WithoutTheFlagFlatbedAddsNothing", false, 2, 1, kFlatbed, two, 1},
                    CropRow{"WithoutTheFlagFlatbedDrops", false, 3, 1, kFlatbed, two, 0},
                    CropRow{"WithoutTheFlagAutomaticDrops", false, 3, 2, kAutomatic, two, 0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SourceRules, AUserSeesTheThirdCropItemComeAndGo)
{
    start(fullScanner());
    ASSERT_TRUE(dialog().flatbed_multi_crop);
    ASSERT_EQ(itemsOf("autocropdeskew"), (QStringList{kFixed, kDocument}));
    choosing(kFlatbed);
    EXPECT_EQ(itemsOf("autocropdeskew"), (QStringList{kFixed, kDocument, kSeveral}));
    EXPECT_TRUE(combo("autocropdeskew").itemIcon(2).isNull());
    EXPECT_FALSE(combo("autocropdeskew").itemData(2).isValid());
    choose(combo("autocropdeskew"), kSeveral);
    EXPECT_TRUE(widget("autocropdeskew_widget").isEnabled());
    choosing(kFeeder);
    EXPECT_EQ(itemsOf("autocropdeskew"), (QStringList{kFixed, kDocument}));
    EXPECT_EQ(combo("autocropdeskew").currentText(), kFixed);
    EXPECT_FALSE(widget("autocropdeskew_widget").isEnabled());
    EXPECT_TRUE(widget("fixed_sizesetting").isEnabled());
}

TEST_F(SourceRules, AFlatbedAloneGetsItsThirdCropItemAtBinding)
{
    start(flatbedScanner());
    EXPECT_EQ(itemsOf("autocropdeskew"), (QStringList{kFixed, kDocument, kSeveral}));
}

TEST_F(SourceRules, AFlatbedWithoutMultiCropGetsNone)
{
    FakeScanner plain = flatbedScanner();
    plain.remove("flatbed-multi-crop");
    start(std::move(plain));
    EXPECT_FALSE(dialog().flatbed_multi_crop);
    EXPECT_EQ(itemsOf("autocropdeskew"), (QStringList{kFixed, kDocument}));
}

TEST_F(SourceRules, WaitingTimeCountsOnTheFlatbedOnly)
{
    start(fullScanner());
    spin("waitingjob_value").setValue(30);
    EXPECT_EQ(getWaitingJobTime(dialog().host()), 0);
    choosing(kFlatbed);
    EXPECT_EQ(getWaitingJobTime(dialog().host()), 30);
    choosing(kAutomatic);
    EXPECT_EQ(getWaitingJobTime(dialog().host()), 0);
}

namespace {

using FeederDecision = SourceRules;

} // namespace

TEST_F(FeederDecision, SideModeMaskDecidesSourceAndDuplex)
{
    // Each mask without detection, and the detection bits over each of them.
    start(fullScanner());
    scanner.takeTexts();
    for (int mask = 1; mask < 256; ++mask) {
        dialog().setMask(mask);
        const bool detects = mask >= 64;
        const bool front = detects ? (mask & 64) != 0 : (mask & 7) != 0;
        const bool back = detects ? (mask & 128) != 0 : (mask & 56) != 0;
        const char* const expected = front && back ? "ADF Duplex" : back ? "ADF Back" : "ADF Front";
        scanner.clearJournal();
        setAllParamBySettingUI(dialog().host());
        EXPECT_EQ(scanner.journal().setsOf("source"), (Strings{expected})) << mask;
        EXPECT_EQ(isDoubleSideScan(dialog().host()), front && back) << mask;
    }
}
