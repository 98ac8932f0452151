// Paper sizes and orientation on the preview tab.
#include "preview_dialog.h"
#include "rules_range.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace kestrel::test;

namespace {

/// A feeder of this size.
ScannerModel sized(double width, double height)
{
    ScannerModel model;
    model.sources = {"ADF Front", "ADF Duplex"};
    model.width = width;
    model.feederHeight = height;
    return model;
}

class PreviewSizes : public PreviewTest
{
protected:
    void startSized(double width, double height)
    {
        start(makeScanner(sized(width, height)));
        scan(colourFrame(64, 88));
    }

    void choosePaper(const QString& text)
    {
        QComboBox& papers = combo("preview_scanrange");
        if (papers.findText(text) < 0) {
            papers.addItem(text); // too large for the scanner, so it has not listed it
        }
        papers.setCurrentIndex(-1);
        papers.setCurrentText(text);
        ASSERT_EQ(papers.currentText(), text);
    }

    QAbstractButton& upright() const { return button("vertical_range_preview"); }
    QAbstractButton& across() const { return button("horizontal_range_preview"); }

    /// Expects the numbers, and the selection where they say.
    void expectArea(double x, double y, double w, double h)
    {
        expectOffsets(x, y, w, h);
        const double perMm = standard() / 20.0;
        const auto pixels = [perMm](double mm) { return static_cast<int>(std::trunc(mm * perMm)); };
        EXPECT_EQ(selected(),
                  QRect(pixels(real("offset_x").value()), pixels(real("offset_y").value()),
                        pixels(real("offset_w").value()), pixels(real("offset_h").value())));
        EXPECT_EQ(state(), kestrel::SelectionState::Finished);
        EXPECT_FALSE(dialog().updating);
    }

    /// Numbers that no size leads to.
    void write(double x, double y, double w, double h)
    {
        dialog().updating = true;
        real("offset_x").setValue(x);
        real("offset_y").setValue(y);
        real("offset_w").setValue(w);
        real("offset_h").setValue(h);
        dialog().updating = false;
    }
};

} // namespace

TEST_F(PreviewSizes, OnANarrowScannerOnlyTheSmallOnesTurn)
{
    startSized(215.9, 355.6);
    struct Row
    {
        QString text;
        bool turns;
        double w, h;
    };
    for (const Row& row :
         {Row{kA4, false, 210, 297}, {kA5, true, 148, 210}, {kA6, true, 105, 148}}) {
        choosePaper(row.text);
        EXPECT_EQ(across().isEnabled(), row.turns) << row.text.toStdString();
        expectArea(std::round((215.9 - row.w) * 5) / 10, 0, row.w, row.h);
    }
}

TEST_F(PreviewSizes, AcrossIsTakenWhereItFits)
{
    startSized(450, 450);
    struct Row
    {
        QString text;
        double w, h;
    };
    for (const Row& row : {Row{kA4, 297, 210}, {kA5, 210, 148}, {kA6, 148, 105}}) {
        across().setChecked(true);
        choosePaper(row.text);
        EXPECT_TRUE(across().isEnabled());
        EXPECT_TRUE(across().isChecked());
        expectArea((450 - row.w) / 2, 0, row.w, row.h);
        upright().setChecked(true);
        choosePaper(row.text);
        expectArea((450 - row.h) / 2, 0, row.h, row.w);
    }
}

TEST_F(PreviewSizes, AcrossFitsExactlyAtTheWidthOfTheScanner)
{
    struct Row
    {
        double width;
        QString text;
        bool fits;
    };
    for (const Row& row : {Row{297.0, kA4, true},
                           {296.9, kA4, false},
                           {210.0, kA5, true},
                           {209.9, kA5, false},
                           {148.0, kA6, true},
                           {147.9, kA6, false}}) {
        startSized(row.width, 450);
        choosePaper(row.text);
        EXPECT_EQ(across().isEnabled(), row.fits) << row.width;
        dialog().updating = false;
    }
}

TEST_F(PreviewSizes, AcrossThatDoesNotFitIsUprightThoughChecked)
{
    startSized(215.9, 355.6);
    across().setChecked(true);
    choosePaper(kA4);
    EXPECT_FALSE(across().isEnabled());
    expectArea(3.0, 0, 210, 297);
}

TEST_F(PreviewSizes, A3IsUprightAndOnANarrowScannerCannotTurn)
{
    startSized(304.8, 431.8);
    across().setChecked(true);
    choosePaper(kA3);
    EXPECT_TRUE(upright().isChecked());
    EXPECT_FALSE(across().isEnabled());
    expectArea(3.9, 0, 297, 420);
}

TEST_F(PreviewSizes, A3OnAWideScannerLeavesTheButtons)
{
    startSized(420.0, 450);
    for (const bool enabled : {true, false}) {
        across().setEnabled(enabled);
        across().setChecked(true);
        choosePaper(kA3);
        EXPECT_TRUE(across().isChecked());
        EXPECT_EQ(across().isEnabled(), enabled);
        expectArea(61.5, 0, 297, 420);
    }
}

