#include "scanner/sane_device.h"
#include "support/fake_scanner.h"

#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <cstring>

using kestrel::GammaTable;
using kestrel::setOptionByName;
using kestrel::test::Call;
using kestrel::test::CallKind;
using kestrel::test::FakeOption;
using kestrel::test::FakeScanner;

namespace {

using Option = FakeOption;

GammaTable countingTable()
{
    GammaTable table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<int>(255 - i);
    }
    return table;
}

/// Sets one option of a scanner that has no other.
SANE_Word sentWord(const Option& option, const char* value)
{
    FakeScanner scanner;
    scanner.add(option);
    EXPECT_EQ(setOptionByName(scanner.handle(), option.name().c_str(), value, {}),
              SANE_STATUS_GOOD);
    const std::vector<Call> sets = scanner.journal().of(CallKind::Set);
    SANE_Word word = 0;
    EXPECT_EQ(sets.size(), 1U);
    if (sets.size() == 1 && sets[0].raw.size() >= sizeof word) {
        std::memcpy(&word, sets[0].raw.data(), sizeof word);
    }
    return word;
}

} // namespace

TEST(SetOptionByName, WithoutADeviceAllIsWell)
{
    EXPECT_EQ(setOptionByName(nullptr, "x", "1", {}), SANE_STATUS_GOOD);
}

TEST(SetOptionByName, FixedNumbersAreCutTowardZero)
{
    EXPECT_EQ(sentWord(Option::fixed("o", 0), "215.9"), 14149222);
    EXPECT_EQ(sentWord(Option::fixed("o", 0), "-215.9"), -14149222);
    EXPECT_EQ(sentWord(Option::fixed("o", 0), "0.00001"), 0);
    EXPECT_EQ(sentWord(Option::fixed("o", 0), "-0.00001"), 0);
}

TEST(SetOptionByName, FixedNumbersBeyondAWordAreHeldWithinIt)
{
    EXPECT_EQ(sentWord(Option::fixed("o", 0), "1e30"), INT_MAX);
    EXPECT_EQ(sentWord(Option::fixed("o", 0), "-1e30"), INT_MIN);
    EXPECT_EQ(sentWord(Option::fixed("o", 0), "inf"), INT_MAX);
    EXPECT_EQ(sentWord(Option::fixed("o", 0), "nan"), 0);
    EXPECT_EQ(sentWord(Option::fixed("o", 0), "32767.5"), 2147450880);
}

TEST(SetOptionByName, AWordForALargerOptionIsFollowedByZeroes)
{
    FakeScanner scanner;
    scanner.add(Option::array("o", {1, 2, 3, 4}));
    EXPECT_EQ(setOptionByName(scanner.handle(), "o", "7", {}), SANE_STATUS_GOOD);
    const Call call = scanner.journal().of(CallKind::Set).at(0);
    ASSERT_EQ(call.raw.size(), 16U);
    const std::vector<unsigned char> expected{7, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(call.raw, expected);
}

TEST(SetOptionByName, TheGammaTableIsSentWhole)
{
    const GammaTable table = countingTable();
    FakeScanner scanner;
    scanner.add(Option::array("gamma-table", std::vector<SANE_Word>(256, 0)));
    EXPECT_EQ(setOptionByName(scanner.handle(), "gamma-table", nullptr, table), SANE_STATUS_GOOD);
    const Call call = scanner.journal().of(CallKind::Set).at(0);
    ASSERT_EQ(call.raw.size(), sizeof table);
    EXPECT_EQ(std::memcmp(call.raw.data(), table.data(), sizeof table), 0);
}

TEST(SetOptionByName, GammaOptionsOfAnotherSizeAreSurvived)
{
    const GammaTable table = countingTable();
    for (const std::size_t words : {1U, 16U, 255U, 257U, 4096U}) {
        FakeScanner scanner;
        scanner.add(Option::array("gamma-table", std::vector<SANE_Word>(words, 0)));
        EXPECT_EQ(setOptionByName(scanner.handle(), "gamma-table", nullptr, table),
                  SANE_STATUS_GOOD);
        const Call call = scanner.journal().of(CallKind::Set).at(0);
        const std::size_t same = std::min(call.raw.size(), sizeof table);
        EXPECT_EQ(std::memcmp(call.raw.data(), table.data(), same), 0) << words;
    }
}

TEST(SetOptionByName, TextsAreZeroFilledTo64Bytes)
{
    for (const std::size_t length : {0U, 1U, 63U, 64U}) {
        FakeScanner scanner;
        scanner.add(Option::text("o", "before"));
        scanner.recordWholeBuffers();
        const std::string text(length, 't');
        EXPECT_EQ(setOptionByName(scanner.handle(), "o", text.c_str(), {}), SANE_STATUS_GOOD);
        std::vector<unsigned char> expected(64, 0);
        std::fill_n(expected.begin(), length, 't');
        EXPECT_EQ(scanner.journal().of(CallKind::Set).at(0).raw, expected) << length;
    }
}

TEST(SetOptionByNameDeathTest, TextsBeyond64BytesEndTheProcess)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    FakeScanner scanner;
    scanner.add(Option::text("o", ""));
    const std::string text(65, 't');
    EXPECT_EXIT(setOptionByName(scanner.handle(), "o", text.c_str(), {}),
                testing::KilledBySignal(SIGABRT), "");
}

TEST(SetOptionByName, AMissingNameGoesBehindTheLastOption)
{
    FakeScanner scanner;
    scanner.add(Option::integer("a", 0)).add(Option::text("b", ""));
    EXPECT_EQ(setOptionByName(scanner.handle(), "c", "1", {}), SANE_STATUS_INVAL);
    EXPECT_EQ(scanner.journal().of(CallKind::Set).at(0).index, 3);
    EXPECT_TRUE(scanner.journal().sets().empty());
}

TEST(SetOptionByName, UnknownTypesAreNotSet)
{
    FakeScanner scanner;
    scanner.add(Option::integer("a", 0).type(static_cast<SANE_Value_Type>(6)));
    EXPECT_EQ(setOptionByName(scanner.handle(), "a", "1", {}), SANE_STATUS_GOOD);
    EXPECT_EQ(scanner.journal().count(CallKind::Set), 0);
}

TEST(SetOptionByName, TheCountIsAskedAnewForEverySet)
{
    FakeScanner scanner;
    scanner.add(Option::integer("a", 0));
    setOptionByName(scanner.handle(), "a", "1", {});
    scanner.add(Option::integer("b", 0));
    EXPECT_EQ(setOptionByName(scanner.handle(), "b", "2", {}), SANE_STATUS_GOOD);
    EXPECT_EQ(scanner.journal().sets(), (std::vector<std::string>{"a=1", "b=2"}));
}
