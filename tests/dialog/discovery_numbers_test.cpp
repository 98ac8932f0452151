// Options that give a control its limits and its value.
#include "discovery_fixture.h"

#include <QAbstractSlider>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <dialogs/customresolution.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace kestrel::test;

namespace {

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

} // namespace

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
