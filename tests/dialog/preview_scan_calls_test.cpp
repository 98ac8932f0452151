// What a preview asks of the scanner, and a start that is refused.
#include "preview_dialog.h"
#include "support/message_boxes.h"

using namespace kestrel::test;

namespace {

using PreviewScan = PreviewTest;

} // namespace

TEST_F(PreviewScan, TellsStartsAsksReadsAndCancelsOnce)
{
    start();
    FakeFrame frame = colourFrame(20, 10);
    frame.chunks = {250};
    scan(frame);
    EXPECT_EQ(calls(), "sSPRRRC");
    EXPECT_TRUE(scanner.journal().straySets().empty());
    EXPECT_EQ(scanner.journal().setsOf("resolution"), (Strings{"75"}));
    expectColours(20, 10, 9);
    expectReady();
}

TEST_F(PreviewScan, EveryPreviewIsAScanOfItsOwn)
{
    start();
    scan(colourFrame(20, 10));
    scan(colourFrame(8, 30));
    EXPECT_EQ(calls(), "sSPRCsSPRC");
    expectColours(8, 30, 29);
}

TEST_F(PreviewScan, NothingIsReadBeyondTheFrame)
{
    start();
    FakeFrame frame = colourFrame(20, 10);
    frame.bytes.resize(5000, 0x11);
    scan(frame);
    EXPECT_EQ(calls(), "sSPRC");
    expectColours(20, 10, 9);
}

TEST_F(PreviewScan, WithoutAScannerNothingHappens)
{
    show();
    openTab();
    press(button("preview"));
    EXPECT_TRUE(picture().isNull());
    expectReady();
}

TEST_F(PreviewScan, WithoutAHandleNothingIsStarted)
{
    start();
    scanner.addFrame(colourFrame(20, 10));
    dialog().sane_handle = nullptr;
    const MessageBoxes boxes;
    press(button("preview"));
    EXPECT_TRUE(scanner.journal().calls().empty()) << scanner.journal().text();
    EXPECT_EQ(scanner.framesLeft(), 1);
    EXPECT_TRUE(boxes.shown().empty());
    expectReady();
}

TEST_F(PreviewScan, ARefusedStartIsToldAndCancelledOnce)
{
    start();
    scan(colourFrame(20, 10));
    for (int status = SANE_STATUS_UNSUPPORTED; status <= SANE_STATUS_ACCESS_DENIED; ++status) {
        scanner.clearJournal();
        FakeFrame refused = colourFrame(6, 6);
        refused.start = static_cast<SANE_Status>(status);
        MessageBoxes boxes;
        boxes.answer(QMessageBox::Ok);
        boxes.whenShown([this](QMessageBox&) {
            EXPECT_EQ(scanner.journal().count(CallKind::Cancel), 0);
            EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "the user is asked to wait";
        });
        scan(refused);
        ASSERT_EQ(boxes.shown().size(), 1U) << status;
        EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("提示"));
        EXPECT_EQ(boxes.shown()[0].icon, QMessageBox::Critical);
        EXPECT_EQ(calls(), "sSC") << status;
        expectColours(20, 10, 9);
        expectReady();
    }
}

TEST_F(PreviewScan, TheReasonIsTheScanners)
{
    start();
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Ok).answer(QMessageBox::Ok);
    press(button("preview")); // there is no page
    FakeFrame jammed = colourFrame(6, 6);
    jammed.start = SANE_STATUS_JAMMED;
    scan(jammed);
    ASSERT_EQ(boxes.shown().size(), 2U);
    EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("没有纸张"));
    EXPECT_EQ(boxes.shown()[1].text, QStringLiteral("文档进纸器被卡住"));
}

TEST_F(PreviewScan, AStatusNobodyKnowsIsNeitherToldNorCancelled)
{
    start();
    scan(colourFrame(20, 10));
    for (const int status : {12, 13, 15}) {
        scanner.clearJournal();
        FakeFrame refused = colourFrame(6, 6);
        refused.start = static_cast<SANE_Status>(status);
        const MessageBoxes boxes;
        scan(refused);
        EXPECT_TRUE(boxes.shown().empty()) << status;
        EXPECT_EQ(calls(), "sS") << status;
        expectColours(20, 10, 9);
        expectReady();
    }
}

TEST_F(PreviewScan, AfterARefusedStartTheNextOneWorks)
{
    start();
    {
        MessageBoxes boxes;
        boxes.answer(QMessageBox::Ok);
        press(button("preview"));
    }
    scan(colourFrame(20, 10));
    expectColours(20, 10, 9);
}

TEST_F(PreviewScan, ASetThatFailsDoesNotKeepThePreviewFromStarting)
{
    start();
    for (const char* name : {"mode", "resolution", "br-x", "source"}) {
        scanner.failOption(CallKind::Set, name, SANE_STATUS_IO_ERROR);
    }
    const MessageBoxes boxes;
    scan(colourFrame(20, 10));
    EXPECT_EQ(calls(), "sSPRC");
    expectColours(20, 10, 9);
    EXPECT_TRUE(boxes.shown().empty());
}
