// Sizes and counts that no honest scanner has, and scanners that cannot tell their heights.
#include "bad_scanner.h"

#include "support/fake_state.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <tuple>
#include <utility>

using namespace kestrel::test;

namespace {

using HostileSizes = BadScanner;
using Bytes = std::vector<unsigned char>;

constexpr SANE_Int largest = 1 << 20;

/// A value of @p size bytes that begins with @p word.
Bytes bytesFrom(SANE_Word word, std::size_t size, unsigned char rest = 0)
{
    Bytes bytes(size, rest);
    std::memcpy(bytes.data(), &word, sizeof(word));
    return bytes;
}

SANE_Word wordAt(const Bytes& bytes, std::size_t index)
{
    SANE_Word word = 0;
    std::memcpy(&word, &bytes.at(index * sizeof(word)), sizeof(word));
    return word;
}

bool longPaperIsOn(FakeScanner& scanner)
{
    return wordAt(scanner.option("long-paper-scan").value(), 0) != 0;
}

/// Option 0, which has no name.
FakeOption& countOf(FakeScanner& scanner)
{
    return static_cast<FakeScanner::State*>(scanner.handle())->count;
}

/// Long paper is what was confirmed last.
const char* const confirmedLongPaper = "[ScannerAconfig_version]\nconfig_version=102\n"
                                       "[ScannerA]\nlong_paper_scan=1\nscanrange_setting=0\n"
                                       "br_y=80\ntl_y=0\n";

class LongPaperHeight : public BadScanner
{
protected:
    void toggleAndExpectHeights(double on, double off)
    {
        for (int round = 0; round < 2; ++round) {
            button("long_paper_scan").setChecked(true);
            EXPECT_EQ(real("br_y").maximum(), on);
            button("long_paper_scan").setChecked(false);
            EXPECT_EQ(real("br_y").maximum(), off);
        }
    }
};

/// A scanner whose height is told in whole millimetres.
FakeScanner wholeMillimetres()
{
    FakeScanner scanner = feederScanner();
    scanner.option("br-y").type(SANE_TYPE_INT).range(0, 356).word(297);
    scanner.onSet("long-paper-scan", [](FakeScanner& self) {
        self.option("br-y").range(0, longPaperIsOn(self) ? 3000 : 356);
    });
    return scanner;
}

FakeScanner unlimitedHeight()
{
    FakeScanner scanner = feederScanner();
    scanner.option("br-y").unconstrained();
    scanner.onSet("long-paper-scan",
                  [](FakeScanner& self) { self.option("br-y").unconstrained(); });
    return scanner;
}

} // namespace

TEST_F(HostileSizes, ALargeLongPaperSwitchIsReadAndSetWhole)
{
    for (const SANE_Word before : {0, 1}) {
        FakeScanner scanner = feederScanner();
        scanner.option("long-paper-scan").size(4096).bytes(bytesFrom(before, 4096));
        scanner.onSet("long-paper-scan", [](FakeScanner& self) {
            self.option("br-y").limits(0.0, longPaperIsOn(self) ? 3000.0 : 355.5);
        });
        bind(scanner);
        const auto sets = scanner.journal().setCallsOf("long-paper-scan");
        ASSERT_EQ(sets.size(), before != 0 ? 3U : 2U);
        for (std::size_t i = 0; i < sets.size(); ++i) {
            EXPECT_EQ(sets[i].raw, bytesFrom(i == 1 ? 0 : 1, 4096)) << i;
        }
        EXPECT_EQ(dialog().long_paper_max_height, SANE_FIX(3000.0));
        EXPECT_EQ(dialog().normal_max_height, SANE_FIX(355.5));
        EXPECT_EQ(longPaperIsOn(scanner), before != 0);
        expectUsable();
    }
}

TEST_F(HostileSizes, ALargeOptionCountIsReadWhole)
{
    for (const std::size_t size : {std::size_t{65}, std::size_t{68}, std::size_t{4096}}) {
        FakeScanner scanner = fullScanner();
        const auto count = static_cast<SANE_Word>(scanner.names().size() + 1);
        countOf(scanner).size(static_cast<SANE_Int>(size)).bytes(bytesFrom(count, size, 0xa5));
        bind(scanner);
        EXPECT_EQ(combo("source").count(), 3) << size;
        EXPECT_EQ(dialog().kst_SetParam("brightness", "7"), SANE_STATUS_GOOD) << size;
        EXPECT_EQ(scanner.option("brightness").decoded(), "7") << size;
        expectUsable();
    }
}

