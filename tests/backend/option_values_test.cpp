// How values are checked, rounded and answered for.
#include "backend/sim_env.h"

#include <cstring>

#include <gtest/gtest.h>

using kestrel::test::SimSession;

namespace {

double maxMm(const SimSession& session, const char* option)
{
    return SANE_UNFIX(session.describe(option).constraint.range->max);
}

} // namespace

TEST(SimValues, AValueBeyondARangeBecomesItsEnd)
{
    SimSession session("[sim]\n");
    for (const auto& [sent, kept] :
         {std::pair{"1000", 100}, {"-101", -100}, {"-2000000000", -100}}) {
        SANE_Int info = 0;
        EXPECT_EQ(session.set("brightness", sent, &info), SANE_STATUS_GOOD);
        EXPECT_EQ(session.word("brightness"), kept);
        EXPECT_EQ(info, SANE_INFO_INEXACT);
    }
}

TEST(SimValues, AnExactValueSaysNothing)
{
    SimSession session("[sim]\n");
    SANE_Int info = -1;
    EXPECT_EQ(session.set("brightness", "-100", &info), SANE_STATUS_GOOD);
    EXPECT_EQ(info, 0);
    EXPECT_EQ(session.word("brightness"), -100);
}

TEST(SimValues, TheCallerLearnsTheRoundedWord)
{
    SimSession session("[sim]\n");
    SANE_Word word = 5000;
    EXPECT_EQ(session.control("resolution", &word), SANE_STATUS_GOOD);
    EXPECT_EQ(word, 600);
}

TEST(SimValues, AStepIsRoundedToWithTheHalfUpwards)
{
    SimSession session("[sim]\noption.resolution.constraint = range 100 605 10\n");
    struct Row
    {
        const char* sent;
        SANE_Word kept;
        bool exact;
    };
    for (const Row& row : {Row{"100", 100, true},
                           {"104", 100, false},
                           {"105", 110, false},
                           {"300", 300, true},
                           {"605", 605, true},
                           {"604", 600, false}}) {
        SANE_Int info = 0;
        ASSERT_EQ(session.set("resolution", row.sent, &info), SANE_STATUS_GOOD);
        EXPECT_EQ(session.word("resolution"), row.kept) << row.sent;
        EXPECT_EQ((info & SANE_INFO_INEXACT) == 0, row.exact) << row.sent;
    }
}

TEST(SimValues, AListGivesItsNearestWord)
{
    SimSession session("[sim]\nmodel = Q110F\n");
    ASSERT_EQ(session.describe("resolution").constraint_type, SANE_CONSTRAINT_WORD_LIST);
    for (const auto& [sent, kept] : {std::pair{"1", 75},
                                     {"90", 100},
                                     {"300", 300},
                                     {"9999", 1200},
                                     {"499", 400},
                                     {"501", 600}}) {
        ASSERT_EQ(session.set("resolution", sent), SANE_STATUS_GOOD);
        EXPECT_EQ(session.word("resolution"), kept) << sent;
    }
}

TEST(SimValues, TextsMatchWithoutCaseAndByTheirBeginning)
{
    SimSession session("[sim]\n");
    EXPECT_EQ(session.set("source", "adf duplex"), SANE_STATUS_GOOD);
    EXPECT_EQ(session.text("source"), "ADF Duplex");
    EXPECT_EQ(session.set("source", "fla"), SANE_STATUS_GOOD);
    EXPECT_EQ(session.text("source"), "Flatbed");
    EXPECT_EQ(session.set("source", "ADF"), SANE_STATUS_INVAL) << "three begin like this";
    EXPECT_EQ(session.set("source", "Tray"), SANE_STATUS_INVAL);
    EXPECT_EQ(session.text("source"), "Flatbed");
}

TEST(SimValues, TheCallersTextIsCorrected)
{
    SimSession session("[sim]\n");
    char text[64] = "lineart";
    EXPECT_EQ(session.control("mode", text), SANE_STATUS_GOOD);
    EXPECT_STREQ(text, "Lineart");
}

TEST(SimValues, SixtyFourBytesWithoutAnEndAreTakenSafely)
{
    SimSession session("[sim]\n");
    char text[64];
    std::memset(text, 'x', sizeof text);
    EXPECT_EQ(session.control("mode", text), SANE_STATUS_INVAL);
    EXPECT_EQ(session.text("mode"), "Color");
}

TEST(SimValues, ABooleanIsZeroOrOne)
{
    SimSession session("[sim]\n");
    EXPECT_EQ(session.set("invert", "1"), SANE_STATUS_GOOD);
    EXPECT_EQ(session.set("invert", "2"), SANE_STATUS_INVAL);
    EXPECT_EQ(session.word("invert"), 1);
}