TEST_F(PreviewSizes, TheWholeAreaStartsInTheCorner)
{
    startSized(215.9, 355.6);
    write(10, 20, 30, 40);
    across().setChecked(true);
    choosePaper(kWhole);
    EXPECT_TRUE(upright().isChecked());
    EXPECT_FALSE(across().isEnabled());
    expectArea(0, 0, 215.9, 355.6);
}

TEST_F(PreviewSizes, ASizeOfOnesOwnLeavesTheNumbersAndIsUpright)
{
    startSized(215.9, 355.6);
    drag({35, 70}, {210, 350});
    const QRect before = selected();
    write(10, 20, 30, 40);
    across().setEnabled(true);
    across().setChecked(true);
    choosePaper(kCustom);
    EXPECT_TRUE(upright().isChecked());
    EXPECT_FALSE(across().isEnabled());
    expectOffsets(10, 20, 30, 40);
    EXPECT_EQ(selected(), before);
    EXPECT_FALSE(dialog().updating);
}

TEST_F(PreviewSizes, TheOthersAndUnknownTextsChangeNothing)
{
    startSized(450, 450);
    drag({35, 70}, {210, 350});
    const QRect before = selected();
    write(10, 20, 30, 40);
    for (const QString& text :
         {kLegal, kLetter, kB4, kB5, QStringLiteral("ISO A4"), QStringLiteral("x")}) {
        for (const bool enabled : {true, false}) {
            across().setEnabled(enabled);
            across().setChecked(true);
            choosePaper(text);
            EXPECT_TRUE(across().isChecked()) << text.toStdString();
            EXPECT_EQ(across().isEnabled(), enabled) << text.toStdString();
            expectOffsets(10, 20, 30, 40);
            EXPECT_EQ(selected(), before);
            EXPECT_FALSE(dialog().updating);
        }
    }
}

TEST_F(PreviewSizes, ASizeMovesTheSelectionOnceAndIsNotMended)
{
    // The guard keeps the boxes' own slots away while all four are written.
    startSized(450, 450);
    write(440, 0, 5, 5);
    choosePaper(kA4);
    expectArea(120, 0, 210, 297);
}

TEST_F(PreviewSizes, WhileTheUserDragsTheNumbersAloneChange)
{
    startSized(450, 450);
    mouse(QEvent::MouseButtonPress, {35, 70});
    mouse(QEvent::MouseMove, {100, 150});
    const QRect before = selected();
    choosePaper(kA4);
    expectOffsets(120, 0, 210, 297);
    EXPECT_EQ(selected(), before);
}

TEST_F(PreviewSizes, TurningSwapsWidthAndHeightAndCentres)
{
    startSized(450, 450);
    upright().setChecked(true);
    choosePaper(kA4);
    click(across());
    expectArea(76.5, 0, 297, 210);
    click(upright());
    expectArea(120, 0, 210, 297);
}

TEST_F(PreviewSizes, AClickOnTheOrientationThatIsCheckedTurnsAgain)
{
    startSized(450, 450);
    upright().setChecked(true);
    choosePaper(kA4);
    click(upright());
    EXPECT_TRUE(upright().isChecked());
    expectArea(76.5, 0, 297, 210);
    click(upright());
    expectArea(120, 0, 210, 297);
}

TEST_F(PreviewSizes, TurningKeepsTheTopWhereThereIsRoom)
{
    startSized(450, 450);
    write(10, 300, 150, 80); // turned it reaches just to the end
    click(upright());
    expectArea(185, 300, 80, 150);
}

TEST_F(PreviewSizes, TurningGoesToTheTopWhereThereIsNone)
{
    startSized(450, 450);
    write(10, 300.1, 150, 80);
    click(upright());
    expectArea(185, 0, 80, 150);
}

TEST_F(PreviewSizes, TurningIsHeldToTheScannersWidth)
{
    startSized(215.9, 355.6);
    write(0, 0, 100, 300);
    dialog().previewRangeGroup(0);
    expectArea(0, 0, 215.9, 100);
}

TEST_F(PreviewSizes, TurningNothingPlacesNothing)
{
    startSized(450, 450);
    write(0, 0, 0, 0);
    dialog().previewRangeGroup(1);
    expectOffsets(225, 0, 0, 0);
    EXPECT_EQ(state(), kestrel::SelectionState::Idle);
    EXPECT_FALSE(dialog().updating);
}

TEST_F(PreviewSizes, CheckingFromCodeDoesNotTurn)
{
    startSized(450, 450);
    upright().setChecked(true);
    choosePaper(kA4);
    across().setChecked(true);
    expectArea(120, 0, 210, 297);
}

TEST_F(PreviewSizes, TheListIsTheOneOfThePaperTab)
{
    startSized(304.8, 431.8);
    EXPECT_EQ(itemsOf("preview_scanrange"), itemsOf("scanrange_setting"));
}
