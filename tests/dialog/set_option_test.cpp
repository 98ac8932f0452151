// Setting one option from text, the gamma table, and the blank-page switch.
#include "dialog_fixture.h"

#include <QAbstractButton>

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <csignal>
#include <cstring>

using namespace kestrel::test;

namespace {

using Option = FakeOption;

class SetOption : public DialogTest
{
protected:
    /// Sends one value to a scanner with this option alone.
    /// @return the one set that came
    Call send(const Option& option, const char* value)
    {
        FakeScanner scanner;
        scanner.add(option);
        scanner.recordWholeBuffers();
        setDevice(dialog().host(), scanner.handle());
        m_status = dialog().kst_SetParam(option.name().c_str(), value);
        const std::vector<Call> sets = scanner.journal().of(CallKind::Set);
        dialog().sane_handle = nullptr;
        if (sets.size() != 1) {
            ADD_FAILURE() << sets.size() << " sets instead of one";
            return {};
        }
        return sets[0];
    }

    SANE_Word sendWord(const Option& option, const char* value)
    {
        const Call call = send(option, value);
        SANE_Word word = 0;
        EXPECT_EQ(call.raw.size(), sizeof word);
        std::memcpy(&word, call.raw.data(), std::min(sizeof word, call.raw.size()));
        return word;
    }

    unsigned int m_status = 0;
};

std::array<int, 256> wordsOf(const Call& call)
{
    std::array<int, 256> table{};
    EXPECT_EQ(call.raw.size(), sizeof table);
    std::memcpy(table.data(), call.raw.data(), std::min(sizeof table, call.raw.size()));
    return table;
}

} // namespace

TEST_F(SetOption, WithoutAHandleNothingHappensAndItCountsAsGood)
{
    EXPECT_EQ(dialog().kst_SetParam("resolution", "300"), 0U);
}

TEST_F(SetOption, AnIntegerIsSent)
{
    EXPECT_EQ(sendWord(Option::integer("resolution", 0), "300"), 300);
    EXPECT_EQ(m_status, 0U);
    EXPECT_EQ(sendWord(Option::integer("brightness", 0), "-100"), -100);
    EXPECT_EQ(sendWord(Option::integer("brightness", 0), "+7"), 7);
    EXPECT_EQ(sendWord(Option::integer("brightness", 0), " 12abc"), 12);
    EXPECT_EQ(sendWord(Option::integer("brightness", 0), "abc"), 0);
    EXPECT_EQ(sendWord(Option::integer("brightness", 0), ""), 0);
    EXPECT_EQ(sendWord(Option::integer("brightness", 0), "010"), 10);
    EXPECT_EQ(sendWord(Option::integer("brightness", 0), "3.9"), 3);
}

TEST_F(SetOption, ABooleanIsSentAsItsNumber)
{
    EXPECT_EQ(sendWord(Option::boolean("prefeed", false), "1"), 1);
    EXPECT_EQ(sendWord(Option::boolean("prefeed", true), "0"), 0);
    EXPECT_EQ(sendWord(Option::boolean("prefeed", true), "2"), 2);
    EXPECT_EQ(sendWord(Option::boolean("prefeed", true), "Enable"), 0);
}

TEST_F(SetOption, AFixedNumberIsScaledAndCut)
{
    EXPECT_EQ(sendWord(Option::fixed("resolution", 0), "300"), 300 * 65536);
    EXPECT_EQ(sendWord(Option::fixed("br-x", 0), "215.9"), 14149222);
    EXPECT_EQ(sendWord(Option::fixed("tl-x", 0), "-0.3"), -19660);
    EXPECT_EQ(sendWord(Option::fixed("tl-x", 0), "0.1"), 6553);
    EXPECT_EQ(sendWord(Option::fixed("tl-x", 0), "1e2"), 100 * 65536);
    EXPECT_EQ(sendWord(Option::fixed("tl-x", 0), "x"), 0);
}

TEST_F(SetOption, ATextGoesIntoAZeroedBufferOf64Bytes)
{
    const Call call = send(Option::text("mode", ""), "Color");
    ASSERT_EQ(call.raw.size(), 64U);
    std::vector<unsigned char> expected(64, 0);
    std::memcpy(expected.data(), "Color", 5);
    EXPECT_EQ(call.raw, expected);
}

TEST_F(SetOption, AnEmptyTextIsSent)
{
    EXPECT_EQ(send(Option::text("mode", "x"), "").raw, std::vector<unsigned char>(64, 0));
}

TEST_F(SetOption, ATextOf63BytesArrivesTerminated)
{
    const std::string text(63, 'a');
    const Call call = send(Option::text("mode", ""), text.c_str());
    EXPECT_EQ(call.value, text);
    EXPECT_EQ(call.raw.back(), 0);
}

TEST_F(SetOption, ATextOf64BytesArrivesWithoutTerminator)
{
    const std::string text(64, 'b');
    const Call call = send(Option::text("mode", ""), text.c_str());
    EXPECT_EQ(call.raw, std::vector<unsigned char>(64, 'b'));
}

