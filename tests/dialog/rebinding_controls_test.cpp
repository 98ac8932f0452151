// Single controls and facts when the dialog is bound to another scanner: they tell of that one.
#include "discovery_fixture.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSpinBox>
#include <dialogs/customresolution.h>

#include <gtest/gtest.h>

using namespace kestrel::test;

namespace {

constexpr const char* kOther = "ScannerB";

class RebindingControls : public DialogTest
{
protected:
    /// Whether a widget is on show with its tab.
    bool isOffered(const char* name) { return !widget(name).isHidden(); }
};

} // namespace

TEST_F(RebindingControls, ThePreviewsNumbersStartAtZero)
{
    FakeScanner whole = fullScanner();
    FakeScanner mute = fullScanner();
    mute.hideCount();
    FakeScanner without_area = fullScanner();
    without_area.remove("br-x");
    without_area.remove("br-y");
    for (FakeScanner* const other : {&whole, &mute, &without_area}) {
        FakeScanner scanner = fullScanner();
        bind(scanner);
        for (const char* const name : {"offset_w", "offset_h", "offset_x", "offset_y"}) {
            real(name).setValue(40.0);
            ASSERT_EQ(real(name).value(), 40.0) << name;
        }
        bind(*other, kOther);
        for (const char* const name : {"offset_w", "offset_h", "offset_x", "offset_y"}) {
            EXPECT_EQ(real(name).value(), 0.0) << name;
        }
    }
}

TEST_F(RebindingControls, WhatOneScannerHidIsOnShowForTheNext)
{
    struct Row
    {
        const char* option;
        std::vector<const char*> widgets;
    };
    const std::vector<Row> rows = {
        {"prefeed", {"groupBox_prefeed"}},
        {"eject-paper-opposite-side", {"eject_paper_groupBox"}},
        {"bg-color-setting", {"background_setting_label", "background_setting_combobox"}}};
    for (const auto& row : rows) {
        FakeScanner scanner = fullScanner();
        scanner.option(row.option).inactive();
        bind(scanner);
        for (const char* const name : row.widgets) {
            EXPECT_FALSE(isOffered(name)) << name;
        }
        FakeScanner active = fullScanner();
        bind(active, kOther);
        for (const char* const name : row.widgets) {
            EXPECT_TRUE(isOffered(name)) << name << ", active";
        }
        bind(scanner);
        FakeScanner without = fullScanner();
        without.remove(row.option);
        bind(without, kOther);
        for (const char* const name : row.widgets) {
            EXPECT_TRUE(isOffered(name)) << name << ", not known";
        }
    }
}

TEST_F(RebindingControls, CountersAreNotAnotherScanners)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    ASSERT_EQ(dialog().counters.separation_roller_count, 1234U);
    ASSERT_EQ(dialog().counters.feed_roller_count, 5678U);
    FakeScanner other = fullScanner();
    other.remove("padscan-count").remove("roller-count");
    bind(other, kOther);
    EXPECT_EQ(dialog().counters.separation_roller_count, 0U);
    EXPECT_EQ(dialog().counters.feed_roller_count, 0U);
}

TEST_F(RebindingControls, MeasuresAreNotAnotherScanners)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    ASSERT_GT(dialog().flatbed_max_length, 0);
    ASSERT_GT(dialog().br_y_option, 0);
    FakeScanner other = scannerWith(Option::boolean("long-paper-scan", false));
    bind(other, kOther);
    EXPECT_EQ(dialog().flatbed_max_length, 0);
    EXPECT_EQ(dialog().br_y_option, 0);
    // Without a height that follows, both heights are the one that there is.
    EXPECT_EQ(dialog().long_paper_max_height, dialog().normal_max_height);
}

TEST_F(RebindingControls, ChoicesAreNotAnotherScanners)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    ASSERT_GT(combo("autocropdeskew").count(), 1);
    FakeScanner other = fullScanner();
    other.remove("autocropdeskew").remove("flatbed-multi-crop");
    bind(other, kOther);
    EXPECT_EQ(combo("autocropdeskew").itemText(1), QString());
}

TEST_F(RebindingControls, CustomResolutionsEndWhereTheScannerSays)
{
    const auto& limit = child<QSpinBox>(dialog(), "spinBox_resolution");
    FakeScanner scanner = scannerWith(Option::integer("resolution", 300).range(75, 1200));
    bind(scanner);
    ASSERT_EQ(limit.maximum(), 1200);
    FakeScanner other;
    bind(other, kOther);
    EXPECT_EQ(limit.maximum(), 600);
}

TEST_F(RebindingControls, AScannerThatCannotBeAskedTakesBothOrientations)
{
    button("horizontal_range").setEnabled(false);
    FakeScanner mute = fullScanner();
    mute.hideCount();
    bind(mute, kOther);
    EXPECT_TRUE(button("horizontal_range").isEnabled());
    EXPECT_TRUE(checked("vertical_range"));
}
