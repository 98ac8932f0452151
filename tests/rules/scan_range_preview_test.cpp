#include "rules/scan_range.h"

#include <gtest/gtest.h>

#include <ostream>

namespace kestrel {

void PrintTo(const AreaMm& area, std::ostream* out)
{
    *out << area.x << ", " << area.y << ", " << area.width << " x " << area.height;
}

} // namespace kestrel

using namespace kestrel;

namespace {

PreviewRange previewOn(double widthMax, double heightMax, bool landscape)
{
    return {{5.0, 0.0, widthMax},
            {7.0, 0.0, heightMax},
            {100.0, 0.0, widthMax},
            {50.0, 0.0, heightMax},
            landscape};
}

} // namespace

TEST(PreviewSize, A3IsAlwaysUprightAndTouchesTheButtonsOnlyWhereItCannotTurn)
{
    const auto narrow = previewSizeChosen(previewOn(419.9, 500.0, true), ScanArea::IsoA3);
    EXPECT_TRUE(narrow.checkPortrait);
    EXPECT_EQ(narrow.landscapeEnabled, false);
    EXPECT_EQ(narrow.area, (AreaMm{61.4, 0.0, 297.0, 420.0}));

    const auto wide = previewSizeChosen(previewOn(420.0, 500.0, true), ScanArea::IsoA3);
    EXPECT_FALSE(wide.checkPortrait);
    EXPECT_EQ(wide.landscapeEnabled, std::nullopt);
    EXPECT_EQ(wide.area, (AreaMm{61.5, 0.0, 297.0, 420.0}));
}

TEST(PreviewSize, SmallerPapersTurnWhereTheirLongSideFits)
{
    for (const ScanArea area : {ScanArea::IsoA4, ScanArea::IsoA5, ScanArea::IsoA6}) {
        const PaperSize& size = paperSize(area);
        for (const bool landscape : {false, true}) {
            const double wide = size.longMm;
            const auto fits = previewSizeChosen(previewOn(wide, 430.0, landscape), area);
            EXPECT_FALSE(fits.checkPortrait);
            EXPECT_EQ(fits.landscapeEnabled, true);
            EXPECT_EQ(fits.area->width, landscape ? size.longMm : size.shortMm);
            EXPECT_EQ(fits.area->height, landscape ? size.shortMm : size.longMm);
            EXPECT_EQ(fits.area->y, 0.0);

            const auto tight = previewSizeChosen(previewOn(wide - 0.1, 430.0, landscape), area);
            EXPECT_FALSE(tight.checkPortrait);
            EXPECT_EQ(tight.landscapeEnabled, false);
            EXPECT_EQ(tight.area->width, size.shortMm);
            EXPECT_EQ(tight.area->height, size.longMm);
        }
    }
    EXPECT_EQ(previewSizeChosen(previewOn(300.0, 430.0, true), ScanArea::IsoA4).area,
              (AreaMm{1.5, 0.0, 297.0, 210.0}));
}

TEST(PreviewSize, MaximumIsTheWholeBedUpright)
{
    const auto choice = previewSizeChosen(previewOn(216.0, 356.0, true), ScanArea::Maximum);
    EXPECT_TRUE(choice.checkPortrait);
    EXPECT_EQ(choice.landscapeEnabled, false);
    EXPECT_EQ(choice.area, (AreaMm{0.0, 0.0, 216.0, 356.0}));
}

TEST(PreviewSize, CustomOnlyForcesPortraitAndTheOthersDoNothing)
{
    const auto custom = previewSizeChosen(previewOn(300.0, 430.0, true), ScanArea::Custom);
    EXPECT_TRUE(custom.checkPortrait);
    EXPECT_EQ(custom.landscapeEnabled, false);
    EXPECT_EQ(custom.area, std::nullopt);
    for (const std::optional<ScanArea> area :
         {std::optional(ScanArea::UsLegal), std::optional(ScanArea::UsLetter),
          std::optional(ScanArea::JisB4), std::optional(ScanArea::JisB5),
          std::optional<ScanArea>()}) {
        const auto choice = previewSizeChosen(previewOn(300.0, 430.0, true), area);
        EXPECT_FALSE(choice.checkPortrait);
        EXPECT_EQ(choice.landscapeEnabled, std::nullopt);
        EXPECT_EQ(choice.area, std::nullopt);
    }
}

TEST(PreviewSize, PaperLargerThanTheBedIsCutToIt)
{
    EXPECT_EQ(previewSizeChosen(previewOn(105.0, 148.0, false), ScanArea::IsoA4).area,
              (AreaMm{0.0, 0.0, 105.0, 148.0}));
}

TEST(PreviewOrientation, EveryClickTurnsTheAreaAndCentresIt)
{
    PreviewRange range = previewOn(300.0, 430.0, false);
    EXPECT_EQ(previewOrientationClicked(range), (AreaMm{125.0, 7.0, 50.0, 100.0}));
    range.width.value = 50.0;
    range.height.value = 100.0;
    EXPECT_EQ(previewOrientationClicked(range), (AreaMm{100.0, 7.0, 100.0, 50.0}));
}

TEST(PreviewOrientation, TopThatNoLongerFitsGoesToZero)
{
    PreviewRange range = previewOn(300.0, 107.0, false);
    EXPECT_EQ(previewOrientationClicked(range).y, 7.0) << "just fits";
    range.height.maximum = 106.9;
    EXPECT_EQ(previewOrientationClicked(range).y, 0.0);
}

TEST(PreviewOffsets, StopWhereTheAreaEndsAtTheEdge)
{
    const PreviewRange range = previewOn(300.0, 430.0, false);
    EXPECT_EQ(offsetLimit(199.9, range.width), std::nullopt);
    EXPECT_EQ(offsetLimit(200.0, range.width), 200.0);
    EXPECT_EQ(offsetLimit(250.0, range.width), 200.0);
    EXPECT_EQ(extentLimit(294.9, range.width.maximum, range.x.value), std::nullopt);
    EXPECT_EQ(extentLimit(295.0, range.width.maximum, range.x.value), 295.0);
    EXPECT_EQ(extentLimit(423.1, range.height.maximum, range.y.value), 423.0);
}
