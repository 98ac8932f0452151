// Paper size, orientation, centring and the four fields of the scan area: tables, edges, and random
// walks over several scanners against a second account.
#include "dialog_fixture.h"
#include "rules_paper_tab.h"
#include "rules_user.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QDoubleSpinBox>

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace kestrel::test;

namespace {

const QString kCustom = QStringLiteral("自定义尺寸");
const QString kLegal = QStringLiteral("US Legal - 8.5 x 14 英寸");
const QString kLetter = QStringLiteral("US Letter - 8.5 x 11 英寸");
const QString kA3 = QStringLiteral("ISO A3 - 29.7 x 42.0 厘米");
const QString kA4 = QStringLiteral("ISO A4 - 21.0 x 29.7 厘米");
const QString kA5 = QStringLiteral("ISO A5 - 14.8 x 21.0 厘米");
const QString kA6 = QStringLiteral("ISO A6 - 10.5 x 14.8 厘米");
const QString kB4 = QStringLiteral("JIS B4 - 25.7 x 36.4 厘米");
const QString kB5 = QStringLiteral("JIS B5 - 18.2 x 25.7 厘米");
const QString kWhole = QStringLiteral("最大扫描范围");

struct Device
{
    const char* name;
    double width;
    double height;
    double longHeight;
};

ScannerModel feeder(const Device& device)
{
    ScannerModel model;
    model.sources = {"ADF Front", "ADF Duplex"};
    model.width = device.width;
    model.feederHeight = device.height;
    model.longHeight = device.longHeight;
    return model;
}

class RangeTest : public DialogTest
{
protected:
    ~RangeTest() override { destroy(); }

    void start(const Device& device)
    {
        scanner = makeScanner(feeder(device));
        bind(scanner);
        show();
    }
    void start(double width, double height) { start({"", width, height, 3000.0}); }

    double left() const { return real("tl_x").value(); }
    double top() const { return real("tl_y").value(); }
    double wide() const { return real("br_x").value(); }
    double high() const { return real("br_y").value(); }
    void expectArea(double x, double y, double w, double h)
    {
        EXPECT_DOUBLE_EQ(left(), x);
        EXPECT_DOUBLE_EQ(top(), y);
        EXPECT_DOUBLE_EQ(wide(), w);
        EXPECT_DOUBLE_EQ(high(), h);
        EXPECT_FALSE(dialog().updating);
    }
    QComboBox& papers() const { return combo("scanrange_setting"); }
    void choosePaper(const QString& text) { choose(papers(), text); }
    void centring(bool on)
    {
        if (checked("center_alignment") != on) {
            click(button("center_alignment"));
        }
    }
    /// Lays the paper across, through a size that lets a user do so.
    void across()
    {
        choosePaper(kA6);
        click(button("horizontal_range"));
        ASSERT_TRUE(checked("horizontal_range"));
    }
    double freeLength() const { return real("length_detection_value").maximum(); }

    FakeScanner scanner;
};

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

class Walk : public RangeTest, public testing::WithParamInterface<Device>
{
protected:
    PaperState shown()
    {
        const auto& length = real("length_detection_value");
        return {{left(), top(), wide(), high(), real("br_y").maximum(), length.value(),
                 length.minimum(), length.maximum()},
                papers().currentIndex(),
                checked("horizontal_range"),
                button("horizontal_range").isEnabled(),
                checked("center_alignment"),
                real("tl_x").isEnabled(),
                dialog().portrait,
                dialog().updating};
    }
    void startModel()
    {
        const auto copy = [this](Field& field, const char* name) {
            const auto& box = real(name);
            field.start(box.value(), box.minimum(), box.maximum());
        };
        copy(model.left, "tl_x");
        copy(model.top, "tl_y");
        copy(model.width, "br_x");
        copy(model.height, "br_y");
        copy(model.length, "length_detection_value");
        for (const QString& text : itemsOf("scanrange_setting")) {
            model.papers.push_back(
                text == kWhole ? "whole" : text.section(QStringLiteral(" - "), 0, 0).toStdString());
        }
        model.paper = static_cast<std::size_t>(papers().currentIndex());
        model.landscapeChecked = checked("horizontal_range");
        model.landscapeEnabled = button("horizontal_range").isEnabled();
        model.centred = checked("center_alignment");
        model.leftEnabled = real("tl_x").isEnabled();
        model.flag = dialog().portrait;
        model.guard = dialog().updating;
    }

