#include "rules/side_mode.h"

#include <gtest/gtest.h>

#include <vector>

using namespace kestrel;

namespace {

SideMode maskOf(int bits)
{
    return SideMode(static_cast<std::uint8_t>(bits));
}

/// A click that leaves its box checked or unchecked, on a dialog whose boxes showed the mask
/// before.
MultistreamOutcome click(int mask, Mode mode, bool checked, bool automatic = false,
                         bool sideEnabled = true)
{
    ModeBoxes boxes = boxesOf(maskOf(mask));
    boxes[static_cast<std::size_t>(idOf(mode))] = checked;
    return setMultistream({mode, maskOf(mask), boxes, sideEnabled, automatic});
}

} // namespace

TEST(SideModeMask, NewDialogProducesFrontColour)
{
    EXPECT_EQ(SideMode().bits(), 4);
    EXPECT_TRUE(SideMode().has(Mode::FrontColour));
}

TEST(SideModeMask, EveryBitStandsForOneBoxOrDetection)
{
    for (int id = 0; id < kModeCount; ++id) {
        const Mode mode = *modeFromId(id);
        EXPECT_EQ(idOf(mode), id);
        EXPECT_EQ(maskOf(0).with(mode).bits(), 1 << id);
        EXPECT_EQ(maskOf(255).with(mode, false).bits(), 255 - (1 << id));
        EXPECT_EQ(sideOf(mode), id < 3 ? Side::Front : Side::Back);
        EXPECT_EQ(idOf(partnerOf(mode)), id < 3 ? id + 3 : id - 3);
        EXPECT_TRUE(boxesOf(maskOf(1 << id))[static_cast<std::size_t>(id)]);
        EXPECT_FALSE(boxesOf(maskOf(255 - (1 << id)))[static_cast<std::size_t>(id)]);
    }
    EXPECT_EQ(maskOf(0).withDetection(Side::Front, true).bits(), 64);
    EXPECT_EQ(maskOf(0).withDetection(Side::Back, true).bits(), 128);
    EXPECT_EQ(maskOf(255).withDetection(Side::Front, false).bits(), 191);
    EXPECT_EQ(maskOf(255).withDetection(Side::Back, false).bits(), 127);
}

TEST(SideModeMask, IdsOfNoBoxAreNoMode)
{
    for (const int id : {-2, -1, 6, 7, 255}) {
        EXPECT_EQ(modeFromId(id), std::nullopt) << id;
    }
}

TEST(SideModeMask, SidesAreReadOnTheSameScale)
{
    EXPECT_EQ(maskOf(192 + 5 + (3 << 3)).modes(Side::Front), 5U);
    EXPECT_EQ(maskOf(192 + 5 + (3 << 3)).modes(Side::Back), 3U);
    EXPECT_FALSE(maskOf(63).detects());
    EXPECT_TRUE(maskOf(64).detects(Side::Front));
    EXPECT_FALSE(maskOf(64).detects(Side::Back));
    EXPECT_TRUE(maskOf(128).detects(Side::Back));
}

TEST(SideModeMask, FlatbedKeepsTheFrontModesAndLosesEvenFrontDetection)
{
    for (int mask = 0; mask < 256; ++mask) {
        EXPECT_EQ(maskOf(mask).onFlatbed().bits(), mask % 8);
    }
}

TEST(SideModeMask, BackOnlyChoiceOnTheFlatbedIsEmptyAndTakesFrontColour)
{
    const SideMode cleared = maskOf(16 + 8).onFlatbed();
    ASSERT_TRUE(cleared.isEmpty());
    EXPECT_EQ(cleared.with(Mode::FrontColour).bits(), 4);
}

TEST(MultistreamRule, LastModeCannotBeRemoved)
{
    for (int id = 0; id < kModeCount; ++id) {
        const Mode mode = *modeFromId(id);
        for (const bool enabled : {true, false}) {
            const auto outcome = click(1 << id, mode, false, false, enabled);
            EXPECT_EQ(outcome.mask.bits(), 1 << id);
            EXPECT_EQ(outcome.boxes, (std::vector<BoxWrite>{{mode, true}}));
            EXPECT_EQ(outcome.imageButton, std::nullopt);
        }
    }
}

TEST(MultistreamRule, CheckedBoxSelectsItsImageButtonEvenOnADisabledSide)
{
    for (int id = 0; id < kModeCount; ++id) {
        EXPECT_EQ(click(4, *modeFromId(id), true, false, false).imageButton, modeFromId(id));
        EXPECT_EQ(click(63, *modeFromId(id), false).imageButton, std::nullopt);
    }
}

TEST(MultistreamRule, BackFollowsAFrontBoxThatIsAdded)
{
    const auto outcome = click(4 + 32, Mode::FrontGray, true);
    EXPECT_EQ(outcome.mask.bits(), 54);
    EXPECT_EQ(outcome.boxes, (std::vector<BoxWrite>{{Mode::BackGray, true}}));
}

TEST(MultistreamRule, BackFollowsAFrontBoxThatIsRemoved)
{
    const auto outcome = click(63, Mode::FrontColour, false);
    EXPECT_EQ(outcome.mask.bits(), 27);
    EXPECT_EQ(outcome.boxes, (std::vector<BoxWrite>{{Mode::BackColour, false}}));
}

