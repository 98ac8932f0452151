// What the scanner is told before a preview, and what the user is told when a start fails.
#include "dialog_fixture.h"
#include "support/message_boxes.h"
#include "support/messages.h"

#include <QComboBox>
#include <QDoubleSpinBox>

#include <gtest/gtest.h>

using namespace kestrel::test;

namespace {

class PreviewParameters : public DialogTest
{
protected:
    Strings sent(FakeScanner& scanner)
    {
        scanner.clearJournal();
        dialog().setParamForPreview();
        return scanner.journal().sets();
    }
};

using ScanError = DialogTest;

const Strings fixedBeforeArea{"mode=Color",        "multistream-list=No Multi-Stream",
                              "resolution=75",     "brightness=0",
                              "contrast=0",        "autocropdeskew=0",
                              "long-paper-scan=0", "center-alignment=0",
                              "color-register=0"};
const Strings fixedAfterArea{"ultrasonic=Disable",
                             "additional-length-detection=Disable",
                             "rotate=None",
                             "eject-paper-opposite-side=0",
                             "blank-page-removal=0",
                             "punch-hole-removal=0",
                             "invert=0",
                             "split-image=None",
                             "book-scan-correction=0",
                             "background-processing=None",
                             "cachemode=None",
                             "cachemode-value=1",
                             "cachemode-use-default=0",
                             "auto-scan-source-setting=ADF Front"};

Strings sequence(const Strings& source, const Strings& area)
{
    Strings all = source;
    for (const Strings& part : {fixedBeforeArea, area, fixedAfterArea}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace

TEST_F(PreviewParameters, AFeederGetsTheWholeAreaAndNoSource)
{
    FakeScanner scanner = feederScanner();
    bindForTexts(scanner);
    EXPECT_EQ(sent(scanner), sequence({}, {"br-x=215.9", "br-y=355.6", "tl-x=0", "tl-y=0"}));
}

TEST_F(PreviewParameters, TwoSourcesAreLeftAsTheyAre)
{
    FakeScanner scanner = flatbedAndFeederScanner();
    bindForTexts(scanner);
    for (int i = 0; i < 2; ++i) {
        combo("source").setCurrentIndex(i);
        EXPECT_EQ(sent(scanner).front(), "mode=Color");
    }
}

TEST_F(PreviewParameters, ThreeSourcesFollowTheChoiceAndTheFlatbedsLength)
{
    FakeScanner scanner = fullScanner();
    bindForTexts(scanner);
    const Strings values{"ADF Front", "Flatbed", "Automatic"};
    for (int i = 0; i < 3; ++i) {
        combo("source").setCurrentIndex(i);
        EXPECT_EQ(sent(scanner), sequence({"source=" + values[static_cast<std::size_t>(i)]},
                                          {"br-x=215.9", "br-y=297", "tl-x=0", "tl-y=0"}));
    }
    combo("source").setCurrentIndex(-1);
    EXPECT_EQ(sent(scanner).front(), "source=Flatbed");
}

TEST_F(PreviewParameters, TheSourceIndexIsLogged)
{
    FakeScanner scanner = fullScanner();
    bindForTexts(scanner);
    combo("source").setCurrentIndex(2);
    const DebugLines debug;
    dialog().setParamForPreview();
    ASSERT_EQ(debug.lines().size(), 1U);
    EXPECT_EQ(debug.lines()[0].text, QStringLiteral("2"));
    EXPECT_EQ(debug.from("setParamForPreview").size(), 1U);
}

TEST_F(PreviewParameters, TheAreaComesFromTheLimitsNotTheValues)
{
    FakeScanner scanner = feederScanner();
    scanner.option("tl-x").limits(1.5, 200.0);
    scanner.option("tl-y").limits(2.0, 300.0);
    scanner.option("br-x").limits(10.0, 216.0);
    bindForTexts(scanner);
    real("br_x").setValue(100.0);
    real("br_y").setValue(100.0);
    dialog().use_preview_area = true;
    EXPECT_EQ(sent(scanner), sequence({}, {"br-x=216", "br-y=355.6", "tl-x=1.5", "tl-y=2"}));
}

TEST_F(PreviewParameters, ControlsAndDuplexFlagAreNotTouched)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    combo("resolution_gengel_slide").setCurrentIndex(5);
    dialog().double_side = true;
    dialog().scan_source_type = 2;
    dialog().setParamForPreview();
    EXPECT_EQ(combo("resolution_gengel_slide").currentIndex(), 5);
    EXPECT_TRUE(dialog().double_side);
    EXPECT_EQ(dialog().scan_source_type, 2);
}

TEST_F(PreviewParameters, TheGammaTableIsNotSent)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    scanner.clearJournal();
    dialog().setParamForPreview();
    EXPECT_FALSE(scanner.journal().wasSet("gamma-table"));
}

TEST_F(PreviewParameters, WithoutAScannerNothingIsSent)
{
    dialog().setParamForPreview();
    FakeScanner scanner = fullScanner();
    bind(scanner);
    scanner.clearJournal();
    dialog().sane_handle = nullptr;
    dialog().setParamForPreview();
    EXPECT_TRUE(scanner.journal().calls().empty());
}

TEST_F(ScanError, TellsTheReasonAndThenCancels)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const std::vector<std::pair<SANE_Status, QString>> rows{
        {SANE_STATUS_UNSUPPORTED, QStringLiteral("扫描仪状态错误")},
        {SANE_STATUS_CANCELLED, QStringLiteral("扫描仪状态错误")},
        {SANE_STATUS_DEVICE_BUSY, QStringLiteral("扫描仪忙，请稍后再试")},
        {SANE_STATUS_INVAL, QStringLiteral("数据无效，没有打开的设备")},
        {SANE_STATUS_EOF, QStringLiteral("扫描仪状态错误")},
        {SANE_STATUS_JAMMED, QStringLiteral("文档进纸器被卡住")},
        {SANE_STATUS_NO_DOCS, QStringLiteral("没有纸张")},
        {SANE_STATUS_COVER_OPEN, QStringLiteral("扫描仪的盖子被打开")},
        {SANE_STATUS_IO_ERROR, QStringLiteral("扫描仪输入输出错误，可能扫描仪已断开")},
        {SANE_STATUS_NO_MEM, QStringLiteral("扫描仪状态错误")},
        {SANE_STATUS_ACCESS_DENIED, QStringLiteral("对资源的访问已被拒绝")},
    };
    for (const auto& [status, text] : rows) {
        scanner.clearJournal();
        MessageBoxes boxes;
        boxes.answer(QMessageBox::Ok);
        boxes.whenShown(
            [&scanner](QMessageBox&) { EXPECT_EQ(scanner.journal().count(CallKind::Cancel), 0); });
        dialog().scan_error(status);
        ASSERT_EQ(boxes.shown().size(), 1U) << status;
        EXPECT_EQ(boxes.shown()[0].text, text);
        EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("提示"));
        EXPECT_EQ(boxes.shown()[0].icon, QMessageBox::Critical);
        EXPECT_EQ(boxes.shown()[0].buttons, QMessageBox::Ok);
        EXPECT_FALSE(boxes.shown()[0].hadParent);
        EXPECT_EQ(scanner.journal().count(CallKind::Cancel), 1) << status;
    }
}

TEST_F(ScanError, SuccessAndUnknownStatusesAreIgnored)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const MessageBoxes boxes;
    for (const int status : {0, 12, 15}) {
        dialog().scan_error(static_cast<SANE_Status>(status));
    }
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_EQ(scanner.journal().count(CallKind::Cancel), 0);
}

TEST_F(ScanError, DeletingTheDialogUnderTheMessageIsSafe)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Ok);
    boxes.whenShown([this](QMessageBox&) { destroy(); });
    dialog().scan_error(SANE_STATUS_NO_DOCS);
    EXPECT_EQ(boxes.shown().size(), 1U);
}

TEST_F(ScanError, AScannerThatIsBoundUnderTheMessageIsNotCancelled)
{
    FakeScanner scanner = fullScanner();
    FakeScanner other = fullScanner();
    bind(scanner);
    scanner.clearJournal();
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Ok);
    boxes.whenShown([&](QMessageBox&) { bind(other); });
    dialog().scan_error(SANE_STATUS_NO_DOCS);
    EXPECT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(scanner.journal().count(CallKind::Cancel), 0);
    EXPECT_EQ(other.journal().count(CallKind::Cancel), 0);
}
