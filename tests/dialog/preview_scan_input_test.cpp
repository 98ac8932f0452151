// The user and the host during a preview: what they do meanwhile neither counts nor harms.
#include "preview_dialog.h"
#include "support/message_boxes.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <utility>

using namespace kestrel::test;

namespace {

class PreviewInput : public PreviewTest
{
protected:
    PreviewInput() { start(); }

    /// Runs @p action in the middle of the next preview's reading, once.
    void meanwhile(std::function<void()> action)
    {
        scanner.before(CallKind::Read, [this, action = std::move(action)](FakeScanner&) {
            if (!m_done) {
                m_done = true;
                action();
            }
        });
    }
    /// Has @p action run by the next event loop, as a host's timer would.
    void afterwards(const std::function<void()>& action)
    {
        meanwhile([action] { QTimer::singleShot(0, qApp, action); });
    }
    bool done() const { return m_done; }

    static void postKey(QWidget& receiver, int key)
    {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QApplication::postEvent(&receiver, new QKeyEvent(type, key, Qt::NoModifier));
        }
    }
    static void postClick(QWidget& receiver)
    {
        const QPointF at = receiver.rect().center();
        QApplication::postEvent(&receiver,
                                new QMouseEvent(QEvent::MouseButtonPress, at, Qt::LeftButton,
                                                Qt::LeftButton, Qt::NoModifier));
        QApplication::postEvent(&receiver,
                                new QMouseEvent(QEvent::MouseButtonRelease, at, Qt::LeftButton,
                                                Qt::NoButton, Qt::NoModifier));
    }

private:
    bool m_done = false;
};

} // namespace

TEST_F(PreviewInput, ThePointerSaysWaitWhileTheScannerWorks)
{
    int seen = 0;
    for (const CallKind kind : {CallKind::Start, CallKind::Parameters, CallKind::Read}) {
        scanner.before(kind, [&seen](FakeScanner&) {
            ASSERT_NE(QApplication::overrideCursor(), nullptr);
            EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
            ++seen;
        });
    }
    scan(colourFrame(20, 10));
    EXPECT_EQ(seen, 3);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(PreviewInput, TheButtonCannotBePressedMeanwhile)
{
    scanner.addFrame(colourFrame(20, 10));
    meanwhile([this] {
        EXPECT_FALSE(button("preview").isEnabled());
        button("preview").click();
        dialog().on_preview_clicked();
    });
    scan(colourFrame(6, 6));
    EXPECT_TRUE(done());
    EXPECT_EQ(calls(), "sSPRC");
    EXPECT_EQ(scanner.framesLeft(), 1);
    expectColours(20, 10, 9);
    expectReady();
}

TEST_F(PreviewInput, WhatWasClickedMeanwhileIsDropped)
{
    scanner.addFrame(colourFrame(20, 10));
    meanwhile([this] {
        for (const char* name : {"preview", "sure", "cancel"}) {
            postClick(button(name));
        }
    });
    press(button("preview"));
    settle();
    EXPECT_TRUE(done());
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_EQ(calls(), "sSPRC");
    expectReady();
}

TEST_F(PreviewInput, WhatWasTypedMeanwhileIsDroppedAndTheFocusStays)
{
    QAbstractButton& preview = button("preview");
    preview.setFocus();
    ASSERT_TRUE(preview.hasFocus());
    scanner.addFrame(colourFrame(20, 10)).addFrame(colourFrame(6, 6));
    meanwhile([&] {
        for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
            postKey(preview, key);
            postKey(dialog(), key);
        }
    });
    QTest::keyClick(&preview, Qt::Key_Space);
    settle();
    EXPECT_TRUE(done());
    EXPECT_EQ(calls(), "sSPRC");
    EXPECT_EQ(scanner.framesLeft(), 1);
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_TRUE(preview.hasFocus());
    expectReady();
}

