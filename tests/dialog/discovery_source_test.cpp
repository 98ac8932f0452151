// Paper sources, and what the scanner is asked beyond reading: flatbed length and long paper.
#include "dialog_fixture.h"
#include "support/messages.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSignalSpy>

#include <widgets/picturebox.h>
#include <widgets/previewui.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

using namespace kestrel::test;

namespace {

const QString feeder = QStringLiteral("文档进纸器");
const QString flatbed = QStringLiteral("平板");
const QString automatic = QStringLiteral("自动选择纸张来源");

struct SourceRow
{
    const char* name;
    Strings entries;
    QStringList items;
    int kind;
    int bothPaths;
};

class SourceList : public DialogTest, public testing::WithParamInterface<SourceRow>
{
};

using SourceMeasures = DialogTest;

} // namespace

TEST_P(SourceList, BecomesTheItemsOfTheCombo)
{
    const SourceRow& row = GetParam();
    FakeScanner scanner;
    scanner.add(FakeOption::choice("source", row.entries, ""));
    bind(scanner);
    EXPECT_EQ(itemsOf("source"), row.items);
    EXPECT_EQ(dialog().device_kind, row.kind);
    EXPECT_EQ(dialog().has_both_paths, row.bothPaths);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SourceList,
    testing::Values(
        SourceRow{"FlatbedOnly", {"Flatbed"}, {flatbed}, 0, 0},
        SourceRow{"FeederOnly", {"ADF Front", "ADF Back", "ADF Duplex"}, {feeder}, 1, 0},
        SourceRow{"FlatbedFirst", {"Flatbed", "ADF Front"}, {flatbed, feeder}, 0, 0},
        SourceRow{"FeederFirst", {"ADF Front", "Flatbed"}, {feeder, flatbed}, 1, 0},
        SourceRow{"AutomaticLast",
                  {"Flatbed", "ADF Front", "Automatic"},
                  {feeder, flatbed, automatic},
                  2,
                  1},
        SourceRow{"AutomaticFirst",
                  {"Automatic", "Flatbed", "ADF Front"},
                  {feeder, flatbed, automatic},
                  2,
                  1},
        SourceRow{"AutomaticAlone", {"Automatic"}, {feeder, flatbed, automatic}, 2, 1},
        SourceRow{"AutomaticStopsTheWalk",
                  {"Automatic", "Flatbed", "Flatbed", "ADF Front"},
                  {feeder, flatbed, automatic},
                  2,
                  1},
        SourceRow{"AnyLetterCase", {"flatbed", "adf front"}, {flatbed, feeder}, 0, 0},
        SourceRow{"AutomaticInAnyLetterCase", {"AUTOMATIC"}, {feeder, flatbed, automatic}, 2, 1},
        SourceRow{"Unknown", {"ADF Back", "ADF Duplex", "Transparency"}, {}, -1, 0},
        SourceRow{"Empty", {}, {}, -1, 0}),
    [](const testing::TestParamInfo<SourceRow>& info) { return std::string(info.param.name); });

TEST_F(SourceMeasures, AnAutomaticScannerIsSwitchedToItsFlatbed)
{
    FakeScanner scanner = fullScanner();
    scanner.recordWholeBuffers();
    bind(scanner);
    ASSERT_EQ(scanner.journal().setsOf("source"), (Strings{"Flatbed"}));
    const Call call = scanner.journal().setCallsOf("source").at(0);
    ASSERT_EQ(call.raw.size(), 64U);
    std::vector<unsigned char> expected(64, 0);
    std::memcpy(expected.data(), "Flatbed", 7);
    EXPECT_EQ(call.raw, expected);
    EXPECT_EQ(dialog().source_option, scanner.indexOf("source"));
}

