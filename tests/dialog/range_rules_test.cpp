// Paper sizes and their orientation.
#include "rules_range.h"

#include <QButtonGroup>

#include <gtest/gtest.h>

#include <string>

using namespace kestrel::test;

namespace {

struct SizeRow
{
    const char* name;
    QString text;
    double shortSide;
    double longSide;
};

class Sizes : public RangeTest, public testing::WithParamInterface<SizeRow>
{
};

} // namespace

TEST_P(Sizes, UprightAndAcrossWhereThereIsRoom)
{
    const SizeRow& row = GetParam();
    start(500.0, 600.0);
    click(button("vertical_range")); // a scanner for A3 starts across
    choosePaper(kCustom);
    choosePaper(row.text);
    const auto centre = [](double width) {
        return QString::number((500.0 - width) * 0.5, 'f', 1).toDouble();
    };
    expectArea(centre(row.shortSide), 0.0, row.shortSide, row.longSide);
    EXPECT_TRUE(checked("vertical_range"));
    EXPECT_TRUE(button("horizontal_range").isEnabled());
    click(button("horizontal_range"));
    expectArea(centre(row.longSide), 0.0, row.longSide, row.shortSide);
    choosePaper(kCustom);
    choosePaper(row.text);
    expectArea(centre(row.longSide), 0.0, row.longSide, row.shortSide);
    EXPECT_TRUE(checked("horizontal_range"));
    EXPECT_FALSE(dialog().portrait);
}

TEST_P(Sizes, UprightWhereItDoesNotFitAcross)
{
    const SizeRow& row = GetParam();
    // Admitted, with no room for the long side.
    start(row.longSide - 0.1, 600.0);
    if (papers().findText(row.text) < 0) {
        papers().addItem(row.text);
    }
    real("br_y").setValue(50.0);
    real("br_x").setValue(60.0);
    click(button("horizontal_range"));
    ASSERT_TRUE(checked("horizontal_range"));
    choosePaper(row.text);
    EXPECT_TRUE(checked("vertical_range"));
    EXPECT_TRUE(dialog().portrait);
    EXPECT_FALSE(button("horizontal_range").isEnabled());
    EXPECT_DOUBLE_EQ(wide(), row.shortSide);
    EXPECT_DOUBLE_EQ(high(), row.longSide);
    EXPECT_NEAR(left(), (row.longSide - 0.1 - row.shortSide) / 2, 0.0501);
}

TEST_P(Sizes, AcrossWhereItJustFits)
{
    const SizeRow& row = GetParam();
    start(row.longSide, 600.0);
    if (papers().findText(row.text) < 0) {
        papers().addItem(row.text);
    }
    real("br_y").setValue(50.0);
    real("br_x").setValue(60.0);
    click(button("horizontal_range"));
    choosePaper(row.text);
    EXPECT_TRUE(checked("horizontal_range"));
    expectArea(0.0, 0.0, row.longSide, row.shortSide);
}

TEST_P(Sizes, WithNeitherOrientationTheAreaStays)
{
    const SizeRow& row = GetParam();
    start(500.0, 600.0);
    choosePaper(kCustom);
    real("br_x").setValue(90.0);
    real("br_y").setValue(80.0);
    auto* const group = button("horizontal_range").group();
    group->setExclusive(false);
    button("horizontal_range").setChecked(false);
    button("vertical_range").setChecked(false);
    choosePaper(row.text);
    expectArea(205.0, 0.0, 90.0, 80.0);
}

