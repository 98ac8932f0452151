// The four fields of the scan area as a user edits them, centring, and what follows them.
#include "rules_range.h"

#include <gtest/gtest.h>

using namespace kestrel::test;

TEST_F(RangeTest, CentreAlignmentCentresBothWays)
{
    start(300.0, 400.0);
    choosePaper(kA5);
    centring(false);
    EXPECT_TRUE(real("tl_x").isEnabled());
    EXPECT_TRUE(widget("tl_x_label").isEnabled());
    expectArea(76.0, 0.0, 148.0, 210.0);
    paste(real("tl_x"), QStringLiteral("5.0"));
    centring(true);
    EXPECT_FALSE(real("tl_x").isEnabled());
    EXPECT_FALSE(widget("tl_x_label").isEnabled());
    expectArea(76.0, 0.0, 148.0, 210.0);
    real("tl_x").setValue(5.0);
    centring(false);
    expectArea(76.0, 0.0, 148.0, 210.0);
}

TEST_F(RangeTest, OffsetsStayInside)
{
    start(300.0, 400.0);
    choosePaper(kA5); // 152 and 190 left
    centring(false);
    struct Row
    {
        const char* typed;
        double left;
        double top;
    };
    for (const Row row :
         {Row{"10.5", 10.5, 10.5}, Row{"152.0", 152.0, 152.0}, Row{"152.1", 152.0, 152.1},
          Row{"190.0", 152.0, 190.0}, Row{"190.1", 152.0, 190.0}, Row{"299.9", 152.0, 190.0}}) {
        for (const char* name : {"tl_x", "tl_y"}) {
            real(name).setValue(0.0);
            paste(real(name), QString::fromLatin1(row.typed));
        }
        EXPECT_DOUBLE_EQ(left(), row.left) << row.typed;
        EXPECT_DOUBLE_EQ(top(), row.top) << row.typed;
    }
    EXPECT_EQ(papers().currentText(), kA5);
}

TEST_F(RangeTest, AnOffsetFullFromTheEdgeStaysWhereTheAreaIsWhole)
{
    start(300.0, 400.0);
    choosePaper(kWhole);
    centring(false);
    for (const char* name : {"tl_x", "tl_y"}) {
        paste(real(name), QStringLiteral("0.1"));
        EXPECT_DOUBLE_EQ(real(name).value(), 0.0) << name;
    }
}

TEST_F(RangeTest, AWidthByHandStaysInsideAndKeepsThePaper)
{
    start(300.0, 400.0);
    choosePaper(kA5);
    centring(false);
    paste(real("tl_x"), QStringLiteral("40.0"));
    struct Row
    {
        const char* typed;
        double width;
    };
    for (const Row row : {Row{"259.9", 259.9}, Row{"260.0", 260.0}, Row{"260.1", 260.0},
                          Row{"300.0", 260.0}, Row{"20.0", 20.0}}) {
        paste(real("br_x"), QString::fromLatin1(row.typed));
        EXPECT_DOUBLE_EQ(wide(), row.width) << row.typed;
        EXPECT_DOUBLE_EQ(left(), 40.0) << row.typed;
        EXPECT_EQ(papers().currentText(), kA5) << row.typed;
    }
}

TEST_F(RangeTest, AWidthByHandUnderCentringIsCustomAndCentred)
{
    start(300.0, 400.0);
    choosePaper(kA5);
    centring(true);
    type(real("br_x"), QStringLiteral("100.4"));
    EXPECT_EQ(papers().currentText(), kCustom);
    expectArea(99.8, 0.0, 100.4, 210.0);
    type(real("br_x"), QStringLiteral("300.0"));
    expectArea(0.0, 0.0, 300.0, 210.0);
}

TEST_F(RangeTest, AHeightByHandStaysInsideAndIsCustom)
{
    start(300.0, 400.0);
    for (const bool centred : {false, true}) {
        struct Row
        {
            const char* typed;
            double height;
        };
        for (const Row row : {Row{"339.9", 339.9}, Row{"340.0", 340.0}, Row{"340.1", 340.0},
                              Row{"400.0", 340.0}, Row{"20.0", 20.0}}) {
            choosePaper(kA5);
            centring(centred);
            paste(real("tl_y"), QStringLiteral("60.0"));
            paste(real("br_y"), QString::fromLatin1(row.typed));
            EXPECT_DOUBLE_EQ(high(), row.height) << row.typed;
            EXPECT_DOUBLE_EQ(top(), 60.0) << row.typed;
            EXPECT_DOUBLE_EQ(wide(), 148.0) << row.typed;
            EXPECT_EQ(papers().currentText(), kCustom) << row.typed;
        }
    }
}

