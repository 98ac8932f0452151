// OK, Cancel, Escape and the close box.
#include "dialog_fixture.h"
#include "support/message_boxes.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QCloseEvent>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPointer>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

#include <widgets/picturebox.h>

#include <gtest/gtest.h>

using namespace kestrel::test;

namespace {

const QString indexKey = QStringLiteral("UserTemplates/usertemplate_index");

class Closing : public DialogTest
{
protected:
    Closing() : m_scanner(fullScanner())
    {
        bind(m_scanner);
        m_scanner.clearJournal();
    }

    /// The size of the preview selection as the spin boxes show it.
    void drawArea(double width, double height)
    {
        real("offset_w").setValue(width);
        real("offset_h").setValue(height);
        EXPECT_EQ(real("offset_w").value(), width);
        EXPECT_EQ(real("offset_h").value(), height);
    }

    QVariant storedIndex() { return dialog().settings->value(indexKey); }

    FakeScanner m_scanner;
};

} // namespace

TEST_F(Closing, OkStoresTheTemplateIndexAndHides)
{
    show();
    click(button("sure"));
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(storedIndex().toString(), QStringLiteral("0"));
}

TEST_F(Closing, OkHidesAndDoesNotClose)
{
    class CloseCounter : public QObject
    {
    public:
        int closes = 0;

    protected:
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            closes += event->type() == QEvent::Close ? 1 : 0;
            return QObject::eventFilter(watched, event);
        }
    };
    CloseCounter counter;
    dialog().installEventFilter(&counter);
    show();
    click(button("sure"));
    EXPECT_EQ(counter.closes, 0);
    show();
    click(button("cancel"));
    EXPECT_EQ(counter.closes, 1);
}

TEST_F(Closing, OkStoresTheIndexOfTheSelectedTemplate)
{
    combo("usertemplate").addItems({QStringLiteral("Office"), QStringLiteral("Photo")});
    combo("usertemplate").setCurrentIndex(2);
    press(button("sure"));
    EXPECT_EQ(storedIndex().toString(), QStringLiteral("2"));
}

TEST_F(Closing, OkSendsThePowerSettingsAndNothingElse)
{
    bar("powersaving_time").setValue(30);
    press(button("sure"));
    EXPECT_EQ(m_scanner.journal().sets(), (Strings{"powersaving=Enable", "powersaving-time=30",
                                                   "poweroff=Enable", "poweroff-time=120"}));
}

TEST_F(Closing, OkSavesIntoTheDevicesOwnGroup)
{
    bar("brightness_set").setValue(41);
    press(button("sure"));
    EXPECT_EQ(dialog().settings->value(QStringLiteral("ScannerA/brightness")).toString(),
              QStringLiteral("41"));
}

TEST_F(Closing, OkSavesIntoTheSelectedTemplateAndLeavesTheDevicesGroup)
{
    combo("usertemplate").addItem(QStringLiteral("Office"));
    combo("usertemplate").setCurrentIndex(1);
    bar("brightness_set").setValue(42);
    press(button("sure"));
    EXPECT_EQ(dialog().settings->value(QStringLiteral("Office/brightness")).toString(),
              QStringLiteral("42"));
    EXPECT_EQ(dialog().settings->value(QStringLiteral("ScannerA/brightness")).toString(),
              QStringLiteral("0"));
}

TEST_F(Closing, OkAsksNothingWithoutAPreviewArea)
{
    const MessageBoxes boxes;
    press(button("sure"));
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(Closing, OkAsksNothingWhenOneSideOfTheAreaIsZero)
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

TEST_F(Closing, OkAsksWhetherToUseThePreviewArea)
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

TEST_F(Closing, YesTakesThePreviewArea)
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

TEST_F(Closing, AnAreaOfExactlyFifteenByFifteenIsEnough)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes);
    drawArea(15.0, 15.0);
    show();
    press(button("sure"));
    EXPECT_TRUE(dialog().use_preview_area);
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(Closing, NoDropsTheSelectionAndHides)
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

TEST_F(Closing, NoToASmallAreaIsNotRefused)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::No);
    drawArea(5.0, 5.0);
    show();
    press(button("sure"));
    EXPECT_EQ(boxes.shown().size(), 1U);
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(Closing, ClosingTheQuestionCountsAsNo)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::NoButton);
    drawArea(50.0, 60.0);
    show();
    press(button("sure"));
    EXPECT_FALSE(dialog().use_preview_area);
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(Closing, ATooSmallAreaIsRefusedAndRaised)
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