TEST_F(PreviewInput, ARefusalIsNotAnsweredByWhatWasTypedBefore)
{
    FakeFrame refused = colourFrame(6, 6);
    refused.start = SANE_STATUS_JAMMED;
    scanner.before(CallKind::Start, [this](FakeScanner&) { postKey(dialog(), Qt::Key_Space); });
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Ok);
    button("preview").setFocus();
    scan(refused);
    EXPECT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(calls(), "sSC");
    // Without a window manager the dialog does not become active again by itself.
    EXPECT_EQ(dialog().focusWidget(), &button("preview"));
}

TEST_F(PreviewInput, TheFocusOfAnotherControlIsNotTaken)
{
    real("offset_x").setFocus();
    scan(colourFrame(20, 10));
    EXPECT_TRUE(real("offset_x").hasFocus());
}

TEST_F(PreviewInput, AfterwardsClicksCountAgain)
{
    scan(colourFrame(20, 10));
    click(button("sure"));
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(PreviewInput, ADialogDeletedMeanwhileHarmsNobody)
{
    afterwards([this] { destroy(); });
    scanner.addFrame(colourFrame(20, 10));
    QAbstractButton* const preview = &button("preview");
    preview->click();
    EXPECT_EQ(calls(), "sSPRC");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(PreviewInput, ADialogDeletedDuringARefusedStartShowsNothing)
{
    scanner.before(CallKind::Start,
                   [this](FakeScanner&) { QTimer::singleShot(0, qApp, [this] { destroy(); }); });
    const MessageBoxes boxes;
    QAbstractButton* const preview = &button("preview");
    preview->click();
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

// A call of the scanner may let the host run its events.
TEST_F(PreviewInput, ADialogDeletedInsideAReadIsNotTouchedAgain)
{
    bool deleted = false;
    scanner.before(CallKind::Read, [this, &deleted](FakeScanner&) {
        if (!std::exchange(deleted, true)) {
            destroy();
        }
    });
    scanner.addFrame(colourFrame(20, 10));
    QAbstractButton* const preview = &button("preview");
    preview->click();
    EXPECT_TRUE(deleted);
    EXPECT_EQ(scanner.journal().count(CallKind::Cancel), 1);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(PreviewInput, ADialogDeletedUnderTheRefusalHarmsNobody)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Ok);
    boxes.whenShown([this](QMessageBox&) { destroy(); });
    QAbstractButton* const preview = &button("preview");
    preview->click();
    EXPECT_EQ(boxes.shown().size(), 1U);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(PreviewInput, ADialogClosedMeanwhileHasItsPictureWhenItComesBack)
{
    afterwards([this] { dialog().close(); });
    scan(colourFrame(20, 10));
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(scanner.journal().count(CallKind::Cancel), 1);
    expectReady();
    show();
    openTab();
    expectColours(20, 10, 9);
}

TEST_F(PreviewInput, AnotherScannerBoundMeanwhileIsLeftAlone)
{
    FakeScanner other = feederScanner();
    afterwards([this, &other] {
        bind(other, "ScannerB");
        other.clearJournal();
    });
    scan(colourFrame(20, 10));
    EXPECT_EQ(scanner.journal().count(CallKind::Cancel), 1);
    EXPECT_TRUE(other.journal().calls().empty()) << other.journal().text();
    expectReady();

    other.addFrame(colourFrame(6, 6));
    press(button("preview"));
    expectColours(6, 6, 5);
    EXPECT_EQ(other.journal().count(CallKind::Cancel), 1);
    EXPECT_EQ(scanner.journal().count(CallKind::Start), 1);
    destroy();
}

TEST_F(PreviewInput, ARefusalOfTheLastScannerIsNotToldOfTheNext)
{
    FakeScanner other = feederScanner();
    scanner.before(CallKind::Start, [this, &other](FakeScanner&) {
        QTimer::singleShot(0, qApp, [this, &other] {
            bind(other, "ScannerB");
            other.clearJournal();
        });
    });
    const MessageBoxes boxes;
    press(button("preview"));
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_TRUE(other.journal().calls().empty()) << other.journal().text();
    expectReady();
    destroy();
}
