#include "support/models.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <sane/sane.h>

#include <array>
#include <cstring>
#include <set>

using kestrel::test::Call;
using kestrel::test::CallKind;
using kestrel::test::FakeFrame;
using kestrel::test::FakeOption;
using kestrel::test::FakeScanner;
using kestrel::test::fullScanner;

namespace {

using Strings = std::vector<std::string>;

SANE_Status setWord(FakeScanner& scanner, const char* name, SANE_Word word)
{
    return sane_control_option(scanner.handle(), scanner.indexOf(name), SANE_ACTION_SET_VALUE,
                               &word, nullptr);
}

SANE_Status setText(FakeScanner& scanner, const char* name, const char* text)
{
    std::array<char, 64> buffer{};
    std::strncpy(buffer.data(), text, buffer.size());
    return sane_control_option(scanner.handle(), scanner.indexOf(name), SANE_ACTION_SET_VALUE,
                               buffer.data(), nullptr);
}

} // namespace

TEST(FakeSane, OptionZeroIsTheNumberOfOptions)
{
    FakeScanner scanner;
    scanner.add(FakeOption::boolean("a", true)).add(FakeOption::group("g"));
    SANE_Word count = 0;
    ASSERT_NE(sane_get_option_descriptor(scanner.handle(), 0), nullptr);
    EXPECT_EQ(sane_control_option(scanner.handle(), 0, SANE_ACTION_GET_VALUE, &count, nullptr),
              SANE_STATUS_GOOD);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(sane_get_option_descriptor(scanner.handle(), 3), nullptr);
    EXPECT_EQ(sane_get_option_descriptor(scanner.handle(), -1), nullptr);
}

TEST(FakeSane, DescriptorsSayWhatTheOptionSays)
{
    FakeScanner scanner;
    scanner.add(FakeOption::fixed("w", 1.5).unit(SANE_UNIT_MM).limits(0.5, 215.9).inactive());
    scanner.add(FakeOption::choice("c", {"one", "three"}, "one"));
    scanner.add(FakeOption::integer("l", 2).words({2, 4}));
    scanner.add(FakeOption::integer("n", 2).range(0, 1).nullConstraint().unnamed());
    const SANE_Option_Descriptor* w = sane_get_option_descriptor(scanner.handle(), 1);
    EXPECT_STREQ(w->name, "w");
    EXPECT_EQ(w->type, SANE_TYPE_FIXED);
    EXPECT_EQ(w->unit, SANE_UNIT_MM);
    EXPECT_EQ(w->size, 4);
    EXPECT_FALSE(SANE_OPTION_IS_ACTIVE(w->cap));
    EXPECT_EQ(w->constraint_type, SANE_CONSTRAINT_RANGE);
    EXPECT_EQ(w->constraint.range->min, 32768);
    const SANE_Option_Descriptor* c = sane_get_option_descriptor(scanner.handle(), 2);
    EXPECT_EQ(c->size, 6);
    EXPECT_STREQ(c->constraint.string_list[1], "three");
    EXPECT_EQ(c->constraint.string_list[2], nullptr);
    const SANE_Option_Descriptor* l = sane_get_option_descriptor(scanner.handle(), 3);
    EXPECT_EQ(l->constraint.word_list[0], 2);
    EXPECT_EQ(l->constraint.word_list[2], 4);
    const SANE_Option_Descriptor* n = sane_get_option_descriptor(scanner.handle(), 4);
    EXPECT_EQ(n->name, nullptr);
    EXPECT_EQ(n->constraint_type, SANE_CONSTRAINT_RANGE);
    EXPECT_EQ(n->constraint.range, nullptr);
}

TEST(FakeSane, EverySetIsRecordedInOrderWithItsValue)
{
    FakeScanner scanner = fullScanner();
    EXPECT_EQ(setWord(scanner, "resolution", 300), SANE_STATUS_GOOD);
    EXPECT_EQ(setText(scanner, "mode", "Gray"), SANE_STATUS_GOOD);
    EXPECT_EQ(setWord(scanner, "br-x", 14149222), SANE_STATUS_GOOD);
    EXPECT_EQ(sane_control_option(scanner.handle(), scanner.indexOf("eject-paper"),
                                  SANE_ACTION_SET_VALUE, nullptr, nullptr),
              SANE_STATUS_GOOD);
    EXPECT_EQ(scanner.journal().sets(),
              (Strings{"resolution=300", "mode=Gray", "br-x=215.9", "eject-paper="}));
    const Call call = scanner.journal().setCallsOf("br-x").at(0);
    SANE_Word word = 0;
    std::memcpy(&word, call.raw.data(), sizeof word);
    EXPECT_EQ(word, 14149222);
    EXPECT_FALSE(call.infoAsked);
}

TEST(FakeSane, ASetValueIsReadBack)
{
    FakeScanner scanner = fullScanner();
    setText(scanner, "source", "Flatbed");
    std::array<char, 64> buffer{};
    EXPECT_EQ(sane_control_option(scanner.handle(), scanner.indexOf("source"),
                                  SANE_ACTION_GET_VALUE, buffer.data(), nullptr),
              SANE_STATUS_GOOD);
    EXPECT_STREQ(buffer.data(), "Flatbed");
}