TEST_F(Closing, TheIndexIsStoredEvenWhenTheAreaIsRefused)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes).answer(QMessageBox::Ok);
    drawArea(5.0, 5.0);
    press(button("sure"));
    EXPECT_EQ(storedIndex().toString(), QStringLiteral("0"));
}

TEST_F(Closing, DeletingTheDialogUnderItsQuestionIsSafe)
{
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes);
    boxes.whenShown([this](QMessageBox&) { destroy(); });
    drawArea(50.0, 60.0);
    QAbstractButton* const sure = &button("sure");
    sure->click();
    EXPECT_EQ(boxes.shown().size(), 1U);
}

TEST_F(Closing, DeletingTheDialogUnderItsRefusalIsSafe)
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

TEST_F(Closing, CancelAfterOkThrowsEditsAway)
{
    bar("brightness_set").setValue(20);
    press(button("sure"));
    show();
    bar("brightness_set").setValue(70);
    click(button("cancel"));
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(bar("brightness_set").value(), 20);
}

TEST_F(Closing, EveryWayOfClosingThrowsEditsAway)
{
    press(button("sure"));
    const std::vector<std::function<void()>> ways{
        [this] { QTest::keyClick(&dialog(), Qt::Key_Escape); },
        [this] { dialog().close(); },
        [this] { dialog().on_cancel_clicked(); },
        [this] { dialog().reject(); },
    };
    for (const auto& leave : ways) {
        show();
        bar("contrast_set").setValue(50);
        leave();
        EXPECT_FALSE(dialog().isVisible());
        EXPECT_EQ(bar("contrast_set").value(), 0);
    }
}

TEST_F(Closing, WithoutAStoredIndexNothingIsReloaded)
{
    ASSERT_TRUE(storedIndex().toString().isEmpty());
    show();
    bar("brightness_set").setValue(70);
    combo("usertemplate").addItem(QStringLiteral("Office"));
    click(button("cancel"));
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(bar("brightness_set").value(), 70);
}

TEST_F(Closing, CancelSelectsTheStoredTemplateAndLoadsIt)
{
    combo("usertemplate").addItem(QStringLiteral("Office"));
    combo("usertemplate").setCurrentIndex(1);
    bar("brightness_set").setValue(33);
    press(button("sure"));
    combo("usertemplate").setCurrentIndex(0);
    bar("brightness_set").setValue(-5);
    press(button("cancel"));
    EXPECT_EQ(combo("usertemplate").currentIndex(), 1);
    EXPECT_EQ(bar("brightness_set").value(), 33);
}

TEST_F(Closing, CancelGoesBackToTheDevicesOwnConfiguration)
{
    bar("brightness_set").setValue(12);
    press(button("sure"));
    combo("usertemplate").addItem(QStringLiteral("Office"));
    combo("usertemplate").setCurrentIndex(1);
    bar("brightness_set").setValue(99);
    press(button("cancel"));
    EXPECT_EQ(combo("usertemplate").currentIndex(), 0);
    EXPECT_EQ(bar("brightness_set").value(), 12);
}

TEST_F(Closing, TheCloseIsAccepted)
{
    QCloseEvent event;
    event.ignore();
    dialog().closeEvent(&event);
    EXPECT_TRUE(event.isAccepted());
}

TEST_F(Closing, OkKeepsTheEdits)
{
    press(button("sure"));
    show();
    bar("brightness_set").setValue(61);
    click(button("sure"));
    EXPECT_EQ(bar("brightness_set").value(), 61);
}

TEST_F(Closing, ClosingSendsNothing)
{
    press(button("sure"));
    m_scanner.clearJournal();
    press(button("cancel"));
    EXPECT_TRUE(m_scanner.journal().sets().empty());
}

TEST_F(Closing, ClosingWritesNothing)
{
    press(button("sure"));
    dialog().settings->sync();
    const QByteArray before = dir().read(QStringLiteral("ScannerA.ini"));
    bar("brightness_set").setValue(70);
    press(button("cancel"));
    dialog().settings->sync();
    EXPECT_EQ(dir().read(QStringLiteral("ScannerA.ini")), before);
    EXPECT_FALSE(before.isEmpty());
}

TEST_F(Closing, DestroyingTheDialogLeavesItsSettingsObject)
{
    const QPointer<QSettings> settings(dialog().settings);
    destroy();
    EXPECT_FALSE(settings.isNull());
}