    /// Gives a value by hand, and to the model unless the field refuses it.
    void give(const char* name, Field& field, double v)
    {
        const QString text = QString::number(v, 'f', 1);
        paste(real(name), text);
        if (v <= field.max() && v >= field.min()) {
            field.set(v);
        }
    }

    PaperTab model;
};

constexpr Device kDevices[] = {
    {"A4Feeder", 215.9, 355.6, 3000.0}, {"A3Feeder", 304.8, 431.8, 5080.0},
    {"Round", 216.0, 297.0, 3000.0},    {"Wide", 420.0, 297.0, 1000.0},
    {"Small", 105.0, 148.0, 300.0},     {"Square", 300.0, 300.0, 300.0}};

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

TEST_P(Walk, AgreesWithTheSecondAccount)
{
    const Device& device = GetParam();
    start(device);
    for (const unsigned seed : {11U, 12U}) {
        model.papers.clear();
        startModel();
        std::mt19937 random(seed);
        const auto pick = [&random](int n) {
            return static_cast<int>(random() % static_cast<unsigned>(n));
        };
        const auto mm = [&pick](double limit) {
            return pick(static_cast<int>(limit * 10.0) + 20) / 10.0;
        };
        reveal(widget("tl_x"));
        for (int i = 0; i < 700; ++i) {
            std::string what;
            switch (pick(9)) {
            case 0:
            case 1: {
                const int index = pick(papers().count());
                what = "paper " + model.papers.at(static_cast<std::size_t>(index));
                if (pick(4) == 0) {
                    choose(papers(), index);
                } else {
                    papers().setCurrentIndex(index);
                }
                model.choosePaper(static_cast<std::size_t>(index));
                break;
            }
            case 2: {
                const bool landscape = pick(2) == 0;
                what = landscape ? "across" : "upright";
                auto& radio = button(landscape ? "horizontal_range" : "vertical_range");
                ASSERT_EQ(radio.isEnabled(), !landscape || model.landscapeEnabled);
                if (radio.isEnabled()) {
                    click(radio);
                    model.clickOrientation(landscape);
                }
                break;
            }
            case 3:
                what = "centring";
                click(button("center_alignment"));
                model.clickCentred();
                break;
            case 4: {
                const double v = mm(device.width);
                what = "left " + std::to_string(v);
                if (model.leftEnabled) {
                    give("tl_x", model.left, v);
                }
                break;
            }
            case 5: {
                const double v = mm(model.height.max() / (pick(3) == 0 ? 1.0 : 8.0));
                what = "top " + std::to_string(v);
                give("tl_y", model.top, v);
                break;
            }
            case 6: {
                const double v = mm(device.width);
                what = "width " + std::to_string(v);
                give("br_x", model.width, v);
                break;
            }
            case 7: {
                const double v = mm(model.height.max());
                what = "height " + std::to_string(v);
                give("br_y", model.height, v);
                break;
            }
            default:
                what = "long paper";
                click(button("long_paper_scan"));
                model.longPaper(checked("long_paper_scan") ? device.longHeight : device.height);
                break;
            }
            const PaperState now = shown();
            ASSERT_EQ(now, model.state()) << "seed " << seed << " step " << i << ": " << what;
            // Across, the area never leaves the scanner; halves of a tenth are rounded away.
            EXPECT_LE(left() + wide(), device.width + 0.0501) << what;
            EXPECT_FALSE(now.guard) << what;
            EXPECT_LE(real("length_detection_value").minimum(), 0.0) << what;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Devices, Walk, testing::ValuesIn(kDevices),
                         [](const auto& info) { return std::string(info.param.name); });
