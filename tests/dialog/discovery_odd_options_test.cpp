// Scanners with odd options: what cannot be bound is left out, nothing breaks.
#include "bad_scanner.h"

using namespace kestrel::test;

TEST_F(BadScanner, WordOptionsOfSizeZeroAreReadAsAWord)
{
    FakeScanner scanner;
    scanner.add(Option::integer("brightness", 21).size(0));
    scanner.add(Option::integer("contrast", 22).size(-8));
    bind(scanner);
    EXPECT_EQ(bar("brightness_set").value(), 21);
    EXPECT_EQ(bar("contrast_set").value(), 22);
}

TEST_F(BadScanner, TextOptionsOfOddSizesDoNoHarm)
{
    int round = 0;
    for (const SANE_Int size : {0, 1, -1, 3, INT_MIN, INT_MAX, 1 << 30}) {
        FakeScanner scanner;
        scanner.add(Option::text("rotate", "180").size(size));
        scanner.add(Option::text("ultrasonic", "Enable").size(size));
        scanner.add(Option::text("serial-number", "KS").size(size));
        scanner.add(Option::text("device-info", "1:2").size(size));
        scanner.add(Option::text("mode", "Color").size(size));
        scanner.add(Option::integer("brightness", 30 + round));
        bind(scanner, ("Scanner" + std::to_string(round)).c_str());
        EXPECT_EQ(bar("brightness_set").value(), 30 + round) << size;
        ++round;
    }
}

TEST_F(BadScanner, TextsWithoutTerminatorEndAtTheirSize)
{
    FakeScanner scanner;
    scanner.add(Option::text("serial-number", "").size(4).bytes({'A', 'B', 'C', 'D'}));
    bind(scanner);
    EXPECT_EQ(dialog().serial_text, QStringLiteral("序列号:  ABCD\n"));
}

TEST_F(BadScanner, TextsThatAreNotUtf8DoNoHarm)
{
    FakeScanner scanner;
    scanner.add(Option::text("serial-number", "\xff\xfe\x81"));
    scanner.add(Option::text("device-info", "\xff:\xc3"));
    scanner.add(Option::text("rotate", "\xff"));
    bind(scanner);
    EXPECT_TRUE(dialog().serial_text.startsWith(QStringLiteral("序列号:  ")));
    EXPECT_EQ(combo("rotate").currentIndex(), 0);
}

TEST_F(BadScanner, StringListsMayBeMissing)
{
    int round = 0;
    for (const auto& spoil : std::vector<std::function<void(Option&)>>{
             [](Option& option) { option.nullConstraint(); },
             [](Option& option) { option.unconstrained(); },
             [](Option& option) { option.strings({}); },
             [](Option& option) { option.range(0, 1); },
             [](Option& option) {
                 option.words({1, 2});
             },
         }) {
        FakeScanner scanner = fullScanner();
        spoil(scanner.option("source"));
        spoil(scanner.option("background-processing-setting"));
        bind(scanner, ("Scanner" + std::to_string(round++)).c_str());
        EXPECT_EQ(combo("source").count(), 0);
        EXPECT_EQ(dialog().device_kind, -1);
        EXPECT_EQ(dialog().has_both_paths, 0);
        expectUsable();
    }
}

TEST_F(BadScanner, RangesMayBeMissingNullOrOfAnotherKind)
{
    int round = 0;
    for (const auto& spoil : std::vector<std::function<void(Option&)>>{
             [](Option& option) { option.nullConstraint(); },
             [](Option& option) { option.unconstrained(); },
             [](Option& option) { option.words({}); },
             [](Option& option) { option.words({65536}); },
             [](Option& option) {
                 option.strings({"1", "2"});
             },
             [](Option& option) { option.range(INT_MAX, INT_MIN); },
             [](Option& option) { option.range(INT_MIN, INT_MAX); },
             [](Option& option) { option.range(0, 0); },
             [](Option& option) { option.range(-10, -20); },
         }) {
        FakeScanner scanner = fullScanner();
        for (const std::string& name : scanner.names()) {
            spoil(scanner.option(name));
        }
        bind(scanner, ("Scanner" + std::to_string(round++)).c_str());
        EXPECT_EQ(dialog().serial_text, QStringLiteral("序列号:  KS-2024-0042\n"));
        expectUsable();
    }
}

TEST_F(BadScanner, ExtremeValuesAreHeldWithinTheControls)
{
    int round = 0;
    for (const SANE_Word word : {INT_MIN, INT_MAX, -1, 0}) {
        FakeScanner scanner = fullScanner();
        for (const std::string& name : scanner.names()) {
            if (scanner.option(name).isNumber() && scanner.option(name).size() == 4) {
                scanner.option(name).word(word);
            }
        }
        bind(scanner, ("Scanner" + std::to_string(round++)).c_str());
        EXPECT_GE(bar("brightness_set").value(), -100);
        EXPECT_LE(bar("brightness_set").value(), 100);
        expectUsable();
    }
}

TEST_F(BadScanner, OptionsOfAnUnexpectedTypeDoNoHarm)
{
    int round = 0;
    for (const SANE_Value_Type type :
         {SANE_TYPE_BOOL, SANE_TYPE_INT, SANE_TYPE_FIXED, SANE_TYPE_STRING, SANE_TYPE_BUTTON,
          SANE_TYPE_GROUP, static_cast<SANE_Value_Type>(7)}) {
        FakeScanner scanner = fullScanner();
        for (const std::string& name : scanner.names()) {
            scanner.option(name).type(type);
        }
        bind(scanner, ("Scanner" + std::to_string(round++)).c_str());
        expectUsable();
    }
}

TEST_F(BadScanner, TheSameOptionTwiceCountsTwice)
{
    FakeScanner scanner;
    scanner.add(Option::integer("brightness", 5)).add(Option::integer("brightness", 6));
    scanner.add(Option::choice("source", {"Flatbed"}, "Flatbed"));
    scanner.add(Option::choice("source", {"ADF Front"}, "ADF Front"));
    bind(scanner);
    EXPECT_EQ(bar("brightness_set").value(), 6);
    EXPECT_EQ(itemsOf("source"),
              (QStringList{QStringLiteral("平板"), QStringLiteral("文档进纸器")}));
    EXPECT_EQ(dialog().device_kind, 0);
}
