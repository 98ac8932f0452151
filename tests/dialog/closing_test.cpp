// OK, Cancel, Escape and the close box.
#include "closing_fixture.h"
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

TEST_F(Closing, OkSendsThePowerSettingsBeforeItHides)
{
    int sent = 0;
    m_scanner.onSet("poweroff-time", [this, &sent](FakeScanner&) {
        ++sent;
        EXPECT_TRUE(dialog().isVisible());
    });
    show();
    click(button("sure"));
    EXPECT_EQ(sent, 1);
    EXPECT_FALSE(dialog().isVisible());
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
