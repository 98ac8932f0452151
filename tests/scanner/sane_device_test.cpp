#include "scanner/sane_device.h"
#include "support/fake_scanner.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

using kestrel::SaneDevice;
using kestrel::test::CallKind;
using kestrel::test::FakeOption;
using kestrel::test::FakeScanner;

namespace {

using Option = FakeOption;

const SANE_Option_Descriptor& describe(FakeOption& option)
{
    return *option.descriptor();
}

} // namespace

TEST(Limits, OfARangeAreItsEnds)
{
    Option option = Option::integer("o", 0).range(-3, 8);
    const auto range = kestrel::wordRange(describe(option));
    ASSERT_TRUE(range);
    EXPECT_EQ(range->min, -3);
    EXPECT_EQ(range->max, 8);
}

TEST(Limits, OfAWordListAreItsSmallestAndLargestWord)
{
    Option option = Option::integer("o", 0).words({5, -2, 9, 4});
    const auto range = kestrel::wordRange(describe(option));
    ASSERT_TRUE(range);
    EXPECT_EQ(range->min, -2);
    EXPECT_EQ(range->max, 9);
    Option single = Option::integer("o", 0).words({6});
    EXPECT_EQ(kestrel::wordRange(describe(single))->min, 6);
    EXPECT_EQ(kestrel::wordRange(describe(single))->max, 6);
}

TEST(Limits, ThereAreNoneWithoutAUsableConstraint)
{
    Option none = Option::integer("o", 0);
    EXPECT_FALSE(kestrel::wordRange(describe(none)));
    Option nullRange = Option::integer("o", 0).range(1, 2).nullConstraint();
    EXPECT_FALSE(kestrel::wordRange(describe(nullRange)));
    Option nullWords = Option::integer("o", 0).words({1}).nullConstraint();
    EXPECT_FALSE(kestrel::wordRange(describe(nullWords)));
    Option emptyWords = Option::integer("o", 0).words({});
    EXPECT_FALSE(kestrel::wordRange(describe(emptyWords)));
    Option strings = Option::text("o", "").strings({"a"});
    EXPECT_FALSE(kestrel::wordRange(describe(strings)));
}

TEST(Limits, AnAbsurdlyLongWordListHasNone)
{
    std::vector<SANE_Word> words(kestrel::kMaxOptionSize + 2, 3);
    SANE_Option_Descriptor descriptor{};
    descriptor.type = SANE_TYPE_INT;
    descriptor.constraint_type = SANE_CONSTRAINT_WORD_LIST;
    descriptor.constraint.word_list = words.data();
    words[0] = kestrel::kMaxOptionSize + 1;
    EXPECT_FALSE(kestrel::wordRange(descriptor));
    words[0] = kestrel::kMaxOptionSize;
    const auto longest = kestrel::wordRange(descriptor);
    ASSERT_TRUE(longest);
    EXPECT_EQ(longest->min, 3);
    EXPECT_EQ(longest->max, 3);
}

TEST(StringLists, AreTakenInOrder)
{
    Option option = Option::choice("o", {"b", "a", ""}, "a");
    const auto list = kestrel::stringList(describe(option));
    EXPECT_EQ(std::vector<std::string>(list.begin(), list.end()),
              (std::vector<std::string>{"b", "a", ""}));
}

TEST(StringLists, AreEmptyWithoutAUsableConstraint)
{
    Option empty = Option::text("o", "").strings({});
    EXPECT_TRUE(kestrel::stringList(describe(empty)).empty());
    Option null = Option::text("o", "").strings({"a"}).nullConstraint();
    EXPECT_TRUE(kestrel::stringList(describe(null)).empty());
    Option range = Option::integer("o", 0).range(0, 1);
    EXPECT_TRUE(kestrel::stringList(describe(range)).empty());
}

TEST(Units, ALengthAsFixedEndsWhereTheTypeDoes)
{
    Option fixed = Option::fixed("o", 0);
    Option integer = Option::integer("o", 0);
    EXPECT_EQ(kestrel::fixedLength(describe(fixed), INT_MAX), INT_MAX);
    EXPECT_EQ(kestrel::fixedLength(describe(integer), 297), 297 * 65536);
    constexpr SANE_Word kLongest = 32767;
    for (const SANE_Word word : {kLongest, kLongest + 1, 40000, 70000, INT_MAX}) {
        EXPECT_EQ(kestrel::fixedLength(describe(integer), word), kLongest * 65536) << word;
        EXPECT_EQ(kestrel::fixedLength(describe(integer), -word), -kLongest * 65536) << word;
    }
}

TEST(Units, FixedWordsAreScaledAndIntegersAreNot)
{
    Option fixed = Option::fixed("o", 0);
    Option integer = Option::integer("o", 0);
    EXPECT_DOUBLE_EQ(kestrel::millimetres(describe(fixed), 65536), 1.0);
    EXPECT_DOUBLE_EQ(kestrel::millimetres(describe(fixed), -32768), -0.5);
    EXPECT_DOUBLE_EQ(kestrel::millimetres(describe(fixed), 1), 1.52587890625e-5);
    EXPECT_DOUBLE_EQ(kestrel::millimetres(describe(integer), 65536), 65536.0);
    EXPECT_EQ(kestrel::wholeUnits(describe(fixed), 600 * 65536 + 65535), 600);
    EXPECT_EQ(kestrel::wholeUnits(describe(integer), 600), 600);
    EXPECT_DOUBLE_EQ(kestrel::fixedToMm(INT_MAX), INT_MAX / 65536.0);
}

