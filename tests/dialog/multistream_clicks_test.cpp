// The side choices under a user's clicks: every mask under every box, and long random sequences,
// held against a second account of the rules after each step.
#include "rules_sides.h"
#include "rules_user.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QTest>

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace kestrel::test;

namespace {

const QStringList kSourceTexts{kFeeder, kFlatbed, kAutomatic};
const Strings kSourceWords{"feeder", "flatbed", "automatic"};

int front(int mask)
{
    return mask & 7;
}
int back(int mask)
{
    return mask >> 3 & 7;
}

class Multistream : public SidesTest
{
protected:
    Multistream() : scanner(fullScanner())
    {
        bind(scanner);
        show();
    }
    void TearDown() override { destroy(); } // before the scanner

    void chooseSource(int row) { choose(combo("source"), kSourceTexts.at(row)); }

    /// Clicks a mode box of either tab with the mouse, whether it reacts or not.
    void clickAnyway(QAbstractButton& box)
    {
        if (box.isEnabled()) {
            click(box);
            return;
        }
        const SidesState before = state();
        QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(5, box.height() / 2));
        EXPECT_EQ(state(), before) << "a disabled box reacted";
    }

    /// What holds whatever was clicked.
    void checkInvariants(const std::string& what)
    {
        const SidesState s = state();
        EXPECT_NE(s.mask, 0) << what;
        EXPECT_EQ(s.boxes, s.twins) << what;
        EXPECT_EQ(s.frontDetection, s.frontDetectionTwin) << what;
        EXPECT_EQ(s.backDetection, s.backDetectionTwin) << what;
        const bool detecting = s.frontDetection || s.backDetection;
        if (!detecting) {
            EXPECT_EQ(s.mask & 0xC0, 0) << what;
            for (std::size_t i = 0; i < 6; ++i) {
                EXPECT_EQ(s.boxes.at(i), (s.mask >> i & 1) != 0) << what << ' ' << kBoxes.at(i);
            }
        }
        if (front(s.mask) != 0 && back(s.mask) != 0) {
            EXPECT_EQ(front(s.mask), back(s.mask)) << what;
        }
        if (combo("source").currentText() == kFlatbed) {
            EXPECT_EQ(s.mask & ~(7 | 64), 0) << what;
            EXPECT_FALSE(s.backDetection) << what;
        }
        if (combo("source").currentText() == kAutomatic && s.backDetection) {
            EXPECT_TRUE(s.frontDetection) << what;
        }
        EXPECT_EQ(button("front_gray").isEnabled(), !detecting) << what;
        EXPECT_EQ(panelButtons().size(), 1U) << what;
    }

    FakeScanner scanner;
};

/// Random clicks on everything that reaches the side choices.
class Clicks : public Multistream, public testing::WithParamInterface<unsigned>
{
protected:
    /// One step; @p mouse with the mouse on visible widgets, otherwise as a shortcut would.
    void step(std::mt19937& random, bool mouse)
    {
        const auto pick = [&random](int n) {
            return static_cast<int>(random() % static_cast<unsigned>(n));
        };
        const auto clickIt = [&](QAbstractButton& target) {
            if (mouse) {
                clickAnyway(target);
            } else {
                target.click();
            }
        };
        const int kind = pick(100);
        if (kind < 72) {
            const int id = pick(6);
            const bool twin = pick(2) == 1;
            auto& box = button((twin ? kTwins : kBoxes).at(static_cast<std::size_t>(id)));
            // The colour boxes of the dropout tab are for show.
            const bool reacts =
                (id < 3 ? model.frontEnabled() : model.backEnabled()) && (!twin || id % 3 != 2);
            what = "click " + box.objectName().toStdString();
            EXPECT_EQ(box.isEnabled(), reacts) << what;
            clickIt(box);
            if (reacts) {
                model.click(id);
                if (id < 3 && model.source == "automatic") {
                    EXPECT_NE(front(dialog().mask()), 0) << what;
                }
            }
        } else if (kind < 92) {
            const bool onBack = pick(2) == 1;
            const char* const names[2][2] = {
                {"color_detection_image_front", "color_detection_checkbox"},
                {"color_detection_image_back", "color_detection_checkbox_2"}};
            auto& target = button(names[onBack ? 1 : 0][pick(2)]);
            const bool reacts = !onBack || model.source != "flatbed";
            what = "click " + target.objectName().toStdString();
            EXPECT_EQ(target.isEnabled(), reacts) << what;
            clickIt(target);
            if (reacts && onBack) {
                model.detectBack(!model.backDetection);
            } else if (reacts) {
                model.detectFront(!model.frontDetection);
            }
        } else {
            const int row = pick(3);
            what = "source " + kSourceWords.at(static_cast<std::size_t>(row));
            if (mouse) {
                chooseSource(row);
            } else {
                combo("source").setCurrentIndex(row);
            }
            model.choose(kSourceWords.at(static_cast<std::size_t>(row)));
        }
    }

    void run(int steps, bool mouse)
    {
        std::mt19937 random(GetParam());
        for (int i = 0; i < steps && !HasFailure(); ++i) {
            step(random, mouse);
            what = "step " + std::to_string(i) + ", " + what;
            EXPECT_EQ(state(), model.state()) << what;
            checkInvariants(what);
        }
    }

    SidesModel model;
    std::string what;
};

} // namespace

TEST_F(Multistream, EveryMaskUnderEveryBoxOnEverySource)
{
    for (int row = 0; row < 3; ++row) {
        combo("source").setCurrentIndex(row);
        for (int mask = 1; mask < 64; ++mask) {
            for (int box = 0; box < 12; ++box) {
                load(mask);
                SidesModel model;
                model.restart(kSourceWords.at(static_cast<std::size_t>(row)), mask);
                const int id = box % 6;
                const bool twin = box >= 6;
                button((twin ? kTwins : kBoxes).at(static_cast<std::size_t>(id))).click();
                if ((id < 3 || row != 1) && (!twin || id % 3 != 2)) {
                    model.click(id);
                }
                ASSERT_EQ(state(), model.state())
                    << "source " << row << " mask " << mask << " box " << box;
                ASSERT_NE(dialog().mask(), 0);
            }
        }
    }
}

TEST_F(Multistream, EveryMaskUnderEveryCallOfTheRule)
{
    // A host's own code may emit the group's signal for a disabled box, too.
    for (int row = 0; row < 3; ++row) {
        combo("source").setCurrentIndex(row);
        for (const bool detecting : {false, true}) {
            button("color_detection_image_front").setChecked(detecting);
            for (int mask = 0; mask < 64; ++mask) {
                for (int id = 0; id < 6; ++id) {
                    load(mask);
                    SidesModel model;
                    model.restart(kSourceWords.at(static_cast<std::size_t>(row)), mask);
                    model.frontDetection = detecting;
                    dialog().setMultistream(id);
                    model.runRule(id);
                    ASSERT_EQ(state(), model.state())
                        << "source " << row << " mask " << mask << " id " << id << ' ' << detecting;
                }
            }
        }
        button("color_detection_image_front").setChecked(false);
    }
}

TEST_F(Multistream, AnIdThatNoBoxHasChangesNothing)
{
    const SidesState before = state();
    for (const int id : {-2, -1, 6, 7, 1000}) {
        dialog().setMultistream(id);
        EXPECT_EQ(state(), before) << id;
    }
}

TEST_P(Clicks, WithTheMouseAgreeWithTheSecondAccount)
{
    run(250, true);
}

TEST_P(Clicks, WithoutTheMouseAgreeWithTheSecondAccount)
{
    run(4000, false);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Clicks, testing::Values(1U, 2U, 3U));
