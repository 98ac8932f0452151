// Scanners that fail to answer: the rest is bound, nothing breaks.
#include "bad_scanner.h"

using namespace kestrel::test;

TEST_F(BadScanner, OneWithoutOptionCountIsNotWalked)
{
    FakeScanner scanner = fullScanner();
    scanner.hideCount();
    dialog().sane_handle = scanner.handle();
    EXPECT_EQ(dialog().GetOptionByName(), 0);
    EXPECT_EQ(scanner.journal().count(CallKind::Get), 0);
    EXPECT_EQ(scanner.journal().count(CallKind::Describe), 1);
    EXPECT_EQ(combo("source").count(), 0);
}

TEST_F(BadScanner, TheCountIsReadWithoutInfo)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const Call count = scanner.journal().of(CallKind::Get).at(0);
    EXPECT_EQ(count.index, 0);
    EXPECT_FALSE(count.infoAsked);
}

TEST_F(BadScanner, OddCountsAreSurvived)
{
    int round = 0;
    for (const SANE_Word count : {0, 1, -1, INT_MIN, 2, 100'000, INT_MAX}) {
        FakeScanner scanner = feederScanner();
        scanner.reportCount(count);
        bind(scanner, ("Scanner" + std::to_string(round++)).c_str());
        EXPECT_EQ(combo("source").count(), count > 4 ? 1 : 0) << count;
        expectUsable();
    }
}

TEST_F(BadScanner, ManyOptionsAreWalkedToTheEnd)
{
    FakeScanner scanner;
    for (int i = 0; i < 5000; ++i) {
        scanner.add(Option::integer("unknown-" + std::to_string(i), i));
    }
    scanner.add(Option::integer("brightness", 55));
    bind(scanner);
    EXPECT_EQ(bar("brightness_set").value(), 55);
}

TEST_F(BadScanner, OneThatAnswersNothingStillBinds)
{
    FakeScanner scanner = fullScanner();
    scanner.failAllAfter(0, SANE_STATUS_IO_ERROR);
    bind(scanner);
    EXPECT_EQ(combo("source").count(), 0);
    EXPECT_EQ(dialog().sane_handle, scanner.handle());
    dialog().setAllParam();
}

TEST_F(BadScanner, NullDescriptorsArePassedOver)
{
    FakeScanner scanner;
    scanner.add(Option::integer("contrast", 1).undescribed());
    scanner.add(Option::integer("brightness", 44));
    scanner.add(Option::integer("other", 1).undescribed());
    bind(scanner);
    EXPECT_EQ(bar("brightness_set").value(), 44);
    EXPECT_EQ(bar("contrast_set").value(), 0);
}

TEST_F(BadScanner, UnnamedOptionsArePassedOver)
{
    FakeScanner scanner;
    scanner.add(Option::integer("contrast", 33).unnamed());
    scanner.add(Option::group("group"));
    scanner.add(Option::integer("", 33));
    scanner.add(Option::integer("brightness", 44));
    bind(scanner);
    EXPECT_EQ(bar("brightness_set").value(), 44);
    EXPECT_EQ(bar("contrast_set").value(), 0);
    EXPECT_EQ(scanner.journal().reads(), (Strings{"brightness"}));
}

TEST_F(BadScanner, AFailedReadLeavesTheControlAndGoesOn)
{
    FakeScanner scanner = fullScanner();
    scanner.option("contrast").word(22);
    scanner.option("brightness").word(33);
    scanner.option("rotate").string("180");
    scanner.option("punch-hole-removal").word(1);
    scanner.failOption(CallKind::Get, "contrast", SANE_STATUS_IO_ERROR);
    scanner.failOption(CallKind::Get, "rotate", SANE_STATUS_NO_MEM);
    scanner.failOption(CallKind::Get, "punch-hole-removal", SANE_STATUS_INVAL);
    bind(scanner);
    EXPECT_EQ(bar("brightness_set").value(), 33);
    EXPECT_EQ(bar("contrast_set").value(), 0);
    EXPECT_EQ(combo("rotate").currentIndex(), 0);
    EXPECT_FALSE(checked("punch_hole_removal"));
    EXPECT_TRUE(dialog().serial_text.contains(QStringLiteral("KS-2024-0042")));
}

TEST_F(BadScanner, LimitsAreTakenEvenWhenTheValueCannotBeRead)
{
    FakeScanner scanner;
    scanner.add(Option::fixed("br-x", 50.0).limits(10.0, 123.0));
    scanner.add(Option::integer("cachemode-value", 50).range(10, 123));
    scanner.failOption(CallKind::Get, "br-x", SANE_STATUS_IO_ERROR);
    scanner.failOption(CallKind::Get, "cachemode-value", SANE_STATUS_IO_ERROR);
    bind(scanner);
    EXPECT_DOUBLE_EQ(real("br_x").maximum(), 123.0);
    EXPECT_EQ(bar("cachemode_value").maximum(), 123);
}

TEST_F(BadScanner, AFailedSwitchReadLeavesTheBox)
{
    FakeScanner scanner;
    scanner.add(Option::text("powersaving", "Disable"));
    scanner.add(Option::text("ultrasonic", "Enable"));
    scanner.failOption(CallKind::Get, "powersaving", SANE_STATUS_IO_ERROR);
    scanner.failOption(CallKind::Get, "ultrasonic", SANE_STATUS_IO_ERROR);
    bind(scanner);
    EXPECT_TRUE(checked("powersaving"));
    EXPECT_FALSE(checked("ultrasonic"));
}

TEST_F(BadScanner, AFailedSerialNumberGivesNoLine)
{
    FakeScanner scanner = fullScanner();
    scanner.failOption(CallKind::Get, "serial-number", SANE_STATUS_IO_ERROR);
    scanner.failOption(CallKind::Get, "device-info", SANE_STATUS_IO_ERROR);
    scanner.failOption(CallKind::Get, "padscan-count", SANE_STATUS_IO_ERROR);
    bind(scanner);
    EXPECT_TRUE(dialog().serial_text.isEmpty());
    EXPECT_EQ(dialog().counter_text, QStringLiteral("自动进纸滚轮次数：5678\n"));
}

// A value too large for a word is not read: the control gets the word that was read before it.
TEST_F(BadScanner, AnOptionLargerThanAWordTakesTheWordReadBefore)
{
    FakeScanner scanner;
    scanner.add(Option::integer("brightness", 17));
    scanner.add(Option::array("contrast", {50, 60}));
    bind(scanner);
    EXPECT_EQ(bar("brightness_set").value(), 17);
    EXPECT_EQ(bar("contrast_set").value(), 17);
    EXPECT_EQ(scanner.journal().reads(), (Strings{"brightness"}));
}

TEST_F(BadScanner, WithNoWordReadBeforeALargeOptionCountsAsZero)
{
    bar("contrast_set").setValue(40);
    FakeScanner scanner;
    scanner.add(Option::array("contrast", {50, 60}));
    bind(scanner);
    EXPECT_EQ(bar("contrast_set").value(), 0);
}

TEST_F(BadScanner, TheCarriedWordIsThatOfTheLastGoodRead)
{
    FakeScanner scanner;
    scanner.add(Option::integer("brightness", 17));
    scanner.add(Option::integer("blank-page-threshold", 66));
    scanner.add(Option::array("contrast", {50, 60}));
    scanner.failOption(CallKind::Get, "blank-page-threshold", SANE_STATUS_IO_ERROR);
    bind(scanner);
    EXPECT_EQ(bar("contrast_set").value(), 17);
}

TEST_F(BadScanner, TheBinarizationValueIsCarriedLikeTheOthers)
{
    FakeScanner scanner;
    scanner.add(Option::integer("brightness", 9));
    scanner.add(Option::array("binarization-value", {1, 2, 3}));
    bind(scanner);
    EXPECT_EQ(bar("binarization_value").value(), 9);
}

TEST_F(BadScanner, CheckBoxesAreCarriedToo)
{
    FakeScanner scanner;
    scanner.add(Option::integer("brightness", 1));
    scanner.add(Option::array("punch-hole-removal", {0, 0}));
    bind(scanner);
    EXPECT_TRUE(checked("punch_hole_removal"));
}

// The count is read before every set as well; those reads are not part of the walk.
TEST_F(BadScanner, EverySingleReadOfTheWalkMayFail)
{
    FakeScanner good = fullScanner();
    bind(good, "Good");
    const int reads = static_cast<int>(good.journal().reads().size()) + 1;
    for (int n = 1; n <= reads; ++n) {
        FakeScanner scanner = fullScanner();
        scanner.failNth(CallKind::Get, n, SANE_STATUS_IO_ERROR);
        bind(scanner, ("Scanner" + std::to_string(n)).c_str());
        if (n > 1) { // without a count there is no walk
            EXPECT_EQ(itemsOf("source").size(), 3) << n;
            EXPECT_EQ(scanner.journal().setsOf("poweroff").size(), 1U) << n;
        }
        scanner.mend();
        expectUsable();
    }
}

TEST_F(BadScanner, EverySingleDescriptorMayBeMissing)
{
    FakeScanner good = fullScanner();
    bind(good, "Good");
    const int descriptors = good.journal().count(CallKind::Describe);
    for (int n = 2; n <= descriptors; n += 3) {
        FakeScanner scanner = fullScanner();
        scanner.failNth(CallKind::Describe, n, SANE_STATUS_IO_ERROR);
        bind(scanner, ("Scanner" + std::to_string(n)).c_str());
        scanner.mend();
        expectUsable();
    }
}

TEST_F(BadScanner, TheScannerMayVanishAtAnyMoment)
{
    FakeScanner good = fullScanner();
    bind(good, "Good");
    const int calls = static_cast<int>(good.journal().calls().size());
    for (int n = 1; n <= calls; n += 7) {
        FakeScanner scanner = fullScanner();
        scanner.failAllAfter(n, SANE_STATUS_IO_ERROR);
        bind(scanner, ("Scanner" + std::to_string(n)).c_str());
        dialog().setAllParam();
        EXPECT_FALSE(dialog().updating) << n;
    }
}