TEST(FakeSane, TheHeightFollowsSourceAndLongPaper)
{
    FakeScanner scanner = fullScanner();
    const auto height = [&scanner] {
        return sane_get_option_descriptor(scanner.handle(), scanner.indexOf("br-y"))
            ->constraint.range->max;
    };
    setText(scanner, "source", "Flatbed");
    EXPECT_EQ(height(), 297 * 65536);
    setText(scanner, "source", "ADF Front");
    setWord(scanner, "long-paper-scan", 1);
    EXPECT_EQ(height(), 3000 * 65536);
}

TEST(FakeSane, FailuresComeWhereTheyWereOrdered)
{
    FakeScanner scanner = fullScanner();
    setWord(scanner, "resolution", 1);
    scanner.failNth(CallKind::Set, 2, SANE_STATUS_DEVICE_BUSY);
    scanner.failOption(CallKind::Set, "contrast", SANE_STATUS_NO_MEM);
    EXPECT_EQ(setWord(scanner, "resolution", 2), SANE_STATUS_GOOD);
    EXPECT_EQ(setWord(scanner, "resolution", 3), SANE_STATUS_DEVICE_BUSY);
    EXPECT_EQ(setWord(scanner, "resolution", 4), SANE_STATUS_GOOD);
    EXPECT_EQ(setWord(scanner, "contrast", 4), SANE_STATUS_NO_MEM);
    scanner.failAllAfter(1, SANE_STATUS_IO_ERROR);
    EXPECT_EQ(setWord(scanner, "resolution", 5), SANE_STATUS_GOOD);
    EXPECT_EQ(setWord(scanner, "resolution", 6), SANE_STATUS_IO_ERROR);
    EXPECT_EQ(sane_get_option_descriptor(scanner.handle(), 1), nullptr);
    scanner.mend();
    EXPECT_EQ(setWord(scanner, "contrast", 7), SANE_STATUS_GOOD);
    EXPECT_EQ(scanner.option("resolution").decoded(), "5");
}

TEST(FakeSane, WhatDoesNotExistOrSleepsIsRefused)
{
    FakeScanner scanner = fullScanner();
    SANE_Word word = 1;
    EXPECT_EQ(sane_control_option(scanner.handle(), 5000, SANE_ACTION_SET_VALUE, &word, nullptr),
              SANE_STATUS_INVAL);
    scanner.option("brightness").inactive();
    EXPECT_EQ(setWord(scanner, "brightness", 3), SANE_STATUS_INVAL);
    ASSERT_EQ(scanner.journal().straySets().size(), 1U);
    EXPECT_EQ(scanner.journal().straySets()[0].index, 5000);
    EXPECT_EQ(scanner.journal().sets(), (Strings{"brightness=3"}));
}

TEST(FakeSane, FramesAreDeliveredInPiecesAndEndAsOrdered)
{
    FakeScanner scanner = fullScanner();
    FakeFrame frame;
    frame.parameters = {SANE_FRAME_RGB, SANE_TRUE, 6, 2, 2, 8};
    frame.bytes = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    frame.chunks = {5, 1};
    frame.end = SANE_STATUS_JAMMED;
    scanner.addFrame(frame);
    SANE_Parameters parameters{};
    ASSERT_EQ(sane_start(scanner.handle()), SANE_STATUS_GOOD);
    ASSERT_EQ(sane_get_parameters(scanner.handle(), &parameters), SANE_STATUS_GOOD);
    EXPECT_EQ(parameters.bytes_per_line, 6);
    std::vector<SANE_Byte> got;
    std::array<SANE_Byte, 100> buffer{};
    SANE_Int length = 0;
    SANE_Status status = SANE_STATUS_GOOD;
    std::vector<SANE_Int> lengths;
    while ((status = sane_read(scanner.handle(), buffer.data(), 100, &length)) ==
           SANE_STATUS_GOOD) {
        got.insert(got.end(), buffer.begin(), buffer.begin() + length);
        lengths.push_back(length);
    }
    EXPECT_EQ(status, SANE_STATUS_JAMMED);
    EXPECT_EQ(got, frame.bytes);
    EXPECT_EQ(lengths, (std::vector<SANE_Int>{5, 1, 1, 1, 1, 1, 1, 1}));
    EXPECT_EQ(sane_start(scanner.handle()), SANE_STATUS_NO_DOCS);
    sane_cancel(scanner.handle());
    EXPECT_EQ(scanner.journal().count(CallKind::Cancel), 1);
    EXPECT_EQ(scanner.journal().count(CallKind::Start), 2);
}

TEST(FakeSane, SeveralScannersAreToldApart)
{
    FakeScanner first = fullScanner();
    FakeScanner second = fullScanner();
    setWord(first, "resolution", 1);
    setWord(second, "resolution", 2);
    EXPECT_EQ(first.journal().sets(), (Strings{"resolution=1"}));
    EXPECT_EQ(second.journal().sets(), (Strings{"resolution=2"}));
}

TEST(FakeSane, AHandleThatIsNotOpenFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(sane_cancel(nullptr), "not open");
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(sane_get_option_descriptor(nullptr, 0), nullptr), "not open");
    SANE_Handle gone = FakeScanner().handle();
    EXPECT_NONFATAL_FAILURE(sane_start(gone), "not open");
}

TEST(FakeSane, TheFullScannerHasNoNameTwice)
{
    const FakeScanner scanner = fullScanner();
    std::set<std::string> seen;
    for (const std::string& name : scanner.names()) {
        EXPECT_TRUE(seen.insert(name).second) << name;
    }
}