TEST_F(RangeTest, HeightsByKeysArriveWhole)
{
    start(300.0, 400.0);
    choosePaper(kA5);
    type(real("br_y"), QStringLiteral("123.4"));
    EXPECT_DOUBLE_EQ(high(), 123.4);
    type(real("tl_y"), QStringLiteral("56.7"));
    EXPECT_DOUBLE_EQ(top(), 56.7);
    centring(false);
    type(real("tl_x"), QStringLiteral("7.8"));
    EXPECT_DOUBLE_EQ(left(), 7.8);
    type(real("br_x"), QStringLiteral("98.7"));
    EXPECT_DOUBLE_EQ(wide(), 98.7);
}

TEST_F(RangeTest, ACustomAreaCanBeTypedInAnyOrder)
{
    start(300.0, 400.0);
    choosePaper(kCustom);
    centring(true);
    paste(real("br_x"), QStringLiteral("120.0"));
    paste(real("br_y"), QStringLiteral("130.0"));
    EXPECT_EQ(papers().currentText(), kCustom);
    expectArea(90.0, 0.0, 120.0, 130.0);
}

TEST_F(RangeTest, AHeightBeyondTheWidthCannotBeLaidAcross)
{
    start(300.0, 400.0);
    for (const char* typed : {"299.9", "300.0", "300.1", "399.9", "10.0"}) {
        real("br_y").setValue(50.0);
        paste(real("br_y"), QString::fromLatin1(typed));
        const bool fits = QString::fromLatin1(typed).toDouble() <= 300.0;
        EXPECT_EQ(button("horizontal_range").isEnabled(), fits) << typed;
    }
}

TEST_F(RangeTest, ACheckedOrientationIsOnlyDisabled)
{
    start(300.0, 400.0);
    across();
    paste(real("br_y"), QStringLiteral("310.0"));
    EXPECT_TRUE(checked("horizontal_range"));
    EXPECT_FALSE(checked("vertical_range"));
    EXPECT_FALSE(button("horizontal_range").isEnabled());
    paste(real("br_y"), QStringLiteral("290.0"));
    EXPECT_TRUE(button("horizontal_range").isEnabled());
}

TEST_F(RangeTest, UnderTheGuardTheHeightStillDecidesTheOrientations)
{
    start(300.0, 400.0);
    choosePaper(kA5);
    dialog().updating = true;
    real("br_y").setValue(350.0);
    EXPECT_FALSE(button("horizontal_range").isEnabled());
    EXPECT_DOUBLE_EQ(freeLength(), 50.0);
    real("br_y").setValue(200.0);
    EXPECT_TRUE(button("horizontal_range").isEnabled());
    EXPECT_DOUBLE_EQ(freeLength(), 200.0);
    real("br_x").setValue(299.0);
    EXPECT_DOUBLE_EQ(wide(), 299.0);
    EXPECT_EQ(papers().currentText(), kA5);
    dialog().updating = false;
}

TEST_F(RangeTest, LengthDetectionEndsBelowTheArea)
{
    start(300.0, 400.0);
    choosePaper(kA5);
    EXPECT_DOUBLE_EQ(freeLength(), 190.0);
    paste(real("tl_y"), QStringLiteral("40.0"));
    EXPECT_DOUBLE_EQ(freeLength(), 150.0);
    paste(real("br_y"), QStringLiteral("100.0"));
    EXPECT_DOUBLE_EQ(freeLength(), 260.0);
    EXPECT_DOUBLE_EQ(real("length_detection_value").minimum(), 0.0);
    real("length_detection_value").setValue(250.0);
    paste(real("br_y"), QStringLiteral("200.0"));
    EXPECT_DOUBLE_EQ(freeLength(), 160.0);
    EXPECT_DOUBLE_EQ(real("length_detection_value").value(), 160.0);
}

TEST_F(RangeTest, LengthDetectionCountsTheOffsetAsTyped)
{
    start(300.0, 400.0);
    choosePaper(kA5);
    paste(real("tl_y"), QStringLiteral("200.0")); // 190 is the most
    EXPECT_DOUBLE_EQ(top(), 190.0);
    EXPECT_DOUBLE_EQ(freeLength(), -10.0);
    EXPECT_DOUBLE_EQ(real("length_detection_value").minimum(), -10.0);
    EXPECT_DOUBLE_EQ(real("length_detection_value").value(), -10.0);
    // Once there is room again, less than nothing is not on offer.
    paste(real("tl_y"), QStringLiteral("90.0"));
    EXPECT_DOUBLE_EQ(freeLength(), 100.0);
    EXPECT_DOUBLE_EQ(real("length_detection_value").minimum(), 0.0);
    EXPECT_DOUBLE_EQ(real("length_detection_value").value(), 0.0);
}

TEST_F(RangeTest, WithoutASecondHeightLongPaperLeavesTheArea)
{
    scanner = makeScanner(feeder({"", 300.0, 400.0, 3000.0}));
    scanner.remove("long-paper-scan");
    bind(scanner);
    show();
    choosePaper(kA5);
    button("long_paper_scan").setChecked(true);
    expectArea(76.0, 0.0, 148.0, 210.0);
    EXPECT_DOUBLE_EQ(real("br_y").maximum(), 400.0);
}