TEST(SimValues, AGammaTableIs256Words)
{
    SimSession session("[sim]\n");
    ASSERT_EQ(session.describe("gamma-table").size, 1024);
    std::array<SANE_Word, 256> table{};
    for (int i = 0; i < 256; ++i) {
        table[static_cast<std::size_t>(i)] = 255 - i;
    }
    table[7] = 4711;
    SANE_Int info = 0;
    EXPECT_EQ(session.control("gamma-table", table.data(), &info), SANE_STATUS_GOOD);
    EXPECT_EQ(info & SANE_INFO_INEXACT, SANE_INFO_INEXACT);
    std::array<SANE_Word, 256> kept{};
    sane_control_option(session.handle(), session.find("gamma-table"), SANE_ACTION_GET_VALUE,
                        kept.data(), nullptr);
    EXPECT_EQ(kept[0], 255);
    EXPECT_EQ(kept[7], 255) << "clamped";
    EXPECT_EQ(kept[255], 0);
}

TEST(SimValues, WhatShapesTheImageAsksForNewParameters)
{
    SimSession session("[sim]\n");
    for (const auto& [name, value] : {std::pair{"resolution", "100"},
                                      {"br-x", "100"},
                                      {"mode", "Gray"},
                                      {"source", "Flatbed"},
                                      {"rotate", "90"},
                                      {"split-image", "Vertical"},
                                      {"autocropdeskew", "1"}}) {
        SANE_Int info = 0;
        ASSERT_EQ(session.set(name, value, &info), SANE_STATUS_GOOD) << name;
        EXPECT_NE(info & SANE_INFO_RELOAD_PARAMS, 0) << name;
    }
    SANE_Int info = 0;
    session.set("contrast", "5", &info);
    EXPECT_EQ(info & SANE_INFO_RELOAD_PARAMS, 0);
}

TEST(SimValues, TheFlatbedIsShorterThanTheFeeder)
{
    SimSession session("[sim]\n");
    EXPECT_DOUBLE_EQ(maxMm(session, "br-y"), 356.0);
    EXPECT_DOUBLE_EQ(session.millimetres("br-y"), 356.0);
    SANE_Int info = 0;
    ASSERT_EQ(session.set("source", "Flatbed", &info), SANE_STATUS_GOOD);
    EXPECT_EQ(info & SANE_INFO_RELOAD_OPTIONS, SANE_INFO_RELOAD_OPTIONS);
    EXPECT_DOUBLE_EQ(maxMm(session, "br-y"), 297.0);
    EXPECT_DOUBLE_EQ(session.millimetres("br-y"), 297.0) << "the value moves into the range";
    ASSERT_EQ(session.set("source", "ADF Front"), SANE_STATUS_GOOD);
    EXPECT_DOUBLE_EQ(maxMm(session, "br-y"), 356.0);
}

TEST(SimValues, LongPaperLengthensTheArea)
{
    SimSession session("[sim]\nmodel = Q150L\n");
    SANE_Int info = 0;
    ASSERT_EQ(session.set("long-paper-scan", "1", &info), SANE_STATUS_GOOD);
    EXPECT_EQ(info & SANE_INFO_RELOAD_OPTIONS, SANE_INFO_RELOAD_OPTIONS);
    EXPECT_DOUBLE_EQ(maxMm(session, "br-y"), 3048.0);
    ASSERT_EQ(session.set("br-y", "2000"), SANE_STATUS_GOOD);
    ASSERT_EQ(session.set("long-paper-scan", "0"), SANE_STATUS_GOOD);
    EXPECT_DOUBLE_EQ(maxMm(session, "br-y"), 356.0);
    EXPECT_DOUBLE_EQ(session.millimetres("br-y"), 356.0);
}

TEST(SimValues, TheThresholdsRangeFollowsTheBinarization)
{
    SimSession session("[sim]\n");
    EXPECT_EQ(session.describe("binarization-value").constraint.range->max, 30);
    session.set("binarization", "Fixed Processing");
    EXPECT_EQ(session.describe("binarization-value").constraint.range->max, 255);
    session.set("binarization-value", "200");
    session.set("binarization", "Dynamic Threshold");
    EXPECT_EQ(session.word("binarization-value"), 30);
}

TEST(SimValues, TheBackgroundSettingsFollowTheProcessing)
{
    SimSession session("[sim]\n");
    session.set("background-processing", "Smooth");
    EXPECT_EQ(session.text("background-processing-setting"), "Auto");
    EXPECT_EQ(session.set("background-processing-setting", "Moire"), SANE_STATUS_GOOD);
    session.set("background-processing", "Removal");
    EXPECT_EQ(session.text("background-processing-setting"), "White");
    EXPECT_EQ(session.set("background-processing-setting", "Moire"), SANE_STATUS_INVAL);
}

TEST(SimValues, EverySetIsInTheJournal)
{
    SimSession session("[sim]\n");
    session.set("source", "ADF Duplex");
    session.set("br-x", "215.5");
    session.set("mode", "Sepia");
    session.set("contrast", "500");
    std::vector<std::string> sets = session.journal();
    sets.erase(std::remove_if(sets.begin(), sets.end(),
                              [](const std::string& line) { return line.rfind("set ", 0) != 0; }),
               sets.end());
    EXPECT_EQ(sets, (std::vector<std::string>{"set source \"ADF Duplex\" good",
                                              "set br-x \"215.5\" good", "set mode \"Sepia\" inval",
                                              "set contrast \"500\" good kept \"100\""}));
}