TEST(Activity, IsTheInactiveBit)
{
    Option option = Option::integer("o", 0);
    EXPECT_TRUE(kestrel::isActive(describe(option)));
    option.inactive();
    EXPECT_FALSE(kestrel::isActive(describe(option)));
    option.cap(SANE_CAP_INACTIVE);
    EXPECT_FALSE(kestrel::isActive(describe(option)));
    option.cap(0);
    EXPECT_TRUE(kestrel::isActive(describe(option)));
}

TEST(OptionCount, IsReadThroughOptionZero)
{
    FakeScanner scanner;
    scanner.add(Option::integer("a", 0)).add(Option::integer("b", 0));
    const auto count = SaneDevice(scanner.handle()).optionCount();
    EXPECT_NE(count.option, nullptr);
    EXPECT_EQ(count.value, 3);
    EXPECT_EQ(count.status, SANE_STATUS_GOOD);
    EXPECT_EQ(count.walkEnd(), 3);
}

TEST(OptionCount, WithoutOptionZeroNothingIsRead)
{
    FakeScanner scanner;
    scanner.hideCount();
    const auto count = SaneDevice(scanner.handle()).optionCount();
    EXPECT_EQ(count.option, nullptr);
    EXPECT_EQ(count.value, 0);
    EXPECT_EQ(scanner.journal().count(CallKind::Get), 0);
}

TEST(OptionCount, AFailedReadIsZeroAndKeepsItsStatus)
{
    FakeScanner scanner;
    scanner.failNth(CallKind::Get, 1, SANE_STATUS_DEVICE_BUSY);
    const auto count = SaneDevice(scanner.handle()).optionCount();
    EXPECT_EQ(count.value, 0);
    EXPECT_EQ(count.status, SANE_STATUS_DEVICE_BUSY);
}

TEST(OptionCount, AnAbsurdCountDoesNotMakeAnEndlessWalk)
{
    FakeScanner scanner;
    scanner.reportCount(INT_MAX);
    EXPECT_LE(SaneDevice(scanner.handle()).optionCount().walkEnd(), 100'000);
    scanner.reportCount(-5);
    EXPECT_LE(SaneDevice(scanner.handle()).optionCount().walkEnd(), 0);
}

TEST(Reading, GivesTheFirstWord)
{
    FakeScanner scanner;
    scanner.add(Option::integer("a", -7)).add(Option::array("b", {8, 9}));
    const SaneDevice device(scanner.handle());
    EXPECT_EQ(device.readWord(1, *device.descriptor(1)), -7);
    EXPECT_EQ(device.readWord(2, *device.descriptor(2)), 8);
}

TEST(Reading, GivesNothingWhenTheDeviceRefuses)
{
    FakeScanner scanner;
    scanner.add(Option::integer("a", -7)).add(Option::text("b", "x"));
    scanner.failOption(CallKind::Get, "a", SANE_STATUS_IO_ERROR);
    scanner.failOption(CallKind::Get, "b", SANE_STATUS_IO_ERROR);
    const SaneDevice device(scanner.handle());
    EXPECT_FALSE(device.readWord(1, *device.descriptor(1)));
    EXPECT_FALSE(device.readText(2, *device.descriptor(2)));
}

TEST(Reading, TextsEndAtTheirZeroOrTheirSize)
{
    FakeScanner scanner;
    scanner.add(Option::text("a", "hello"));
    scanner.add(Option::text("b", "").size(4).bytes({'w', 'x', 'y', 'z'}));
    scanner.add(Option::text("c", ""));
    scanner.add(Option::text("d", "lost").size(0));
    const SaneDevice device(scanner.handle());
    EXPECT_EQ(device.readText(1, *device.descriptor(1)), QByteArray("hello"));
    EXPECT_EQ(device.readText(2, *device.descriptor(2)), QByteArray("wxyz"));
    EXPECT_EQ(device.readText(3, *device.descriptor(3)), QByteArray());
    EXPECT_EQ(device.readText(4, *device.descriptor(4)), QByteArray());
}

TEST(Reading, LongTextsAreReadWhole)
{
    const std::string text(5000, 'q');
    FakeScanner scanner;
    scanner.add(Option::text("a", text).size(5001));
    const SaneDevice device(scanner.handle());
    EXPECT_EQ(device.readText(1, *device.descriptor(1)), QByteArray::fromStdString(text));
}

TEST(Reading, AnAbsurdSizeIsNotAllocated)
{
    FakeScanner scanner;
    scanner.add(Option::text("a", "x").size(INT_MAX));
    const SaneDevice device(scanner.handle());
    EXPECT_FALSE(device.readText(1, *device.descriptor(1)));
}