using SetOptionDeathTest = SetOption;

TEST_F(SetOptionDeathTest, ALongerTextEndsTheProcess)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const std::string text(65, 'c');
    EXPECT_EXIT(send(Option::text("mode", ""), text.c_str()), testing::KilledBySignal(SIGABRT), "");
}

TEST_F(SetOption, AButtonIsPressedWithoutAValue)
{
    const Call call = send(Option::button("eject-paper"), nullptr);
    EXPECT_TRUE(call.nullValue);
    EXPECT_EQ(call.name, "eject-paper");
    EXPECT_TRUE(send(Option::button("eject-paper"), "1").nullValue);
}

TEST_F(SetOption, AGroupIsNeverSet)
{
    FakeScanner scanner;
    scanner.add(Option::integer("heading", 1).type(SANE_TYPE_GROUP));
    setDevice(dialog().host(), scanner.handle());
    EXPECT_EQ(dialog().kst_SetParam("heading", "1"), 0U);
    EXPECT_EQ(scanner.journal().count(CallKind::Set), 0);
    dialog().sane_handle = nullptr;
}

TEST_F(SetOption, TheInfoWordIsNotAskedFor)
{
    for (const Option& option :
         {Option::boolean("a", false), Option::integer("a", 1), Option::fixed("a", 1),
          Option::text("a", ""), Option::button("a")}) {
        EXPECT_FALSE(send(option, "1").infoAsked);
    }
}

TEST_F(SetOption, TheSetsStatusComesBack)
{
    FakeScanner scanner = fullScanner();
    setDevice(dialog().host(), scanner.handle());
    for (const char* name : {"resolution", "mode", "br-x", "prefeed", "eject-paper"}) {
        scanner.failOption(CallKind::Set, name, SANE_STATUS_DEVICE_BUSY);
        EXPECT_EQ(dialog().kst_SetParam(name, "1"), unsigned{SANE_STATUS_DEVICE_BUSY}) << name;
    }
    dialog().sane_handle = nullptr;
}

TEST_F(SetOption, GammaNamesGetTheTableWhateverTheText)
{
    dialog().SetupGammaTable1(dialog().gamma_table.data(), 0.5);
    const std::vector<SANE_Word> zeros(256, 0);
    for (const char* name : {"gamma-table", "red-gamma-table", "green-gamma-table",
                             "blue-gamma-table", "Gamma-Table"}) {
        for (const char* value : {static_cast<const char*>(nullptr), "77"}) {
            const Call call = send(Option::array(name, zeros), value);
            EXPECT_EQ(wordsOf(call), dialog().gamma_table) << name;
        }
    }
}

TEST_F(SetOption, OtherArraysAreNotGammaTables)
{
    const Call call = send(Option::array("gamma", {1, 2, 3, 4}), "9");
    SANE_Word first = 0;
    std::memcpy(&first, call.raw.data(), sizeof first);
    EXPECT_EQ(first, 9);
}

TEST_F(SetOption, AGammaOptionThatIsNoIntegerIsSetFromTheText)
{
    EXPECT_EQ(send(Option::text("gamma-table", ""), "2.2").value, "2.2");
}

TEST_F(SetOption, AMissingValueForOtherOptionsDoesNotCrash)
{
    for (const Option& option : {Option::boolean("a", false), Option::integer("a", 1),
                                 Option::fixed("a", 1), Option::text("a", "")}) {
        FakeScanner scanner;
        scanner.add(option);
        setDevice(dialog().host(), scanner.handle());
        dialog().kst_SetParam("a", nullptr);
        dialog().sane_handle = nullptr;
    }
    SUCCEED();
}

TEST_F(SetOption, EjectPressesTheButton)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    scanner.clearJournal();
    press(button("eject_paper_manual"));
    EXPECT_EQ(scanner.journal().sets(), (Strings{"eject-paper="}));
    EXPECT_TRUE(scanner.journal().setCallsOf("eject-paper")[0].nullValue);
}

TEST_F(SetOption, BlankPageSwitchSendsOnceAndIgnoresTheStatus)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    scanner.clearJournal();
    scanner.failOption(CallKind::Set, "blank-page-removal", SANE_STATUS_IO_ERROR);
    EXPECT_TRUE(dialog().set_blank_page_func(true));
    EXPECT_FALSE(dialog().set_blank_page_func(true));
    EXPECT_EQ(scanner.journal().sets(), (Strings{"blank-page-removal=1"}));
    EXPECT_TRUE(checked("remove_blankpage"));
}

TEST_F(SetOption, BlankPageSwitchWorksUnbound)
{
    EXPECT_FALSE(dialog().set_blank_page_func(false));
    EXPECT_TRUE(dialog().set_blank_page_func(true));
    EXPECT_TRUE(checked("remove_blankpage"));
}
