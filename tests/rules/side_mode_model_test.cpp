// The multistream rule against a second model of it. The model is written out box by box, on the
// twelve boxes of a dialog, and shares nothing with the rule but the ids.
#include "rules/side_mode.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <random>
#include <utility>
#include <vector>

using namespace kestrel;

namespace {

constexpr int kBoxes = 12; ///< six on the image tab, then their six twins on the dropout tab

enum class Source
{
    Feeder,
    Flatbed,
    Automatic
};

/// Mask, boxes and the other things of a dialog that the rule touches.
struct Form
{
    int mask = 4;
    std::array<bool, kBoxes> box{};
    std::optional<int> imageButton;
    std::vector<std::pair<int, bool>> written;
    bool containerEnabled = true;
    Source source = Source::Feeder;

    /// setChecked on an image box; the twin follows.
    void set(int id, bool on)
    {
        const auto index = static_cast<std::size_t>(id);
        box[index] = on;
        box[index + 6] = on;
        written.emplace_back(id, on);
    }
    /// The user's mouse on any of the twelve.
    void toggle(int boxIndex)
    {
        const auto id = static_cast<std::size_t>(boxIndex % 6);
        box[id] = !box[id];
        box[id + 6] = box[id];
    }
    bool is(int id) const { return box[static_cast<std::size_t>(id)]; }
    int front() const { return mask & 7; }
    int back() const { return mask >> 3 & 7; }
    void setBit(int id) { mask |= 1 << id; }
    void clearBit(int id) { mask &= ~(1 << id); }

    bool operator==(const Form& other) const
    {
        return mask == other.mask && box == other.box && imageButton == other.imageButton &&
               written == other.written;
    }
};

enum Id
{
    FrontBw,
    FrontGray,
    FrontColour,
    BackBw,
    BackGray,
    BackColour
};

/// The clicked box' partner gets its state.
void copyToPartner(Form& form, int id, int partner)
{
    form.set(partner, form.is(id));
    if (form.is(id)) {
        form.setBit(partner);
    } else {
        form.clearBit(partner);
    }
}

/// The clicked side takes a mode over if it is checked on the other side.
void takeOver(Form& form, int from, int to)
{
    if (form.is(from)) {
        form.set(to, true);
        form.setBit(to);
    }
}

void equalise(Form& form, int id)
{
    switch (id) {
    case FrontBw:
        copyToPartner(form, FrontBw, BackBw);
        if (form.front() != form.back()) {
            takeOver(form, BackColour, FrontColour);
            takeOver(form, BackGray, FrontGray);
        }
        break;
    case FrontGray:
        copyToPartner(form, FrontGray, BackGray);
        if (form.front() != form.back()) {
            takeOver(form, BackColour, FrontColour);
            takeOver(form, BackBw, FrontBw);
        }
        break;
    case FrontColour:
        copyToPartner(form, FrontColour, BackColour);
        if (form.front() != form.back()) {
            takeOver(form, BackGray, FrontGray);
            takeOver(form, BackBw, FrontBw);
        }
        break;
    case BackBw:
        copyToPartner(form, BackBw, FrontBw);
        if (form.front() != form.back()) {
            takeOver(form, FrontColour, BackColour);
            takeOver(form, FrontGray, BackGray);
        }
        break;
    case BackGray:
        copyToPartner(form, BackGray, FrontGray);
        if (form.front() != form.back()) {
            takeOver(form, FrontColour, BackColour);
            takeOver(form, FrontBw, BackBw);
        }
        break;
    case BackColour:
        copyToPartner(form, BackColour, FrontColour);
        if (form.front() != form.back()) {
            takeOver(form, FrontGray, BackGray);
            takeOver(form, FrontBw, BackBw);
        }
        break;
    default:
        FAIL() << "no such box";
    }
}

/// The second model: what a click on the box with this id does, after the box has changed.
void modelClick(Form& form, int id)
{
    bool goToFallback = false;
    if (form.is(id)) {
        form.imageButton = id;
        form.setBit(id);
    } else {
        form.clearBit(id);
        if (form.mask == 0) {
            if (form.containerEnabled) {
                form.set(id, true);
                form.setBit(id);
            } else {
                goToFallback = true;
            }
        }
    }
    if (!goToFallback) {
        if (form.front() != 0 && form.back() != 0 && form.front() != form.back()) {
            equalise(form, id);
        }
        if (id <= FrontColour && form.source == Source::Automatic && form.front() == 0) {
            form.set(id, true);
            form.setBit(id);
            return;
        }
    }
    if (form.mask == 0) {
        form.set(id, true);
        form.setBit(id);
    }
}

/// The rule, driven as the dialog drives it: read, ask, write.
void ruleClick(Form& form, int id)
{
    ModeBoxes boxes{};
    for (int i = 0; i < kModeCount; ++i) {
        boxes[static_cast<std::size_t>(i)] = form.is(i);
    }
    const auto outcome =
        setMultistream({*modeFromId(id), SideMode(static_cast<std::uint8_t>(form.mask)), boxes,
                        form.containerEnabled, form.source == Source::Automatic});
    if (outcome.imageButton) {
        form.imageButton = idOf(*outcome.imageButton);
    }
    for (const BoxWrite write : outcome.boxes) {
        form.set(idOf(write.mode), write.checked);
    }
    form.mask = outcome.mask.bits();
}

Form showing(int mask, int boxes, Source source, bool enabled)
{
    Form form;
    form.mask = mask;
    for (int id = 0; id < kModeCount; ++id) {
        const auto index = static_cast<std::size_t>(id);
        form.box[index] = (boxes >> id & 1) != 0;
        form.box[index + 6] = form.box[index];
    }
    form.source = source;
    form.containerEnabled = enabled;
    return form;
}

int boxBits(const Form& form)
{
    int bits = 0;
    for (int id = 0; id < kModeCount; ++id) {
        bits |= form.is(id) ? 1 << id : 0;
    }
    return bits;
}

bool twinsEqual(const Form& form)
{
    for (int id = 0; id < kModeCount; ++id) {
        if (form.is(id) != form.is(id + 6)) {
            return false;
        }
    }
    return true;
}

bool sidesAgree(int mask)
{
    const int front = mask & 7;
    const int back = mask >> 3 & 7;
    return front == 0 || back == 0 || front == back;
}

constexpr Source kSources[] = {Source::Feeder, Source::Flatbed, Source::Automatic};

/// Calls check(before, box) for every mask, every state of the boxes, all twelve boxes, every
/// source and both states of the clicked side's container.
template <typename Check>
void forEveryClick(const std::vector<int>& boxStates, Check check)
{
    for (int mask = 0; mask < 256; ++mask) {
        for (const int boxes : boxStates) {
            for (const Source source : kSources) {
                for (const bool enabled : {true, false}) {
                    if (testing::Test::HasFatalFailure()) {
                        return;
                    }
                    for (int box = 0; box < kBoxes; ++box) {
                        check(showing(mask, boxes < 0 ? mask & 63 : boxes, source, enabled), box);
                    }
                }
            }
        }
    }
}

} // namespace