TEST_F(HostileSizes, AnAbsurdOptionCountIsNotAskedFor)
{
    FakeScanner scanner = fullScanner();
    countOf(scanner).size(INT_MAX);
    bind(scanner);
    expectUsable();
    EXPECT_EQ(dialog().kst_SetParam("brightness", "7"), SANE_STATUS_INVAL);
    const Journal journal = scanner.journal();
    EXPECT_EQ(journal.count(CallKind::Get), 0);
    EXPECT_EQ(journal.count(CallKind::Set), 0);
}

TEST_F(HostileSizes, AnAbsurdOptionIsNeitherReadNorSet)
{
    const std::vector<std::pair<std::string, std::string>> values{
        {"brightness", "5"},   {"invert", "1"},        {"br-x", "100.5"},
        {"source", "Flatbed"}, {"serial-number", "X"}, {"gamma-table", ""}};
    for (const SANE_Int size : {largest + 1, INT_MAX}) {
        FakeScanner scanner = fullScanner();
        for (const auto& [name, value] : values) {
            scanner.option(name).size(size);
        }
        bind(scanner);
        for (const auto& [name, value] : values) {
            EXPECT_EQ(dialog().kst_SetParam(name.c_str(), value.c_str()), SANE_STATUS_INVAL)
                << name << ' ' << size;
        }
        expectUsable();
        const Journal journal = scanner.journal();
        const Strings reads = journal.reads();
        for (const auto& [name, value] : values) {
            EXPECT_FALSE(journal.wasSet(name)) << name << ' ' << size;
            EXPECT_EQ(std::count(reads.begin(), reads.end(), name), 0) << name << ' ' << size;
        }
    }
}

TEST_F(HostileSizes, AnOptionLargerThanAWordIsSetFromABufferOfItsSize)
{
    for (const SANE_Int size : {-1, 0, 1, 4, 5, 400, 4096, largest}) {
        FakeScanner scanner = fullScanner();
        for (const char* const name : {"brightness", "invert", "br-x"}) {
            scanner.option(name).size(size);
        }
        bind(scanner);
        scanner.clearJournal();
        const std::size_t expected = size > 4 ? static_cast<std::size_t>(size) : 4;
        const std::vector<std::tuple<const char*, const char*, SANE_Word>> values{
            {"brightness", "-5", -5}, {"invert", "1", 1}, {"br-x", "1.5", 98304}};
        for (const auto& [name, value, word] : values) {
            EXPECT_EQ(dialog().kst_SetParam(name, value), SANE_STATUS_GOOD) << name << ' ' << size;
            const auto sets = scanner.journal().setCallsOf(name);
            ASSERT_EQ(sets.size(), 1U) << name << ' ' << size;
            // Compared without printing a million bytes.
            EXPECT_TRUE(sets[0].raw == bytesFrom(word, expected)) << name << ' ' << size;
        }
    }
}

TEST_F(HostileSizes, AGammaTableOfMoreEntriesEndsWithTheLastOne)
{
    FakeScanner scanner = fullScanner();
    scanner.option("gamma-table").size(1024 * static_cast<SANE_Int>(sizeof(SANE_Word)));
    bind(scanner);
    bar("gamma_set").setValue(150);
    const auto& table = dialog().gamma_table;
    ASSERT_NE(table[100], table[255]);
    EXPECT_EQ(dialog().kst_SetParam("gamma-table", ""), SANE_STATUS_GOOD);
    const auto sets = scanner.journal().setCallsOf("gamma-table");
    ASSERT_EQ(sets.size(), 1U);
    ASSERT_EQ(sets[0].raw.size(), 4096U);
    for (std::size_t i = 0; i < 1024; ++i) {
        ASSERT_EQ(wordAt(sets[0].raw, i), table.at(std::min<std::size_t>(i, 255))) << i;
    }
}