TEST_F(SourceMeasures, TheFlatbedLengthIsReadAfterTheSwitch)
{
    ScannerModel model;
    model.flatbedHeight = 297.9;
    FakeScanner scanner = makeScanner(model);
    bind(scanner);
    EXPECT_EQ(dialog().flatbed_max_length, 297);
    EXPECT_EQ(dialog().br_y_option, scanner.indexOf("br-y"));
    EXPECT_DOUBLE_EQ(real("br_y").maximum(), 355.6);
}

TEST_F(SourceMeasures, TheRulerTakesTheFlatbedLength)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    // 10000 / 297 = 33.6, cut to 33, raised to a multiple of 5.
    EXPECT_EQ(child<PreViewUI>(dialog(), "widget_5").getStandard(), 35);
}

TEST_F(SourceMeasures, TheRulerTakesTheLongestHeightOtherwise)
{
    FakeScanner scanner = feederScanner();
    bind(scanner);
    // 10000 / 355.6 = 28.1, cut to 28, raised to a multiple of 5.
    EXPECT_EQ(child<PreViewUI>(dialog(), "widget_5").getStandard(), 30);
    EXPECT_EQ(dialog().flatbed_max_length, 0);
}

TEST_F(SourceMeasures, ThePreviewBoxTakesTheRulersScale)
{
    FakeScanner full = fullScanner();
    FakeScanner feederOnly = feederScanner();
    for (FakeScanner* scanner : {&full, &feederOnly}) {
        bind(*scanner);
        const int standard = child<PreViewUI>(dialog(), "widget_5").getStandard();
        QSignalSpy selected(&child<PreviewBoxUI>(dialog(), "preview_box"), &PreviewBoxUI::selected);
        dialog().reset_preview();
        ASSERT_EQ(selected.count(), 1);
        EXPECT_EQ(selected.at(0).at(1).toInt(), standard);
    }
}

TEST_F(SourceMeasures, WithoutAutomaticTheSourceIsNotTouched)
{
    for (auto* const make : {flatbedAndFeederScanner, feederAndFlatbedScanner, flatbedScanner}) {
        FakeScanner scanner = make();
        bind(scanner);
        EXPECT_FALSE(scanner.journal().wasSet("source"));
        EXPECT_EQ(dialog().flatbed_max_length, 0);
    }
}

TEST_F(SourceMeasures, TheSwitchIsLogged)
{
    FakeScanner scanner = fullScanner();
    scanner.failOption(CallKind::Set, "source", SANE_STATUS_DEVICE_BUSY);
    const DebugLines debug;
    bind(scanner);
    const QString index = QString::number(scanner.indexOf("source"));
    int found = 0;
    for (const DebugLine& line : debug.lines()) {
        if (line.text.contains(QStringLiteral("Flatbed"))) {
            ++found;
            EXPECT_TRUE(line.text.contains(index)) << line.text.toStdString();
            EXPECT_TRUE(line.text.contains(QString::number(SANE_STATUS_DEVICE_BUSY)))
                << line.text.toStdString();
            const QByteArray baseName = line.file.mid(line.file.lastIndexOf('/') + 1);
            EXPECT_TRUE(baseName.startsWith("kestrelsetting")) << baseName.constData();
        }
    }
    EXPECT_EQ(found, 1);
}

TEST_F(SourceMeasures, TheFlatbedLengthIsLogged)
{
    FakeScanner scanner = fullScanner();
    const DebugLines debug;
    bind(scanner);
    const std::vector<DebugLine> lines = debug.lines();
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](const DebugLine& line) {
        return line.text.contains(QStringLiteral("297"));
    }));
}

TEST_F(SourceMeasures, AFailedSwitchDoesNotStopTheBinding)
{
    FakeScanner scanner = fullScanner();
    scanner.failOption(CallKind::Set, "source", SANE_STATUS_IO_ERROR);
    bind(scanner);
    EXPECT_EQ(itemsOf("source").size(), 3);
    EXPECT_EQ(dialog().flatbed_max_length, 355);
    EXPECT_TRUE(scanner.journal().wasSet("poweroff"));
}

