#include "rules/scan_range.h"

#include <gtest/gtest.h>

#include <ostream>

namespace kestrel {

void PrintTo(const RangeWrite& write, std::ostream* out)
{
    *out << '{' << static_cast<int>(write.field) << ", " << write.value << '}';
}

} // namespace kestrel

using namespace kestrel;

namespace {

using F = RangeField;

constexpr double kA4Short = 210.0;
constexpr double kA4Long = 297.0;

/// An A4 area, upright, in the corner of a scanner of that size.
ScanRange a4On(double widthMax, double heightMax)
{
    return {{0.0, 0.0, widthMax},
            {0.0, 0.0, heightMax},
            {kA4Short, 0.0, widthMax},
            {kA4Long, 0.0, heightMax},
            Orientation::Portrait,
            true,
            false,
            false};
}

} // namespace

TEST(SpinMm, StoresOneDecimalWithinItsLimits)
{
    const SpinMm box{0.0, 10.0, 215.9};
    EXPECT_EQ(box.stored(100.0), 100.0);
    EXPECT_EQ(box.stored(100.04), 100.0);
    EXPECT_EQ(box.stored(100.06), 100.1);
    EXPECT_EQ(box.stored(100.25), 100.3);
    EXPECT_EQ(box.stored(100.75), 100.8);
    EXPECT_EQ(box.stored(9.9), 10.0);
    EXPECT_EQ(box.stored(-1e300), 10.0);
    EXPECT_EQ(box.stored(215.94), 215.9);
    EXPECT_EQ(box.stored(1e300), 215.9);
}

TEST(SpinMm, LimitsThatCrossGiveTheLowerOne)
{
    EXPECT_EQ((SpinMm{0.0, 5.0, 3.0}.stored(4.0)), 5.0);
}

TEST(PaperChosen, LandscapeThatDoesNotFitIsForcedUpright)
{
    ScanRange range = a4On(216.0, 300.0);
    range.orientation = Orientation::Landscape;
    range.portrait = false;
    EXPECT_EQ(paperChosen(range, ScanArea::IsoA4), (RangeWrites{{F::CheckPortrait, 1.0},
                                                                {F::PortraitFlag, 1.0},
                                                                {F::LandscapeEnabled, 0.0},
                                                                {F::Width, 210.0},
                                                                {F::Height, 297.0},
                                                                {F::Left, 3.0}}));
}

TEST(PaperChosen, LandscapeThatFitsLiesAcross)
{
    ScanRange range = a4On(300.0, 430.0);
    range.orientation = Orientation::Landscape;
    EXPECT_EQ(paperChosen(range, ScanArea::IsoA4),
              (RangeWrites{{F::Width, 297.0}, {F::Height, 210.0}, {F::Left, 1.5}}));
    range.width.maximum = 297.0;
    EXPECT_EQ(paperChosen(range, ScanArea::IsoA4),
              (RangeWrites{{F::Width, 297.0}, {F::Height, 210.0}, {F::Left, 0.0}}));
    range.width.maximum = 296.9;
    EXPECT_EQ(paperChosen(range, ScanArea::IsoA4).front(), (RangeWrite{F::CheckPortrait, 1.0}));
}

TEST(PaperChosen, EveryPaperUprightAndAcross)
{
    for (int row = 1; row <= 8; ++row) {
        const auto area = static_cast<ScanArea>(row);
        const PaperSize& size = paperSize(area);
        ScanRange range = a4On(430.0, 430.0);
        auto writes = paperChosen(range, area);
        ASSERT_EQ(writes.size(), 3U);
        EXPECT_EQ(writes[0], (RangeWrite{F::Width, size.shortMm}));
        EXPECT_EQ(writes[1], (RangeWrite{F::Height, size.longMm}));
        EXPECT_EQ(writes[2], (RangeWrite{F::Left, (430.0 - size.shortMm) * 0.5}));
        range.orientation = Orientation::Landscape;
        writes = paperChosen(range, area);
        ASSERT_EQ(writes.size(), 3U);
        EXPECT_EQ(writes[0], (RangeWrite{F::Width, size.longMm}));
        EXPECT_EQ(writes[1], (RangeWrite{F::Height, size.shortMm}));
        EXPECT_EQ(writes[2], (RangeWrite{F::Left, (430.0 - size.longMm) * 0.5}));
    }
}