TEST(MultistreamModel, RuleAgreesForEveryMaskEveryBoxStateAndEverySource)
{
    std::vector<int> all(64);
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = static_cast<int>(i);
    }
    long clicks = 0;
    forEveryClick(all, [&](const Form& before, int box) {
        Form byRule = before;
        byRule.toggle(box);
        Form byModel = byRule;
        ruleClick(byRule, box % 6);
        modelClick(byModel, box % 6);
        ASSERT_TRUE(byRule == byModel)
            << "mask " << before.mask << " boxes " << boxBits(before) << " box " << box << ": "
            << byRule.mask << " and " << byModel.mask;
        ++clicks;
    });
    EXPECT_EQ(clicks, 256L * 64 * 12 * 3 * 2);
}

TEST(MultistreamModel, WhatHoldsAfterEveryClickOnBoxesThatShowTheMask)
{
    forEveryClick({-1}, [](const Form& before, int box) {
        Form form = before;
        form.toggle(box);
        ruleClick(form, box % 6);
        ASSERT_NE(form.mask, 0);
        ASSERT_EQ(form.mask & 192, before.mask & 192) << "detection is not this rule's";
        ASSERT_EQ(boxBits(form), form.mask & 63) << "mask " << before.mask << " box " << box;
        ASSERT_TRUE(twinsEqual(form));
        if (before.source == Source::Automatic && box % 6 < 3) {
            ASSERT_NE(form.mask & 7, 0) << "mask " << before.mask << " box " << box;
        }
        if (sidesAgree(before.mask)) {
            ASSERT_TRUE(sidesAgree(form.mask)) << "mask " << before.mask << " box " << box;
        }
    });
}

TEST(MultistreamModel, LongClickSequencesNeverEmptyTheChoiceNorLetTheSidesDiffer)
{
    std::mt19937 random(20240607);
    for (int walk = 0; walk < 50; ++walk) {
        Form form = showing(4, 4, Source::Feeder, true);
        for (int step = 0; step < 2000; ++step) {
            if (random() % 20 == 0) {
                form.source = kSources[random() % 3];
            }
            const int box = static_cast<int>(random() % kBoxes);
            const bool wanted = !form.is(box % 6);
            form.toggle(box);
            ruleClick(form, box % 6);
            ASSERT_NE(form.mask, 0);
            ASSERT_TRUE(sidesAgree(form.mask));
            ASSERT_EQ(boxBits(form), form.mask & 63);
            ASSERT_TRUE(!wanted || form.is(box % 6)) << "a box that was checked stays so";
            form.written.clear();
        }
    }
}
