// How the option of a name is found, and what happens when it is not.
#include "dialog_fixture.h"

#include <gtest/gtest.h>

#include <climits>

using namespace kestrel::test;

namespace {

using Option = FakeOption;
using OptionSearch = DialogTest;

} // namespace

TEST_F(OptionSearch, NamesAreFoundInAnyLetterCase)
{
    FakeScanner scanner = fullScanner();
    setDevice(dialog().host(), scanner.handle());
    EXPECT_EQ(dialog().kst_SetParam("RESOLUTION", "150"), 0U);
    EXPECT_EQ(scanner.journal().sets(), (Strings{"resolution=150"}));
    dialog().sane_handle = nullptr;
}

TEST_F(OptionSearch, TheFirstOptionOfANameIsSet)
{
    FakeScanner scanner;
    scanner.add(Option::integer("a", 0)).add(Option::integer("b", 0)).add(Option::text("b", ""));
    setDevice(dialog().host(), scanner.handle());
    dialog().kst_SetParam("b", "5");
    ASSERT_EQ(scanner.journal().count(CallKind::Set), 1);
    EXPECT_EQ(scanner.journal().of(CallKind::Set)[0].index, 2);
    dialog().sane_handle = nullptr;
}

TEST_F(OptionSearch, TheSearchStopsAtTheOption)
{
    FakeScanner scanner;
    scanner.add(Option::integer("a", 0)).add(Option::integer("b", 0)).add(Option::integer("c", 0));
    setDevice(dialog().host(), scanner.handle());
    dialog().kst_SetParam("b", "5");
    for (const Call& call : scanner.journal().of(CallKind::Describe)) {
        EXPECT_LE(call.index, 2);
    }
    dialog().sane_handle = nullptr;
}

// The scanner itself refuses the index behind its last option.
TEST_F(OptionSearch, AnUnknownNameIsSetBehindTheLastOption)
{
    FakeScanner scanner;
    scanner.add(Option::integer("a", 0)).add(Option::integer("b", 0));
    setDevice(dialog().host(), scanner.handle());
    EXPECT_EQ(dialog().kst_SetParam("missing", "5"), unsigned{SANE_STATUS_INVAL});
    const std::vector<Call> sets = scanner.journal().of(CallKind::Set);
    ASSERT_EQ(sets.size(), 1U);
    EXPECT_EQ(sets[0].index, 3);
    dialog().sane_handle = nullptr;
}

TEST_F(OptionSearch, AnUnknownNameTakesTheTypeOfTheLastOption)
{
    for (const Option& last : {Option::text("last", ""), Option::button("last"),
                               Option::fixed("last", 0), Option::boolean("last", false)}) {
        FakeScanner scanner;
        scanner.add(Option::integer("a", 0)).add(last);
        setDevice(dialog().host(), scanner.handle());
        EXPECT_EQ(dialog().kst_SetParam("missing", "5"), unsigned{SANE_STATUS_INVAL});
        ASSERT_EQ(scanner.journal().straySets().size(), 1U);
        EXPECT_EQ(scanner.journal().straySets()[0].index, 3);
        EXPECT_EQ(scanner.journal().straySets()[0].nullValue, last.type() == SANE_TYPE_BUTTON);
        dialog().sane_handle = nullptr;
    }
}

TEST_F(OptionSearch, AnUnknownNameBehindAGroupIsNotSet)
{
    FakeScanner scanner;
    scanner.add(Option::integer("a", 0)).add(Option::group("g"));
    setDevice(dialog().host(), scanner.handle());
    EXPECT_EQ(dialog().kst_SetParam("missing", "5"), 0U);
    EXPECT_EQ(scanner.journal().count(CallKind::Set), 0);
    dialog().sane_handle = nullptr;
}

TEST_F(OptionSearch, AScannerWithOptionZeroAloneIsSetAtIndexOne)
{
    FakeScanner scanner;
    setDevice(dialog().host(), scanner.handle());
    EXPECT_EQ(dialog().kst_SetParam("anything", "5"), unsigned{SANE_STATUS_INVAL});
    const std::vector<Call> sets = scanner.journal().of(CallKind::Set);
    ASSERT_EQ(sets.size(), 1U);
    EXPECT_EQ(sets[0].index, 1);
    dialog().sane_handle = nullptr;
}

TEST_F(OptionSearch, ACountOfZeroReturnsTheReadsStatus)
{
    FakeScanner scanner = fullScanner();
    scanner.reportCount(0);
    setDevice(dialog().host(), scanner.handle());
    EXPECT_EQ(dialog().kst_SetParam("resolution", "300"), 0U);
    EXPECT_EQ(scanner.journal().count(CallKind::Set), 0);
    dialog().sane_handle = nullptr;
}

TEST_F(OptionSearch, AFailedCountIsReported)
{
    FakeScanner scanner = fullScanner();
    scanner.failNth(CallKind::Get, 1, SANE_STATUS_IO_ERROR);
    setDevice(dialog().host(), scanner.handle());
    EXPECT_EQ(dialog().kst_SetParam("resolution", "300"), unsigned{SANE_STATUS_IO_ERROR});
    EXPECT_EQ(scanner.journal().count(CallKind::Set), 0);
    dialog().sane_handle = nullptr;
}

TEST_F(OptionSearch, WithoutOptionZeroNothingIsSet)
{
    FakeScanner scanner = fullScanner();
    scanner.hideCount();
    setDevice(dialog().host(), scanner.handle());
    EXPECT_EQ(dialog().kst_SetParam("resolution", "300"), 0U);
    EXPECT_EQ(scanner.journal().count(CallKind::Set), 0);
    EXPECT_EQ(scanner.journal().count(CallKind::Get), 0);
    dialog().sane_handle = nullptr;
}

TEST_F(OptionSearch, OddCountsAreSurvived)
{
    for (const SANE_Word count : {-1, INT_MIN, 100'000}) {
        FakeScanner scanner = fullScanner();
        scanner.reportCount(count);
        setDevice(dialog().host(), scanner.handle());
        dialog().kst_SetParam("missing", "300");
        EXPECT_TRUE(scanner.journal().sets().empty()) << count;
        dialog().sane_handle = nullptr;
    }
}

TEST_F(OptionSearch, NullDescriptorsAndUnnamedOptionsArePassedOver)
{
    FakeScanner scanner;
    scanner.add(Option::integer("x", 0).undescribed()).add(Option::integer("target", 0).unnamed());
    scanner.add(Option::group("g")).add(Option::integer("target", 0));
    setDevice(dialog().host(), scanner.handle());
    EXPECT_EQ(dialog().kst_SetParam("target", "5"), 0U);
    ASSERT_EQ(scanner.journal().count(CallKind::Set), 1);
    EXPECT_EQ(scanner.journal().of(CallKind::Set)[0].index, 4);
    dialog().sane_handle = nullptr;
}