TEST_F(SourceMeasures, WithoutAHeightTheFlatbedLengthStaysUnknown)
{
    FakeScanner scanner;
    scanner.add(FakeOption::choice("source", {"Automatic"}, "Automatic"));
    bind(scanner);
    EXPECT_EQ(dialog().flatbed_max_length, 0);
    EXPECT_EQ(itemsOf("source").size(), 3);
}

TEST_F(SourceMeasures, LongPaperHeightsAreMeasuredInBothStates)
{
    FakeScanner scanner = feederScanner();
    bind(scanner);
    EXPECT_EQ(dialog().long_paper_max_height, 3000 * 65536);
    EXPECT_EQ(dialog().normal_max_height,
              scanner.option("br-y").descriptor()->constraint.range->max);
    EXPECT_NEAR(dialog().normal_max_height / 65536.0, 355.6, 0.001);
    EXPECT_EQ(scanner.journal().setsOf("long-paper-scan"), (Strings{"1", "0"}));
}

TEST_F(SourceMeasures, LongPaperThatWasOnIsSwitchedBackOn)
{
    FakeScanner scanner = feederScanner();
    scanner.option("long-paper-scan").word(1);
    bind(scanner);
    EXPECT_EQ(scanner.journal().setsOf("long-paper-scan"), (Strings{"1", "0", "1"}));
    EXPECT_EQ(scanner.option("long-paper-scan").decoded(), "1");
}

TEST_F(SourceMeasures, AnOddLongPaperValueIsPutBackAsItWas)
{
    FakeScanner scanner = feederScanner();
    scanner.option("long-paper-scan").word(7);
    bind(scanner);
    EXPECT_EQ(scanner.journal().setsOf("long-paper-scan"), (Strings{"1", "0", "7"}));
}

TEST_F(SourceMeasures, InactiveLongPaperIsNotMeasured)
{
    FakeScanner scanner = feederScanner();
    scanner.option("long-paper-scan").inactive();
    bind(scanner);
    EXPECT_FALSE(scanner.journal().wasSet("long-paper-scan"));
    EXPECT_EQ(dialog().long_paper_max_height, 0);
    EXPECT_EQ(dialog().normal_max_height, 0);
}

TEST_F(SourceMeasures, LongPaperIsMeasuredAfterTheWalk)
{
    FakeScanner scanner = feederScanner();
    bind(scanner);
    const std::vector<Call> calls = scanner.journal().calls();
    std::size_t firstSet = 0;
    std::size_t lastWalked = 0;
    const SANE_Int last = static_cast<SANE_Int>(scanner.names().size());
    for (std::size_t i = 0; i < calls.size(); ++i) {
        if (calls[i].kind == CallKind::Set && firstSet == 0) {
            firstSet = i;
        }
        if (calls[i].kind == CallKind::Describe && calls[i].index == last && lastWalked == 0) {
            lastWalked = i;
        }
    }
    EXPECT_GT(firstSet, lastWalked);
    EXPECT_GT(lastWalked, 0U);
}

TEST_F(SourceMeasures, ABindingSetsNothingBeyondItsMeasuresAndThePower)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    EXPECT_EQ(
        scanner.journal().sets(),
        (Strings{"long-paper-scan=1", "long-paper-scan=0", "source=Flatbed", "powersaving=Enable",
                 "powersaving-time=15", "poweroff=Enable", "poweroff-time=120"}));
}

TEST_F(SourceMeasures, ALostLongPaperValueIsNotInvented)
{
    FakeScanner scanner = feederScanner();
    scanner.option("long-paper-scan").word(1);
    scanner.failOption(CallKind::Get, "long-paper-scan", SANE_STATUS_IO_ERROR);
    bind(scanner);
    const Strings sets = scanner.journal().setsOf("long-paper-scan");
    ASSERT_GE(sets.size(), 2U);
    EXPECT_EQ(Strings(sets.begin(), sets.begin() + 2), (Strings{"1", "0"}));
    EXPECT_EQ(sets.size(), 2U);
}
