// Every option the dialog reads or writes is there, in the right form.
#include "backend/sim_env.h"

#include <set>

#include <gtest/gtest.h>

using kestrel::test::SimSession;

namespace {

enum class Limits
{
    None,
    Range,
    Texts
};

struct Row
{
    const char* name;
    SANE_Value_Type type;
    SANE_Unit unit;
    Limits limits;
};

// clang-format off
const std::vector<Row> rows{
    {"source",                             SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"mode",                               SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"resolution",                         SANE_TYPE_INT,    SANE_UNIT_DPI,     Limits::Range},
    {"multistream-list",                   SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"auto-scan-source-setting",           SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"tl-x",                               SANE_TYPE_FIXED,  SANE_UNIT_MM,      Limits::Range},
    {"tl-y",                               SANE_TYPE_FIXED,  SANE_UNIT_MM,      Limits::Range},
    {"br-x",                               SANE_TYPE_FIXED,  SANE_UNIT_MM,      Limits::Range},
    {"br-y",                               SANE_TYPE_FIXED,  SANE_UNIT_MM,      Limits::Range},
    {"center-alignment",                   SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"long-paper-scan",                    SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"autocropdeskew",                     SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"flatbed-multi-crop",                 SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"crop-adjust-top",                    SANE_TYPE_FIXED,  SANE_UNIT_MM,      Limits::Range},
    {"crop-adjust-bottom",                 SANE_TYPE_FIXED,  SANE_UNIT_MM,      Limits::Range},
    {"crop-adjust-left",                   SANE_TYPE_FIXED,  SANE_UNIT_MM,      Limits::Range},
    {"crop-adjust-right",                  SANE_TYPE_FIXED,  SANE_UNIT_MM,      Limits::Range},
    {"brightness",                         SANE_TYPE_INT,    SANE_UNIT_PERCENT, Limits::Range},
    {"contrast",                           SANE_TYPE_INT,    SANE_UNIT_PERCENT, Limits::Range},
    {"gamma-table",                        SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"red-gamma-table",                    SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"green-gamma-table",                  SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"blue-gamma-table",                   SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"gray_doc_type",                      SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"binarization",                       SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"binarization-value",                 SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"invert",                             SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"color-register",                     SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"color-dropout",                      SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"adv-color-dropout",                  SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"auto-color-front-noncolor-mode",     SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"auto-color-front-sensitivity",       SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"auto-color-front-mode",              SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"auto-color-back-noncolor-mode",      SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"auto-color-back-sensitivity",        SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"auto-color-back-mode",               SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"bg-color-setting",                   SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"punch-hole-removal",                 SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"book-scan-correction",               SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"background-processing",              SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"background-processing-sensitivity",  SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"background-processing-setting",      SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"despeckle",                          SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"despeckle-ratio",                    SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"despeckle-dotsnumber",               SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"prefeed",                            SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"prefeed-time",                       SANE_TYPE_FIXED,  SANE_UNIT_NONE,    Limits::Range},
    {"ultrasonic",                         SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"additional-length-detection",        SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"additional-length-detection-length", SANE_TYPE_FIXED,  SANE_UNIT_MM,      Limits::Range},
    {"stop-scanning-after-multifeed",      SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"rotate",                             SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"auto-orientation-mode",              SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"flip-side-rotation",                 SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"blank-page-removal",                 SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"blank-page-threshold",               SANE_TYPE_INT,    SANE_UNIT_PERCENT, Limits::Range},
    {"split-image",                        SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"cachemode",                          SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"cachemode-value",                    SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"cachemode-use-default",              SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"powersaving",                        SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"powersaving-time",                   SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"poweroff",                           SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::Texts},
    {"poweroff-time",                      SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::Range},
    {"eject-paper",                        SANE_TYPE_BUTTON, SANE_UNIT_NONE,    Limits::None},
    {"eject-paper-opposite-side",          SANE_TYPE_BOOL,   SANE_UNIT_NONE,    Limits::None},
    {"serial-number",                      SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::None},
    {"device-info",                        SANE_TYPE_STRING, SANE_UNIT_NONE,    Limits::None},
    {"padscan-count",                      SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::None},
    {"roller-count",                       SANE_TYPE_INT,    SANE_UNIT_NONE,    Limits::None},
};
// clang-format on

struct Dependent
{
    const char* name;
    const char* governor;
    const char* off;
    const char* on;
};

// clang-format off
const std::vector<Dependent> dependents{
    {"multistream-list",                   "mode",                        "Auto Detection",    "Gray"},
    {"auto-color-front-sensitivity",       "mode",                        "Color",             "Auto Detection"},
    {"auto-color-back-noncolor-mode",      "mode",                        "Lineart",           "Auto Detection"},
    {"auto-scan-source-setting",           "source",                      "ADF Duplex",        "Automatic"},
    {"crop-adjust-top",                    "autocropdeskew",              "0",                 "1"},
    {"crop-adjust-right",                  "autocropdeskew",              "0",                 "1"},
    {"binarization-value",                 "binarization",                "Diffusion",         "Fixed Processing"},
    {"adv-color-dropout",                  "color-dropout",               "No color dropout",  "Blue"},
    {"background-processing-sensitivity",  "background-processing",       "None",              "Smooth"},
    {"background-processing-setting",      "background-processing",       "None",              "Removal"},
    {"despeckle-ratio",                    "despeckle",                   "0",                 "1"},
    {"despeckle-dotsnumber",               "despeckle",                   "0",                 "1"},
    {"prefeed-time",                       "prefeed",                     "0",                 "1"},
    {"additional-length-detection-length", "additional-length-detection", "Disable",           "Enable"},
    {"stop-scanning-after-multifeed",      "ultrasonic",                  "Disable",           "Enable"},
    {"auto-orientation-mode",              "rotate",                      "270",               "Auto Orientation"},
    {"blank-page-threshold",               "blank-page-removal",          "0",                 "1"},
    {"powersaving-time",                   "powersaving",                 "Disable",           "Enable"},
    {"poweroff-time",                      "poweroff",                    "Disable",           "Enable"},
};
// clang-format on

SANE_Int countOf(const SimSession& session)
{
    SANE_Int count = 0;
    EXPECT_EQ(sane_control_option(session.handle(), 0, SANE_ACTION_GET_VALUE, &count, nullptr),
              SANE_STATUS_GOOD);
    return count;
}

} // namespace

