// The settings dialog on screens and in windows that are smaller than it would like. The program
// runs at several scales: the larger the scale, the smaller the screen.
#include "access/access_bench.h"

#include <QDoubleSpinBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>

using namespace kestrel::test;

namespace {

const QSize preferred(770, 750);
const QSize windowFrame(8, 48);
constexpr char kFitsOffscreen[] = "kestrelFitsOffscreen";

class SmallScreen : public Access
{
protected:
    SmallScreen() { qApp->setProperty(kFitsOffscreen, true); }
    ~SmallScreen() override { qApp->setProperty(kFitsOffscreen, QVariant()); }

    QSize screenSize() { return dialog().screen()->availableSize(); }
    QWidget& buttons() { return widget("widget_13"); }
    QScrollBar& scrollBar() { return *area().verticalScrollBar(); }

    /// Shows the dialog and squeezes it, below what a user could.
    void squeeze(const QSize& size)
    {
        show();
        dialog().setMinimumSize(1, 1);
        dialog().resize(size.boundedTo(screenSize()));
        settle();
    }

    /// @return the place of the widget in what is to be seen of the dialog
    QRect place(const QWidget& inner)
    {
        return {inner.mapTo(area().viewport(), QPoint()), inner.size()};
    }

    /// @return whether its whole height is to be seen, and enough of its width
    bool inSight(const QWidget& inner)
    {
        constexpr int enough = 150;
        const QRect view = area().viewport()->rect();
        const QRect at = place(inner);
        return at.top() >= 0 && at.bottom() <= view.bottom() &&
               at.intersected(view).width() >= std::min(at.width(), enough);
    }

    /// @return whether the row of buttons lies over a part of the widget
    bool covered(const QWidget& inner)
    {
        return !buttons().isAncestorOf(&inner) && place(buttons()).intersects(place(inner));
    }

    /// Expects that each control of each page can be scrolled to where no button covers it.
    void expectControlsWithinReach()
    {
        onEachPage([&](QWidget& page) {
            const auto controls = controlsIn(page);
            EXPECT_FALSE(controls.empty());
            for (QWidget* control : controls) {
                if (control->height() > area().viewport()->height() - buttons().height()) {
                    continue; // the text of the information tab, which scrolls by itself
                }
                const QPoint at = control->mapTo(area().widget(), QPoint());
                scrollBar().setValue(at.y() - 5);
                area().horizontalScrollBar()->setValue(at.x() - 5);
                settle();
                EXPECT_TRUE(inSight(*control)) << control->objectName().toStdString();
                EXPECT_FALSE(covered(*control)) << control->objectName().toStdString();
            }
        });
    }

    void turnWheel(QWidget& over)
    {
        const QPoint middle = over.rect().center();
        QWheelEvent event(middle, over.mapToGlobal(middle), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        // As from a mouse: the event goes up to the parents of whoever does not take it.
        for (QWidget* taker = &over; taker != nullptr; taker = taker->parentWidget()) {
            event.setAccepted(true);
            QApplication::sendEvent(taker, &event);
            if (event.isAccepted()) {
                break;
            }
        }
        settle();
    }
};

/// @return whether the Tab key stops at the control, unless it is too high to be seen whole
bool usableRow(const QWidget* control)
{
    return control->isEnabled() && control->focusPolicy() != Qt::NoFocus &&
           qobject_cast<const QTextEdit*>(control) == nullptr;
}

const QSize windows[] = {{770, 600}, {770, 420}, {500, 380}};

} // namespace

TEST_F(SmallScreen, DialogHasItsPreferredSizeOrWhatTheScreenAllows)
{
    show();
    EXPECT_EQ(dialog().size(), preferred.boundedTo(screenSize() - windowFrame));
    EXPECT_LE(dialog().minimumHeight(), screenSize().height());
    EXPECT_LE(dialog().minimumWidth(), screenSize().width());
    EXPECT_EQ(dialog().maximumSize(), preferred);
    if (dialog().size() == preferred) {
        EXPECT_EQ(dialog().minimumSize(), QSize(770, 600));
        EXPECT_EQ(pages().geometry(), QRect(10, 10, 750, 670));
        EXPECT_EQ(buttons().geometry(), QRect(10, 688, 750, 50));
        EXPECT_FALSE(scrollBar().isVisible());
    } else {
        EXPECT_TRUE(scrollBar().isVisible());
    }
}

TEST_F(SmallScreen, SizeChosenByTheUserStays)
{
    show();
    const QSize chosen(dialog().width(), dialog().minimumHeight());
    dialog().resize(chosen);
    dialog().hide();
    show();
    EXPECT_EQ(dialog().size(), chosen);
}

TEST_F(SmallScreen, LowWindowShowsThePagesInTheirWholeWidth)
{
    squeeze({770, 600});
    if (dialog().width() < 770) {
        EXPECT_TRUE(area().horizontalScrollBar()->isVisible());
        return;
    }
    EXPECT_TRUE(scrollBar().isVisible());
    EXPECT_FALSE(area().horizontalScrollBar()->isVisible());
    EXPECT_GE(place(pages()).left(), 0);
    EXPECT_LE(place(pages()).right(), area().viewport()->rect().right());
    EXPECT_EQ(pages().width(), 750);
}

TEST_F(SmallScreen, ButtonsStayInSightWhateverIsScrolled)
{
    for (const QSize& size : windows) {
        squeeze(size);
        onEachPage([&](QWidget&) {
            for (int value = 0; value <= scrollBar().maximum(); value += 37) {
                scrollBar().setValue(value);
                area().horizontalScrollBar()->setValue(value);
                settle();
                for (const char* name : {"default_setting", "preview", "sure", "cancel"}) {
                    if (button(name).isVisible()) {
                        EXPECT_TRUE(inSight(button(name))) << name << " at " << value;
                    }
                }
            }
        });
    }
}

TEST_F(SmallScreen, EveryControlCanBeScrolledIntoSight)
{
    for (const QSize& size : windows) {
        squeeze(size);
        expectControlsWithinReach();
    }
}

TEST_F(SmallScreen, EverythingIsWithinReachInWhatAScreenOf1366By768Leaves)
{
    // The offscreen platform's screen is smaller: the dialog gets this size without being fitted.
    qApp->setProperty(kFitsOffscreen, QVariant());
    show();
    dialog().resize(preferred.boundedTo(QSize(1366, 768) - windowFrame));
    settle();
    ASSERT_EQ(dialog().size(), QSize(770, 720));
    EXPECT_FALSE(area().horizontalScrollBar()->isVisible());
    expectControlsWithinReach();
    EXPECT_TRUE(inSight(button("sure")));
    EXPECT_TRUE(inSight(button("cancel")));
}

TEST_F(SmallScreen, EndOfThePageCanBeScrolledIntoSight)
{
    for (const QSize& size : windows) {
        squeeze(size);
        scrollBar().setValue(scrollBar().maximum());
        settle();
        EXPECT_FALSE(covered(pages()));
    }
}

TEST_F(SmallScreen, TabKeyBringsEachControlIntoSight)
{
    squeeze({770, 420});
    dialog().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog()));
    onEachPage([&](QWidget& page) {
        pages().setFocus();
        int visited = 0;
        do {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            settle();
            const QWidget* const focus = QApplication::focusWidget();
            ASSERT_NE(focus, nullptr);
            if (page.isAncestorOf(focus) &&
                focus->height() < area().viewport()->height() - buttons().height()) {
                ++visited;
                EXPECT_TRUE(inSight(*focus)) << focus->objectName().toStdString();
                EXPECT_FALSE(covered(*focus)) << focus->objectName().toStdString();
            }
        } while (page.isAncestorOf(QApplication::focusWidget()));
        const auto controls = controlsIn(page);
        EXPECT_TRUE(visited > 0 || std::none_of(controls.begin(), controls.end(), usableRow))
            << "nothing on this page was visited";
    });
}

