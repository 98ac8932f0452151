// Options that become a check state or an item of a combo box.
#include "discovery_fixture.h"

#include <QAbstractButton>
#include <QComboBox>

#include <gtest/gtest.h>

#include <cctype>

using namespace kestrel::test;

namespace {

/// An option with a word that becomes a check state.
struct CheckRow
{
    const char* option;
    const char* control;
};

class DiscoveryChecks : public DialogTest, public testing::WithParamInterface<CheckRow>
{
};

struct SwitchRow
{
    const char* option;
    const char* control;
};

class DiscoverySwitches : public DialogTest, public testing::WithParamInterface<SwitchRow>
{
};

struct ChoiceRow
{
    const char* option;
    const char* control;
    Strings entries;
};

class DiscoveryChoices : public DialogTest, public testing::WithParamInterface<ChoiceRow>
{
};

} // namespace

TEST_P(DiscoveryChecks, NonZeroChecksAndZeroUnchecks)
{
    for (const SANE_Word word : {1, 0, -1, 0, 17}) {
        FakeScanner scanner = scannerWith(Option::boolean(GetParam().option, false).word(word));
        bind(scanner, ("Scanner" + std::to_string(word)).c_str());
        EXPECT_EQ(checked(GetParam().control), word != 0) << word;
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, DiscoveryChecks,
                         testing::Values(CheckRow{"adv-color-dropout", "adv_color_dropout"},
                                         CheckRow{"prefeed", "prefeed"},
                                         CheckRow{"blank-page-removal", "remove_blankpage"},
                                         CheckRow{"punch-hole-removal", "punch_hole_removal"},
                                         CheckRow{"cachemode-use-default",
                                                  "cachemode_use_default"}),
                         rowName<CheckRow>);

TEST_P(DiscoverySwitches, EnableChecksAndAnythingElseUnchecks)
{
    int round = 0;
    for (const auto& [text, on] :
         {std::pair("Enable", true), std::pair("Disable", false), std::pair("Enable", true),
          std::pair("enable", false), std::pair("Enable", true), std::pair("", false),
          std::pair("Enable", true), std::pair("Enabled", false)}) {
        FakeScanner scanner = scannerWith(Option::text(GetParam().option, text));
        bind(scanner, ("Scanner" + std::to_string(round++)).c_str());
        EXPECT_EQ(checked(GetParam().control), on) << text;
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, DiscoverySwitches,
                         testing::Values(SwitchRow{"ultrasonic", "ultrasonic"},
                                         SwitchRow{"powersaving", "powersaving"},
                                         SwitchRow{"poweroff", "poweroff"}),
                         rowName<SwitchRow>);

TEST_P(DiscoveryChoices, TheIndexIsThatOfTheTable)
{
    const Strings& entries = GetParam().entries;
    for (std::size_t i = entries.size(); i-- > 0;) {
        FakeScanner scanner = scannerWith(Option::choice(GetParam().option, entries, entries[i]));
        bind(scanner, ("Scanner" + std::to_string(i)).c_str());
        EXPECT_EQ(combo(GetParam().control).currentIndex(), static_cast<int>(i)) << entries[i];
    }
}

TEST_P(DiscoveryChoices, LetterCaseDoesNotMatter)
{
    std::string value = GetParam().entries.back();
    for (char& letter : value) {
        letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    }
    FakeScanner scanner = scannerWith(Option::text(GetParam().option, value));
    bind(scanner);
    EXPECT_EQ(combo(GetParam().control).currentIndex(),
              static_cast<int>(GetParam().entries.size()) - 1);
}

TEST_P(DiscoveryChoices, AnUnknownValueLeavesTheCombo)
{
    combo(GetParam().control).setCurrentIndex(1);
    FakeScanner scanner = scannerWith(Option::text(GetParam().option, "Something else"));
    bind(scanner);
    EXPECT_EQ(combo(GetParam().control).currentIndex(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DiscoveryChoices,
    testing::Values(
        ChoiceRow{"gray_doc_type", "gray_doc_type", {"Document", "Photo", "Normal"}},
        ChoiceRow{"gray-doc-type", "gray_doc_type", {"Document", "Photo", "Normal"}},
        ChoiceRow{
            "binarization", "binarization", {"Dynamic Threshold", "Fixed Processing", "Diffusion"}},
        ChoiceRow{"color-dropout", "color_dropout", {"No color dropout", "Red", "Green", "Blue"}},
        ChoiceRow{"rotate", "rotate", {"None", "90", "180", "270", "Auto Orientation"}},
        ChoiceRow{
            "auto-orientation-mode", "auto_orientation_mode", {"Quick", "Full text", "Complexity"}},
        ChoiceRow{"cachemode", "cachemode", {"None", "Page Number", "Memory Size"}}),
    [](const testing::TestParamInfo<ChoiceRow>& info) {
        return std::string(info.param.option) == "gray_doc_type" ? std::string("underscored_type")
                                                                 : rowName<ChoiceRow>(info);
    });