TEST(SimOptions, EachHasItsTypeUnitAndLimits)
{
    const SimSession session("[sim]\n");
    for (const Row& row : rows) {
        ASSERT_NE(session.find(row.name), 0) << row.name;
        const SANE_Option_Descriptor& option = session.describe(row.name);
        EXPECT_EQ(option.type, row.type) << row.name;
        EXPECT_EQ(option.unit, row.unit) << row.name;
        const SANE_Constraint_Type limits = row.limits == Limits::Range ? SANE_CONSTRAINT_RANGE
                                            : row.limits == Limits::Texts
                                                ? SANE_CONSTRAINT_STRING_LIST
                                                : SANE_CONSTRAINT_NONE;
        EXPECT_EQ(option.constraint_type, limits) << row.name;
        EXPECT_STRNE(option.title, "") << row.name;
        EXPECT_STRNE(option.desc, "") << row.name;
    }
}

TEST(SimOptions, ThereAreNoOthers)
{
    const SimSession session("[sim]\n");
    std::set<std::string> known;
    for (const Row& row : rows) {
        known.insert(row.name);
    }
    std::set<std::string> found;
    for (SANE_Int i = 1; i < countOf(session); ++i) {
        const SANE_Option_Descriptor* const option =
            sane_get_option_descriptor(session.handle(), i);
        ASSERT_NE(option, nullptr);
        if (option->type != SANE_TYPE_GROUP) {
            EXPECT_TRUE(found.insert(option->name).second) << option->name << " twice";
        }
    }
    EXPECT_EQ(found, known);
}