// The entries of the two US sizes stand for each other's length.
INSTANTIATE_TEST_SUITE_P(
    Rows, Sizes,
    testing::Values(SizeRow{"Legal", kLegal, 215.9, 279.4},
                    SizeRow{"Letter", kLetter, 215.9, 355.6}, SizeRow{"A3", kA3, 297.0, 420.0},
                    SizeRow{"A4", kA4, 210.0, 297.0}, SizeRow{"A5", kA5, 148.0, 210.0},
                    SizeRow{"A6", kA6, 105.0, 148.0}, SizeRow{"B4", kB4, 257.0, 364.0},
                    SizeRow{"B5", kB5, 182.0, 257.0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(RangeTest, A4DoesNotLieAcross216Millimetres)
{
    start(216.0, 400.0);
    across();
    choosePaper(kA4);
    EXPECT_TRUE(checked("vertical_range"));
    EXPECT_FALSE(button("horizontal_range").isEnabled());
    expectArea(3.0, 0.0, 210.0, 297.0);
}

TEST_F(RangeTest, A4LiesAcross300Millimetres)
{
    start(300.0, 400.0);
    across();
    choosePaper(kA4);
    EXPECT_TRUE(checked("horizontal_range"));
    expectArea(1.5, 0.0, 297.0, 210.0);
}

TEST_F(RangeTest, SizesCentreWithoutCentreAlignmentToo)
{
    start(300.0, 400.0);
    centring(false);
    choosePaper(kA5);
    expectArea(76.0, 0.0, 148.0, 210.0);
    paste(real("tl_x"), QStringLiteral("10.0"));
    choosePaper(kCustom);
    expectArea(76.0, 0.0, 148.0, 210.0);
}

TEST_F(RangeTest, AnUnknownEntryOnlyCentres)
{
    start(300.0, 400.0);
    centring(false);
    choosePaper(kA5);
    paste(real("tl_x"), QStringLiteral("10.0"));
    papers().addItem(QStringLiteral("Ledger"));
    choosePaper(QStringLiteral("Ledger"));
    expectArea(76.0, 0.0, 148.0, 210.0);
}

TEST_F(RangeTest, ASizeKeepsTheTopOffset)
{
    start(300.0, 400.0);
    choosePaper(kA6);
    paste(real("tl_y"), QStringLiteral("12.5"));
    choosePaper(kA5);
    expectArea(76.0, 12.5, 148.0, 210.0);
}

TEST_F(RangeTest, WholeAreaTakesEverythingFromTheCorner)
{
    start(300.0, 400.0);
    across();
    paste(real("tl_y"), QStringLiteral("20.0"));
    ASSERT_FALSE(dialog().portrait);
    choosePaper(kWhole);
    expectArea(0.0, 0.0, 300.0, 400.0);
    EXPECT_TRUE(checked("vertical_range"));
    EXPECT_FALSE(button("horizontal_range").isEnabled());
    // The flag stays as it was.
    EXPECT_FALSE(dialog().portrait);
}

TEST_F(RangeTest, WholeAreaOfAWideScannerCanBeTurned)
{
    // The height rule has the last word: what is no higher than the scanner is wide fits across.
    start(420.0, 297.0);
    choosePaper(kA6);
    choosePaper(kWhole);
    expectArea(0.0, 0.0, 420.0, 297.0);
    EXPECT_TRUE(button("horizontal_range").isEnabled());
}

TEST_F(RangeTest, TheCheckedOrientationDoesNothing)
{
    start(300.0, 400.0);
    choosePaper(kA5);
    click(button("vertical_range"));
    expectArea(76.0, 0.0, 148.0, 210.0);
    click(button("horizontal_range"));
    expectArea(45.0, 0.0, 210.0, 148.0);
    click(button("horizontal_range"));
    expectArea(45.0, 0.0, 210.0, 148.0);
    EXPECT_EQ(papers().currentText(), kA5);
    click(button("vertical_range"));
    expectArea(76.0, 0.0, 148.0, 210.0);
}

TEST_F(RangeTest, TurningTakesTheTopOffsetBackWhereItDoesNotFit)
{
    start(300.0, 400.0);
    choosePaper(kCustom);
    paste(real("br_y"), QStringLiteral("100.0"));
    paste(real("br_x"), QStringLiteral("250.0"));
    paste(real("tl_y"), QStringLiteral("150.0"));
    click(button("horizontal_range")); // 100 x 250: exactly 150 left
    expectArea(100.0, 150.0, 100.0, 250.0);
    click(button("vertical_range"));
    expectArea(25.0, 150.0, 250.0, 100.0);
    paste(real("tl_y"), QStringLiteral("150.1"));
    click(button("horizontal_range"));
    expectArea(100.0, 0.0, 100.0, 250.0);
}

TEST_F(RangeTest, TurningIsCutToTheScanner)
{
    start(216.0, 400.0);
    choosePaper(kCustom);
    paste(real("br_y"), QStringLiteral("216.0"));
    click(button("horizontal_range"));
    dialog().testGroup(0);
    real("br_y").setValue(300.0);
    dialog().testGroup(1);
    EXPECT_DOUBLE_EQ(wide(), 216.0);
    EXPECT_TRUE(dialog().portrait);
    EXPECT_FALSE(dialog().updating);
}

TEST_F(RangeTest, EveryPathClearsTheGuard)
{
    start(300.0, 400.0);
    for (const int id : {1, 1, 0, 0, 7, -1}) {
        dialog().testGroup(id);
        EXPECT_FALSE(dialog().updating) << id;
        EXPECT_EQ(dialog().portrait, id != 0) << id;
    }
    for (int i = 0; i < papers().count(); ++i) {
        papers().setCurrentIndex(i);
        EXPECT_FALSE(dialog().updating) << i;
    }
    papers().setCurrentIndex(-1);
    EXPECT_FALSE(dialog().updating);
}