TEST(PaperChosen, UprightPaperWiderThanTheScannerIsCentredAsTheBoxHoldsIt)
{
    const auto writes = paperChosen(a4On(105.0, 148.0), ScanArea::IsoA4);
    EXPECT_EQ(writes, (RangeWrites{{F::Width, 210.0}, {F::Height, 297.0}, {F::Left, 0.0}}));
}

TEST(PaperChosen, WithoutAnOrientationOnlyCentres)
{
    ScanRange range = a4On(300.0, 430.0);
    range.orientation = Orientation::None;
    EXPECT_EQ(paperChosen(range, ScanArea::IsoA5), (RangeWrites{{F::Left, 45.0}}));
}

TEST(PaperChosen, CustomAndUnknownOnlyCentreWhateverTheAlignment)
{
    for (const bool aligned : {false, true}) {
        ScanRange range = a4On(300.0, 430.0);
        range.centreAlignment = aligned;
        EXPECT_EQ(paperChosen(range, ScanArea::Custom), (RangeWrites{{F::Left, 45.0}}));
        EXPECT_EQ(paperChosen(range, std::nullopt), (RangeWrites{{F::Left, 45.0}}));
    }
}

TEST(PaperChosen, MaximumFillsTheBedUprightWithoutCentringOrTheFlag)
{
    EXPECT_EQ(paperChosen(a4On(216.0, 356.0), ScanArea::Maximum),
              (RangeWrites{{F::CheckPortrait, 1.0},
                           {F::LandscapeEnabled, 0.0},
                           {F::Left, 0.0},
                           {F::Top, 0.0},
                           {F::Width, 216.0},
                           {F::Height, 356.0}}));
}

TEST(OrientationClicked, TheSelectedOneChangesNothing)
{
    ScanRange range = a4On(300.0, 430.0);
    EXPECT_TRUE(orientationClicked(range, 1).empty());
    range.portrait = false;
    EXPECT_TRUE(orientationClicked(range, 0).empty());
}

TEST(OrientationClicked, TurnsTheAreaAndCentresIt)
{
    EXPECT_EQ(orientationClicked(a4On(300.0, 430.0), 0),
              (RangeWrites{
                  {F::PortraitFlag, 0.0}, {F::Width, 297.0}, {F::Height, 210.0}, {F::Left, 1.5}}));
}

TEST(OrientationClicked, CentresTheWidthThatTheScannerTakes)
{
    const auto writes = orientationClicked(a4On(216.0, 300.0), 0);
    EXPECT_EQ(writes[1], (RangeWrite{F::Width, 297.0}));
    EXPECT_EQ(writes[3], (RangeWrite{F::Left, 0.0}));
}

TEST(OrientationClicked, TopThatNoLongerFitsGoesToZero)
{
    ScanRange range = a4On(300.0, 300.0);
    range.portrait = false;
    range.width.value = 297.0;
    range.height.value = 210.0;
    range.top.value = 3.0;
    EXPECT_EQ(orientationClicked(range, 1).size(), 4U) << "just fits";
    range.top.value = 3.1;
    const auto writes = orientationClicked(range, 1);
    ASSERT_EQ(writes.size(), 5U);
    EXPECT_EQ(writes.back(), (RangeWrite{F::Top, 0.0}));
}

TEST(CentreAlignment, CentresBothWaysAndHoldsTheLeftOffsetWhileOn)
{
    EXPECT_EQ(centreAlignmentToggled(a4On(300.0, 430.0), true),
              (RangeWrites{{F::Left, 45.0}, {F::LeftEnabled, 0.0}}));
    EXPECT_EQ(centreAlignmentToggled(a4On(300.0, 430.0), false),
              (RangeWrites{{F::Left, 45.0}, {F::LeftEnabled, 1.0}}));
}

TEST(OffsetEdited, LeftStopsWhereTheWidthEndsAtTheEdge)
{
    const ScanRange range = a4On(300.0, 430.0);
    EXPECT_TRUE(leftEdited(range, 89.9).empty());
    EXPECT_EQ(leftEdited(range, 90.0), (RangeWrites{{F::Left, 90.0}}));
    EXPECT_EQ(leftEdited(range, 250.0), (RangeWrites{{F::Left, 90.0}}));
}