TEST(MultistreamRule, FirstBackBoxBringsTheFrontAlongAndTakesOverItsModes)
{
    const auto outcome = click(4 + 1, Mode::BackGray, true);
    EXPECT_EQ(outcome.mask.bits(), 63);
    EXPECT_EQ(outcome.boxes, (std::vector<BoxWrite>{{Mode::FrontGray, true},
                                                    {Mode::BackColour, true},
                                                    {Mode::BackBlackWhite, true}}));
    EXPECT_EQ(outcome.imageButton, Mode::BackGray);
}

TEST(MultistreamRule, FirstFrontBoxTakesOverTheModesOfTheBackInTheirOrder)
{
    EXPECT_EQ(click(56 - 8, Mode::FrontBlackWhite, true).boxes,
              (std::vector<BoxWrite>{{Mode::BackBlackWhite, true},
                                     {Mode::FrontColour, true},
                                     {Mode::FrontGray, true}}));
    EXPECT_EQ(click(56 - 16, Mode::FrontGray, true).boxes,
              (std::vector<BoxWrite>{{Mode::BackGray, true},
                                     {Mode::FrontColour, true},
                                     {Mode::FrontBlackWhite, true}}));
    EXPECT_EQ(click(56 - 32, Mode::FrontColour, true).boxes,
              (std::vector<BoxWrite>{{Mode::BackColour, true},
                                     {Mode::FrontGray, true},
                                     {Mode::FrontBlackWhite, true}}));
}

TEST(MultistreamRule, EmptyingOneSideLeavesTheOtherAlone)
{
    const auto outcome = click(4 + 32, Mode::BackColour, false);
    EXPECT_EQ(outcome.mask.bits(), 4);
    EXPECT_TRUE(outcome.boxes.empty());
}

TEST(MultistreamRule, AutomaticSourceAlwaysProducesAFrontImage)
{
    const auto kept = click(4 + 32, Mode::FrontColour, false, true);
    EXPECT_EQ(kept.mask.bits(), 36);
    EXPECT_EQ(kept.boxes, (std::vector<BoxWrite>{{Mode::FrontColour, true}}));
    EXPECT_EQ(kept.imageButton, std::nullopt);
    EXPECT_EQ(click(4 + 32, Mode::FrontColour, false, false).mask.bits(), 32);

    const auto backOnly = click(32, Mode::FrontGray, false, true);
    EXPECT_EQ(backOnly.boxes, (std::vector<BoxWrite>{{Mode::FrontGray, true}}));
    EXPECT_EQ(backOnly.mask.bits(), 32 + 2);
}

TEST(MultistreamRule, AutomaticSourceLetsABackBoxEmptyTheBack)
{
    EXPECT_EQ(click(32, Mode::BackColour, false, true).mask.bits(), 32);
    EXPECT_EQ(click(4 + 32, Mode::BackColour, false, true).mask.bits(), 4);
}

TEST(MultistreamRule, SidesThatDifferAreNotMendedBeyondTheClickedMode)
{
    // Front colour, gray and black-and-white, back gray: checking gray again has nothing to take
    // over.
    EXPECT_EQ(click(7 + 16, Mode::FrontGray, true).mask.bits(), 7 + 16);
    // Removing the only mode of the back along with the front's leaves the back empty.
    EXPECT_EQ(click(6 + 16, Mode::FrontGray, false).mask.bits(), 4);
}

TEST(ColourDetection, SwitchesTabsGroupsAndPanels)
{
    for (const bool front : {false, true}) {
        for (const bool back : {false, true}) {
            const bool on = front || back;
            const auto outcome = detectionRule(front, back, maskOf(36));
            EXPECT_EQ(outcome.dropoutTab, !on);
            EXPECT_EQ(outcome.detectionTab, on);
            EXPECT_EQ(outcome.frontGroup, front);
            EXPECT_EQ(outcome.backGroup, back);
            EXPECT_EQ(outcome.sideContainers, !on);
            EXPECT_EQ(outcome.panelsOff, on);
        }
    }
}

TEST(ColourDetection, OnUnchecksEveryBoxAndOffRestoresThemFromTheMask)
{
    for (int mask = 0; mask < 256; ++mask) {
        ModeBoxes shown = boxesOf(maskOf(mask));
        for (const BoxWrite write : detectionRule(true, false, maskOf(mask)).boxes) {
            shown[static_cast<std::size_t>(idOf(write.mode))] = write.checked;
        }
        EXPECT_EQ(shown, ModeBoxes{});
        for (const BoxWrite write : detectionRule(false, false, maskOf(mask)).boxes) {
            shown[static_cast<std::size_t>(idOf(write.mode))] = write.checked;
        }
        for (int id = 0; id < kModeCount; ++id) {
            EXPECT_EQ(shown[static_cast<std::size_t>(id)], (mask >> id) % 2 == 1);
        }
    }
}

TEST(ColourDetection, BackBringsFrontOnlyWithTheAutomaticSource)
{
    EXPECT_TRUE(backDetectionNeedsFront(true, true));
    EXPECT_FALSE(backDetectionNeedsFront(true, false));
    EXPECT_FALSE(backDetectionNeedsFront(false, true));
    EXPECT_FALSE(backDetectionNeedsFront(false, false));
}
