// What OK asks about the area drawn on the preview.
#include "closing_fixture.h"
#include "support/message_boxes.h"

#include <QAbstractButton>
#include <QDoubleSpinBox>
#include <QSignalSpy>

#include <kestrelsettingui.h>
#include <widgets/picturebox.h>

#include <gtest/gtest.h>

using namespace kestrel::test;

namespace {

using PreviewQuestion = Closing;

} // namespace

TEST_F(PreviewQuestion, OkAsksNothingWithoutAPreviewArea)
{
    const MessageBoxes boxes;
    press(button("sure"));
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(PreviewQuestion, OkAsksNothingWhenOneSideOfTheAreaIsZero)
{
    for (const auto& [width, height] : {std::pair(0.0, 50.0), std::pair(50.0, 0.0)}) {
        const MessageBoxes boxes;
        drawArea(width, height);
        show();
        press(button("sure"));
        EXPECT_TRUE(boxes.shown().empty());
        EXPECT_FALSE(dialog().isVisible());
        EXPECT_FALSE(dialog().use_preview_area);
    }
}

TEST_F(PreviewQuestion, OkAsksWhetherToUseThePreviewArea)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes);
    drawArea(50.0, 60.0);
    press(button("sure"));
    ASSERT_EQ(boxes.shown().size(), 1U);
    const ShownBox& box = boxes.shown()[0];
    EXPECT_EQ(box.title, QStringLiteral("预览设置"));
    EXPECT_EQ(box.text, QStringLiteral("是否使用预览中的设置的值？"));
    EXPECT_EQ(box.icon, QMessageBox::Question);
    EXPECT_EQ(box.buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(box.defaultButton, QMessageBox::Yes);
    EXPECT_FALSE(box.hadParent);
}

TEST_F(PreviewQuestion, YesTakesThePreviewArea)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes);
    drawArea(50.0, 60.0);
    show();
    press(button("sure"));
    EXPECT_TRUE(dialog().use_preview_area);
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(m_scanner.journal().setsOf("poweroff").size(), 1U);
}

TEST_F(PreviewQuestion, AnAreaOfExactlyFifteenByFifteenIsEnough)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes);
    drawArea(15.0, 15.0);
    show();
    press(button("sure"));
    EXPECT_TRUE(dialog().use_preview_area);
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(PreviewQuestion, NoDropsTheSelectionAndHides)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::No);
    dialog().use_preview_area = true;
    drawArea(50.0, 60.0);
    show();
    QSignalSpy selected(&child<PreviewBoxUI>(dialog(), "preview_box"), &PreviewBoxUI::selected);
    press(button("sure"));
    EXPECT_FALSE(dialog().use_preview_area);
    ASSERT_EQ(selected.count(), 1);
    EXPECT_TRUE(selected.at(0).at(0).toRect().isNull());
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(m_scanner.journal().setsOf("powersaving").size(), 1U);
}

TEST_F(PreviewQuestion, NoToASmallAreaIsNotRefused)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::No);
    drawArea(5.0, 5.0);
    show();
    press(button("sure"));
    EXPECT_EQ(boxes.shown().size(), 1U);
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(PreviewQuestion, ClosingTheQuestionCountsAsNo)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::NoButton);
    drawArea(50.0, 60.0);
    show();
    press(button("sure"));
    EXPECT_FALSE(dialog().use_preview_area);
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(PreviewQuestion, ATooSmallAreaIsRefusedAndRaised)
{
    struct Row
    {
        double width;
        double height;
        double widthAfter;
        double heightAfter;
    };
    for (const Row& row :
         {Row{10.0, 20.0, 15.0, 20.0}, Row{20.0, 10.0, 20.0, 15.0}, Row{1.0, 2.0, 15.0, 15.0},
          Row{14.9, 15.0, 15.0, 15.0}, Row{15.0, 14.9, 15.0, 15.0}, Row{0.1, 0.1, 15.0, 15.0}}) {
        MessageBoxes boxes;
        boxes.answer(QMessageBox::Yes).answer(QMessageBox::Ok);
        drawArea(row.width, row.height);
        show();
        m_scanner.clearJournal();
        press(button("sure"));
        ASSERT_EQ(boxes.shown().size(), 2U);
        EXPECT_EQ(boxes.shown()[1].title, QStringLiteral("提示"));
        EXPECT_EQ(boxes.shown()[1].text, QStringLiteral("所选择的区域不能小于 15.0x15.0 毫米"));
        EXPECT_EQ(boxes.shown()[1].icon, QMessageBox::Critical);
        EXPECT_FALSE(boxes.shown()[1].hadParent);
        EXPECT_EQ(real("offset_w").value(), row.widthAfter);
        EXPECT_EQ(real("offset_h").value(), row.heightAfter);
        EXPECT_TRUE(dialog().isVisible());
        EXPECT_FALSE(dialog().use_preview_area);
        EXPECT_TRUE(m_scanner.journal().sets().empty());
    }
}