TEST_F(HostileSizes, AHundredThousandOptionsAreWalkedAndNoMore)
{
    for (const SANE_Word count : {100000, 100001}) {
        FakeScanner scanner = fullScanner();
        scanner.reportCount(count);
        bind(scanner);
        EXPECT_EQ(combo("source").count(), 3);
        EXPECT_EQ(real("br_x").maximum(), 215.9);
        EXPECT_EQ(dialog().kst_SetParam("brightness", "9"), SANE_STATUS_GOOD);
        EXPECT_EQ(scanner.option("brightness").decoded(), "9");
        SANE_Int furthest = 0;
        for (const Call& call : scanner.journal().of(CallKind::Describe)) {
            furthest = std::max(furthest, call.index);
        }
        EXPECT_EQ(furthest, 99999);
        show();
        press(button("cancel"));
    }
}

TEST_F(HostileSizes, UnboundThereIsNothingToFind)
{
    const double width = real("br_x").maximum();
    EXPECT_EQ(dialog().GetOptionByName(), 0);
    EXPECT_EQ(real("br_x").maximum(), width);
    EXPECT_FALSE(dialog().updating);
    dialog().setAllParam();
    show();
    press(button("cancel"));
}

TEST_F(HostileSizes, NullTextsFromTheHostAreSurvived)
{
    const QString path = dialog().save_path;
    ASSERT_FALSE(path.isEmpty());
    dialog().setsavepath(nullptr);
    EXPECT_EQ(dialog().save_path, path);
    dialog().lockFunctionByVid(1, nullptr);
    FakeScanner scanner = fullScanner();
    bind(scanner);
    dialog().lockFunctionByVid(1, nullptr);
    expectUsable();
}

TEST_F(LongPaperHeight, StaysTheFormsWhereTheScannerHasNoLimit)
{
    FakeScanner scanner = unlimitedHeight();
    const double height = real("br_y").maximum();
    ASSERT_GT(height, 0.0);
    bind(scanner);
    EXPECT_EQ(real("br_y").maximum(), height);
    toggleAndExpectHeights(height, height);
    expectUsable();
}

TEST_F(LongPaperHeight, IsToldInWholeMillimetresToo)
{
    FakeScanner scanner = wholeMillimetres();
    bind(scanner);
    EXPECT_EQ(real("br_y").maximum(), 356.0);
    toggleAndExpectHeights(3000.0, 356.0);
    expectUsable();
}

TEST_F(LongPaperHeight, IsNotLostWithAScannerThatVanishesMeanwhile)
{
    for (const bool switchedOn : {false, true}) {
        for (int calls = 0; calls < 6; ++calls) {
            FakeScanner scanner = feederScanner();
            scanner.option("long-paper-scan").word(switchedOn ? 1 : 0);
            int sets = 0;
            scanner.onSet("long-paper-scan", [&](FakeScanner& self) {
                if (++sets == 1) {
                    self.failAllAfter(calls, SANE_STATUS_IO_ERROR);
                }
            });
            bind(scanner);
            ASSERT_GE(sets, 1);
            const std::string after = "after " + std::to_string(calls);
            for (const bool on : {true, false, true}) {
                button("long_paper_scan").setChecked(on);
                EXPECT_GE(real("br_y").maximum(), 355.6) << after;
            }
            expectUsable();
        }
    }
}

TEST_F(LongPaperHeight, IsThereWhenLongPaperIsLoaded)
{
    const std::vector<std::tuple<const char*, std::function<FakeScanner()>, double>> scanners{
        {"unlimited", unlimitedHeight, 100.0},
        {"whole millimetres", wholeMillimetres, 3000.0},
        {"vanishes",
         [] {
             FakeScanner scanner = feederScanner();
             scanner.onSet("long-paper-scan",
                           [](FakeScanner& self) { self.failAllAfter(0, SANE_STATUS_IO_ERROR); });
             return scanner;
         },
         355.6}};
    for (const auto& [name, make, height] : scanners) {
        const auto file = QStringLiteral("ScannerA.ini");
        dir().write(file, confirmedLongPaper);
        FakeScanner scanner = make();
        bind(scanner);
        EXPECT_TRUE(checked("long_paper_scan")) << name;
        EXPECT_EQ(real("br_y").maximum(), height) << name;
        EXPECT_EQ(real("br_y").value(), 80.0) << name;
    }
}