TEST(SimOptions, StandInGroups)
{
    const SimSession session("[sim]\n");
    ASSERT_EQ(sane_get_option_descriptor(session.handle(), 1)->type, SANE_TYPE_GROUP);
    int groups = 0;
    for (SANE_Int i = 1; i < countOf(session); ++i) {
        const SANE_Option_Descriptor* const option =
            sane_get_option_descriptor(session.handle(), i);
        if (option->type == SANE_TYPE_GROUP) {
            ++groups;
            EXPECT_STRNE(option->title, "");
            EXPECT_EQ(option->size, 0);
        }
    }
    EXPECT_EQ(groups, 7);
}

TEST(SimOptions, OptionZeroIsTheCount)
{
    const SimSession session("[sim]\n");
    const SANE_Option_Descriptor* const count = sane_get_option_descriptor(session.handle(), 0);
    ASSERT_NE(count, nullptr);
    EXPECT_STREQ(count->name, "");
    EXPECT_EQ(count->type, SANE_TYPE_INT);
    EXPECT_EQ(count->cap, SANE_CAP_SOFT_DETECT);
    EXPECT_EQ(sane_get_option_descriptor(session.handle(), countOf(session)), nullptr);
    EXPECT_EQ(sane_get_option_descriptor(session.handle(), -1), nullptr);
}

TEST(SimOptions, DependentsFollowTheirGovernor)
{
    for (const Dependent& row : dependents) {
        SimSession session("[sim]\n");
        ASSERT_EQ(session.set(row.governor, row.on), SANE_STATUS_GOOD) << row.name;
        EXPECT_TRUE(session.isActive(row.name)) << row.name;
        SANE_Int info = 0;
        ASSERT_EQ(session.set(row.governor, row.off, &info), SANE_STATUS_GOOD) << row.name;
        EXPECT_FALSE(session.isActive(row.name)) << row.name;
        EXPECT_NE(info & SANE_INFO_RELOAD_OPTIONS, 0) << row.name;
        ASSERT_EQ(session.set(row.governor, row.on, &info), SANE_STATUS_GOOD) << row.name;
        EXPECT_TRUE(session.isActive(row.name)) << row.name;
        EXPECT_NE(info & SANE_INFO_RELOAD_OPTIONS, 0) << row.name;
    }
}

TEST(SimOptions, InactiveOnesAreNeitherReadNorSet)
{
    SimSession session("[sim]\n");
    ASSERT_FALSE(session.isActive("crop-adjust-top"));
    SANE_Word word = 7;
    EXPECT_EQ(sane_control_option(session.handle(), session.find("crop-adjust-top"),
                                  SANE_ACTION_GET_VALUE, &word, nullptr),
              SANE_STATUS_INVAL);
    EXPECT_EQ(word, 7);
    EXPECT_EQ(session.set("crop-adjust-top", "1"), SANE_STATUS_INVAL);
}

TEST(SimOptions, ReportsAndGroupsCannotBeSet)
{
    SimSession session("[sim]\n");
    for (const char* name : {"serial-number", "device-info", "padscan-count", "roller-count"}) {
        EXPECT_FALSE(SANE_OPTION_IS_SETTABLE(session.describe(name).cap)) << name;
        EXPECT_EQ(session.set(name, "1"), SANE_STATUS_INVAL) << name;
    }
    SANE_Word word = 1;
    EXPECT_EQ(sane_control_option(session.handle(), 1, SANE_ACTION_SET_VALUE, &word, nullptr),
              SANE_STATUS_INVAL);
    EXPECT_EQ(sane_control_option(session.handle(), 0, SANE_ACTION_SET_VALUE, &word, nullptr),
              SANE_STATUS_INVAL);
}

TEST(SimOptions, TheEjectButtonTakesNoValue)
{
    SimSession session("[sim]\n");
    EXPECT_EQ(session.describe("eject-paper").size, 0);
    EXPECT_EQ(session.set("eject-paper", ""), SANE_STATUS_GOOD);
    EXPECT_EQ(session.journal().back(), "set eject-paper \"\" good");
}

TEST(SimOptions, AGrayDocTypeWithAHyphenIsPossible)
{
    const SimSession session("[sim]\noption.gray_doc_type.name = gray-doc-type\n");
    EXPECT_EQ(session.find("gray_doc_type"), 0);
    EXPECT_EQ(session.text("gray-doc-type"), "Normal");
}