TEST_F(PreviewQuestion, TheIndexIsStoredEvenWhenTheAreaIsRefused)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes).answer(QMessageBox::Ok);
    drawArea(5.0, 5.0);
    press(button("sure"));
    EXPECT_EQ(storedIndex().toString(), QStringLiteral("0"));
}

TEST_F(PreviewQuestion, DeletingTheDialogUnderItsQuestionIsSafe)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes);
    boxes.whenShown([this](QMessageBox&) { destroy(); });
    drawArea(50.0, 60.0);
    QAbstractButton* const sure = &button("sure");
    sure->click();
    EXPECT_EQ(boxes.shown().size(), 1U);
}

TEST_F(PreviewQuestion, DeletingTheDialogUnderItsRefusalIsSafe)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes).answer(QMessageBox::Ok);
    boxes.whenShown([](QMessageBox&) {});
    boxes.whenShown([this](QMessageBox&) { destroy(); });
    drawArea(5.0, 5.0);
    QAbstractButton* const sure = &button("sure");
    sure->click();
    EXPECT_EQ(boxes.shown().size(), 2U);
}

TEST_F(PreviewQuestion, AnAcceptedAreaEndsWithTheNextBinding)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes);
    drawArea(50.0, 60.0);
    press(button("sure"));
    ASSERT_TRUE(dialog().use_preview_area);
    bind(m_scanner);
    EXPECT_FALSE(dialog().use_preview_area);
    m_scanner.clearJournal();
    setAllParamBySettingUI(dialog().host());
    EXPECT_NE(m_scanner.journal().setsOf("br-x").back(), "0");
}

TEST_F(PreviewQuestion, IsNotAnsweredForAScannerThatIsBoundMeanwhile)
{
    FakeScanner other = fullScanner();
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes);
    boxes.whenShown([&](QMessageBox&) {
        bind(other);
        drawArea(50.0, 60.0);
        other.clearJournal();
    });
    drawArea(50.0, 60.0);
    show();
    press(button("sure"));
    ASSERT_EQ(boxes.shown().size(), 1U);
    EXPECT_FALSE(dialog().use_preview_area);
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_EQ(other.journal().setsOf("poweroff").size(), 0U);
}

TEST_F(PreviewQuestion, IsAnsweredAlsoForANewHandleOfTheSameScanner)
{
    FakeScanner reopened = fullScanner();
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes);
    boxes.whenShown([&](QMessageBox&) { setDevice(dialog().host(), reopened.handle()); });
    drawArea(50.0, 60.0);
    show();
    press(button("sure"));
    EXPECT_TRUE(dialog().use_preview_area);
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(PreviewQuestion, ComplaintDoesNotResizeTheAreaOfAScannerThatIsBoundMeanwhile)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes).answer(QMessageBox::Ok);
    boxes.whenShown([](QMessageBox&) {}).whenShown([&](QMessageBox&) { bind(m_scanner); });
    drawArea(10.0, 60.0);
    press(button("sure"));
    ASSERT_EQ(boxes.shown().size(), 2U);
    EXPECT_EQ(real("offset_w").value(), 0.0);
    EXPECT_EQ(real("offset_h").value(), 0.0);
}
