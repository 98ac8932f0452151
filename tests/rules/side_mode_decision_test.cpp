// What paper source and mask mean for the dialog and for the scanner.
#include "rules/side_mode.h"

#include <gtest/gtest.h>

#include <string>

using namespace kestrel;

namespace {

SideMode maskOf(int bits)
{
    return SideMode(static_cast<std::uint8_t>(bits));
}

constexpr std::optional<ScanSource> kSources[] = {std::nullopt, ScanSource::Feeder,
                                                  ScanSource::Flatbed, ScanSource::Automatic};

} // namespace

TEST(ScanSourceRule, RowsOfTheDisplayTable)
{
    EXPECT_EQ(scanSourceFromRow(-1), std::nullopt);
    EXPECT_EQ(scanSourceFromRow(0), ScanSource::Feeder);
    EXPECT_EQ(scanSourceFromRow(1), ScanSource::Flatbed);
    EXPECT_EQ(scanSourceFromRow(2), ScanSource::Automatic);
    EXPECT_EQ(scanSourceFromRow(3), std::nullopt);
}

TEST(ScanSourceRule, OnlyTheFlatbedWaitsAndHasNeitherBackNorDoubleFeed)
{
    for (const auto source : {ScanSource::Feeder, ScanSource::Flatbed, ScanSource::Automatic}) {
        const bool flatbed = source == ScanSource::Flatbed;
        EXPECT_EQ(sourceControls(source).waitingJob, flatbed);
        EXPECT_EQ(sourceControls(source).paperDetection, !flatbed);
        EXPECT_EQ(sourceControls(source).clearsBack, flatbed);
        EXPECT_EQ(backControlsEnabled(source), !flatbed);
    }
    EXPECT_TRUE(backControlsEnabled(std::nullopt));
}

TEST(ScanSourceRule, ThirdCropItemComesAndGoesWithTheFlatbed)
{
    for (const auto source : kSources) {
        const bool involved = source == ScanSource::Flatbed || source == ScanSource::Automatic;
        for (int items = 0; items <= 4; ++items) {
            EXPECT_EQ(cropListChange(source, true, items),
                      involved
                          ? (items == 2 ? CropListChange::Append : CropListChange::None)
                          : (items == 3 ? CropListChange::ResetAndDrop : CropListChange::None));
            EXPECT_EQ(cropListChange(source, false, items),
                      items == 3 ? CropListChange::ResetAndDrop : CropListChange::None);
        }
    }
}

TEST(MultistreamValue, FirstTestThatHoldsWinsForEveryMask)
{
    for (int mask = 0; mask < 64; ++mask) {
        const int front = mask & 7;
        const int back = mask & 56;
        Multistream expected = Multistream::None;
        if (front == 3 || back == 24) {
            expected = Multistream::GrayBlackWhite;
        } else if (front == 5 || back == 40) {
            expected = Multistream::ColourBlackWhite;
        } else if (front == 6 || back == 48) {
            expected = Multistream::ColourGray;
        } else if (front == 7 || back == 56) {
            expected = Multistream::ColourGrayBlackWhite;
        }
        EXPECT_EQ(multistreamValue(maskOf(mask)), expected) << mask;
    }
}

TEST(MultistreamValue, IsNotSentWhileDetectionIsOn)
{
    for (int mask = 64; mask < 256; ++mask) {
        EXPECT_EQ(multistreamValue(maskOf(mask)), std::nullopt) << mask;
    }
}

TEST(MultistreamValue, ValuesAreRowsOfTheValueTable)
{
    EXPECT_EQ(static_cast<int>(Multistream::None), 0);
    EXPECT_EQ(static_cast<int>(Multistream::GrayBlackWhite), 1);
    EXPECT_EQ(static_cast<int>(Multistream::ColourGray), 2);
    EXPECT_EQ(static_cast<int>(Multistream::ColourBlackWhite), 3);
    EXPECT_EQ(static_cast<int>(Multistream::ColourGrayBlackWhite), 4);
}

TEST(ModeValue, IsTheRichestModeOfEitherSide)
{
    for (int mask = 0; mask < 64; ++mask) {
        const int front = mask & 7;
        const int back = mask & 56;
        std::string expected = "Color";
        if (front < 4 && back < 32) {
            expected = front < 2 && back < 16 ? "Lineart" : "Gray";
        }
        EXPECT_EQ(modeValue(maskOf(mask), "kestrel_adv"), expected) << mask;
        EXPECT_EQ(modeValue(maskOf(mask), "avision_adv"), expected) << mask;
    }
}

TEST(ModeValue, DetectionIsCalledDifferentlyByOneBackendAlone)
{
    for (int mask = 64; mask < 256; ++mask) {
        EXPECT_STREQ(modeValue(maskOf(mask), "avision_adv"), "Auto Color Detection");
    }
    for (const char* backend : {"kestrel_adv", "avision_ad", "avision_adv2", "avision_adv ",
                                "AVISION_ADV", "avision", ""}) {
        EXPECT_STREQ(modeValue(maskOf(192), backend), "Auto Detection") << backend;
    }
}

TEST(SourceDecisionTable, FeederByMask)
{
    for (int mask = 0; mask < 256; ++mask) {
        const bool frontDetection = (mask & 64) != 0;
        const bool backDetection = (mask & 128) != 0;
        SaneSource expected = SaneSource::AdfFront;
        if (frontDetection && backDetection) {
            expected = SaneSource::AdfDuplex;
        } else if (frontDetection) {
            expected = SaneSource::AdfFront;
        } else if (backDetection) {
            expected = SaneSource::AdfBack;
        } else if ((mask & 56) != 0) {
            expected = (mask & 7) != 0 ? SaneSource::AdfDuplex : SaneSource::AdfBack;
        }
        const auto decision = decideSource(ScanSource::Feeder, maskOf(mask));
        EXPECT_EQ(decision.source, expected) << mask;
        EXPECT_EQ(decision.duplex, expected == SaneSource::AdfDuplex) << mask;
        EXPECT_EQ(decision.automatic, std::nullopt);
    }
}

TEST(SourceDecisionTable, AutomaticByMask)
{
    for (int mask = 0; mask < 256; ++mask) {
        const bool duplex = mask >= 192 || (mask < 64 && (mask & 7) != 0 && (mask & 56) != 0);
        const auto decision = decideSource(ScanSource::Automatic, maskOf(mask));
        EXPECT_EQ(decision.source, SaneSource::Automatic);
        EXPECT_EQ(decision.automatic, duplex ? AutoSource::AdfDuplex : AutoSource::AdfFront)
            << mask;
        EXPECT_EQ(decision.duplex, duplex) << mask;
    }
}

TEST(SourceDecisionTable, FlatbedIsNeverDuplex)
{
    for (int mask = 0; mask < 256; ++mask) {
        const auto decision = decideSource(ScanSource::Flatbed, maskOf(mask));
        EXPECT_EQ(decision.source, SaneSource::Flatbed);
        EXPECT_EQ(decision.automatic, std::nullopt);
        EXPECT_FALSE(decision.duplex);
    }
}