TEST(OffsetEdited, TopStopsLikewiseAndBoundsTheLengthDetectionByTheTypedValue)
{
    const ScanRange range = a4On(300.0, 400.0);
    EXPECT_EQ(topEdited(range, 102.5), (RangeWrites{{F::LengthDetectionMaximum, 0.5}}));
    EXPECT_EQ(topEdited(range, 103.0),
              (RangeWrites{{F::Top, 103.0}, {F::LengthDetectionMaximum, 0.0}}));
    EXPECT_EQ(topEdited(range, 110.0),
              (RangeWrites{{F::Top, 103.0}, {F::LengthDetectionMaximum, -7.0}}));
}

TEST(LengthDetection, LowerLimitIsZeroUnlessTheUpperOneIsBelow)
{
    EXPECT_EQ(lengthDetectionMinimum(12.5), 0.0);
    EXPECT_EQ(lengthDetectionMinimum(0.0), 0.0);
    EXPECT_EQ(lengthDetectionMinimum(-7.0), -7.0);
}

TEST(WidthEdited, StopsAtTheEdgeAndKeepsThePaperSize)
{
    ScanRange range = a4On(300.0, 430.0);
    range.left.value = 50.0;
    EXPECT_TRUE(widthEdited(range, 249.9, false).empty());
    EXPECT_EQ(widthEdited(range, 250.0, false), (RangeWrites{{F::Width, 250.0}}));
    EXPECT_EQ(widthEdited(range, 299.0, false), (RangeWrites{{F::Width, 250.0}}));
}

TEST(WidthEdited, UnderCentreAlignmentBecomesCustomAndIsCentred)
{
    ScanRange range = a4On(300.0, 430.0);
    range.centreAlignment = true;
    range.width.value = 299.0;
    EXPECT_EQ(widthEdited(range, 299.0, false),
              (RangeWrites{{F::SelectCustom, 1.0}, {F::Left, 0.5}}));
    range.customSize = true;
    EXPECT_EQ(widthEdited(range, 299.0, false), (RangeWrites{{F::Left, 0.5}}));
}

TEST(WidthEdited, IsIgnoredWhileTheGuardIsSet)
{
    ScanRange range = a4On(300.0, 430.0);
    range.left.value = 50.0;
    EXPECT_TRUE(widthEdited(range, 299.0, true).empty());
    range.centreAlignment = true;
    EXPECT_TRUE(widthEdited(range, 299.0, true).empty());
}

TEST(HeightEdited, AlwaysBecomesCustomAndStopsAtTheEdge)
{
    ScanRange range = a4On(300.0, 400.0);
    range.top.value = 60.0;
    EXPECT_EQ(heightEdited(range, 299.0, false), (RangeWrites{{F::LengthDetectionMaximum, 41.0},
                                                              {F::LandscapeEnabled, 1.0},
                                                              {F::SelectCustom, 1.0}}));
    EXPECT_EQ(heightEdited(range, 340.0, false), (RangeWrites{{F::LengthDetectionMaximum, 0.0},
                                                              {F::UncheckLandscape, 1.0},
                                                              {F::LandscapeEnabled, 0.0},
                                                              {F::Height, 340.0},
                                                              {F::SelectCustom, 1.0}}));
    EXPECT_EQ(heightEdited(range, 350.0, false), (RangeWrites{{F::LengthDetectionMaximum, -10.0},
                                                              {F::UncheckLandscape, 1.0},
                                                              {F::LandscapeEnabled, 0.0},
                                                              {F::Height, 340.0},
                                                              {F::SelectCustom, 1.0}}));
    range.customSize = true;
    EXPECT_EQ(heightEdited(range, 299.0, false).size(), 2U);
}

TEST(HeightEdited, LandscapeIsOfferedWhileTheHeightFitsAcross)
{
    const ScanRange range = a4On(300.0, 430.0);
    EXPECT_EQ(heightEdited(range, 300.0, true)[1], (RangeWrite{F::LandscapeEnabled, 1.0}));
    EXPECT_EQ(heightEdited(range, 300.1, true)[1], (RangeWrite{F::UncheckLandscape, 1.0}));
    EXPECT_EQ(heightEdited(range, 300.1, true)[2], (RangeWrite{F::LandscapeEnabled, 0.0}));
}

TEST(HeightEdited, UnderTheGuardOnlyTheLimitsFollow)
{
    EXPECT_EQ(heightEdited(a4On(300.0, 400.0), 400.0, true),
              (RangeWrites{{F::LengthDetectionMaximum, 0.0},
                           {F::UncheckLandscape, 1.0},
                           {F::LandscapeEnabled, 0.0}}));
}