TEST_F(SmallScreen, WheelOverAControlScrollsTheLowDialogAndChangesNothing)
{
    squeeze({770, 420});
    pages().setFocus();
    for (const char* name : {"resolution_gengel_slide", "gamma_value", "brightness_set"}) {
        QWidget& control = widget(name);
        QSignalSpy changed(&control, qobject_cast<QComboBox*>(&control) != nullptr
                                         ? SIGNAL(currentIndexChanged(int))
                                     : qobject_cast<QDoubleSpinBox*>(&control) != nullptr
                                         ? SIGNAL(valueChanged(double))
                                         : SIGNAL(valueChanged(int)));
        scrollBar().setValue(0);
        turnWheel(control);
        EXPECT_GT(scrollBar().value(), 0) << name;
        EXPECT_EQ(changed.count(), 0) << name;
        EXPECT_EQ(control.focusPolicy() & Qt::WheelFocus & ~Qt::StrongFocus, 0) << name;
    }
}

TEST_F(SmallScreen, WheelOverTheControlInUseChangesIt)
{
    squeeze({770, 420});
    dialog().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog()));
    bar("brightness_set").setFocus();
    const int before = bar("brightness_set").value();
    const int top = scrollBar().value();
    turnWheel(bar("brightness_set"));
    EXPECT_NE(bar("brightness_set").value(), before);
    EXPECT_EQ(scrollBar().value(), top);
}

TEST_F(SmallScreen, WheelChangesControlsWhereNothingIsToBeScrolled)
{
    show();
    if (scrollBar().maximum() > 0) {
        EXPECT_LT(dialog().height(), preferred.height());
        return;
    }
    const int before = bar("brightness_set").value();
    turnWheel(bar("brightness_set"));
    EXPECT_NE(bar("brightness_set").value(), before);
}

TEST_F(SmallScreen, WheelScrollsTheInformationText)
{
    auto& text = child<QTextEdit>(dialog(), "scanner_info");
    text.setPlainText(QStringLiteral("line\n").repeated(200));
    squeeze({770, 420});
    pages().setCurrentWidget(&widget("tab_info"));
    settle();
    turnWheel(*text.viewport());
    EXPECT_GT(text.verticalScrollBar()->value(), 0);
}

TEST_F(SmallScreen, EnterMeansOkEachTimeTheDialogIsShown)
{
    for (int time = 0; time < 3; ++time) {
        show();
        dialog().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog()));
        EXPECT_TRUE(child<QPushButton>(dialog(), "sure").isDefault());
        QSignalSpy confirmed(&button("sure"), &QAbstractButton::clicked);
        // As a click on OK leaves it.
        button("sure").setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_EQ(confirmed.count(), 1);
        EXPECT_TRUE(dialog().isHidden());
    }
}

TEST_F(SmallScreen, WhereNobodyLooksTheDialogKeepsItsSize)
{
    qApp->setProperty(kFitsOffscreen, QVariant());
    show();
    EXPECT_EQ(dialog().size(), preferred);
    EXPECT_EQ(dialog().minimumSize(), QSize(770, 600));
}
