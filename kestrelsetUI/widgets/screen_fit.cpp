#include "widgets/screen_fit.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>

namespace kestrel {

namespace {

// What window managers put around a window. It is known only once the window is on the screen.
constexpr QSize kWindowFrame(8, 48);
// Some of the dialog is always left, whatever a platform says about its screen.
constexpr QSize kSmallestEver(200, 150);

// Around a control that the Tab key reaches.
constexpr int kSpace = 8;

bool byKeyboard(const QFocusEvent& event)
{
    // What the mouse has hit must not slip away from under it.
    return event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason ||
           event.reason() == Qt::ShortcutFocusReason;
}

/// Nobody looks at the offscreen platform's screen: what is shown there is for pictures of it, and
/// for tests. One of those can ask for the fitting by a property of the application.
bool isLookedAt()
{
    return QGuiApplication::platformName() != QLatin1String("offscreen") ||
           qApp->property("kestrelFitsOffscreen").toBool();
}

QSize roomOnScreen(const QDialog& dialog)
{
    const QWidget* const host = dialog.parentWidget();
    const QScreen* const screen = host != nullptr ? host->screen() : dialog.screen();
    return screen != nullptr ? screen->availableSize() - kWindowFrame : dialog.maximumSize();
}

} // namespace

ScreenFit::ScreenFit(const ScrolledDialog& parts)
    : QObject(&parts.dialog), m_parts(parts), m_smallest(parts.dialog.minimumSize()),
      m_preferred(parts.dialog.size()), m_pages(parts.pages.geometry()),
      m_buttons(parts.buttons.geometry()),
      m_rightMargin(parts.dialog.width() - 2 * parts.area.frameWidth() - m_pages.x() -
                    m_pages.width())
{
    parts.dialog.installEventFilter(this);
    parts.area.viewport()->installEventFilter(this);
    parts.area.widget()->installEventFilter(this);
    adoptControls();
    for (const QScrollBar* bar :
         {parts.area.horizontalScrollBar(), parts.area.verticalScrollBar()}) {
        connect(bar, &QScrollBar::valueChanged, this, &ScreenFit::arrange);
        connect(bar, &QScrollBar::rangeChanged, this, &ScreenFit::arrange);
    }
}

bool ScreenFit::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_parts.dialog && event->type() == QEvent::Show && !event->spontaneous()) {
        fitScreen();
        startAtPages();
    } else if (event->type() == QEvent::Resize &&
               (watched == m_parts.area.viewport() || watched == m_parts.area.widget())) {
        arrange();
    } else if (event->type() == QEvent::FocusIn && byKeyboard(*static_cast<QFocusEvent*>(event))) {
        bringIntoSight(*static_cast<QWidget*>(watched));
    } else if (event->type() == QEvent::Wheel && scrollsInstead(*watched)) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void ScreenFit::adoptControls()
{
    for (QWidget* const control : m_parts.area.widget()->findChildren<QWidget*>()) {
        // The scroll bars inside other controls have no names.
        if (control->objectName().isEmpty() || control->focusPolicy() == Qt::NoFocus) {
            continue;
        }
        control->installEventFilter(this);
        if (control->focusPolicy() == Qt::WheelFocus) {
            control->setFocusPolicy(Qt::StrongFocus);
        }
    }
}

// Who turns the wheel to move a low dialog must not change what happens to lie under the pointer.
bool ScreenFit::scrollsInstead(const QObject& watched) const
{
    const auto* const control = qobject_cast<const QWidget*>(&watched);
    const bool hasValue = qobject_cast<const QComboBox*>(control) != nullptr ||
                          qobject_cast<const QAbstractSpinBox*>(control) != nullptr ||
                          qobject_cast<const QAbstractSlider*>(control) != nullptr;
    return hasValue && !control->hasFocus() && m_parts.area.verticalScrollBar()->maximum() > 0;
}

// The scroll area believes to be in sight what lies behind the row of buttons.
void ScreenFit::bringIntoSight(const QWidget& control)
{
    const QWidget& view = *m_parts.area.viewport();
    if (m_parts.buttons.isAncestorOf(&control) || !view.isAncestorOf(&control)) {
        return;
    }
    const int top = control.mapTo(&view, QPoint()).y();
    const int below = top + control.height() + kSpace - (view.height() - m_buttons.height());
    // Of what is too high the beginning counts.
    const int down = std::min(std::max(below, 0), top - kSpace);
    QScrollBar& bar = *m_parts.area.verticalScrollBar();
    bar.setValue(bar.value() + (top < kSpace ? top - kSpace : down));
}

void ScreenFit::fitScreen()
{
    if (!isLookedAt()) {
        return;
    }
    QDialog& dialog = m_parts.dialog;
    const QSize room = roomOnScreen(dialog).expandedTo(kSmallestEver);
    const QSize wanted = dialog.size() == m_fitted ? m_preferred : dialog.size();
    dialog.setMinimumSize(m_smallest.boundedTo(room));
    dialog.resize(wanted.boundedTo(room));
    m_fitted = dialog.size();
}

// Hiding the dialog has moved the focus on from OK to Cancel, where the Enter key of the next time
// would throw the settings away.
void ScreenFit::startAtPages()
{
    if (m_parts.buttons.isAncestorOf(m_parts.dialog.focusWidget())) {
        m_parts.pages.setFocus();
    }
}

void ScreenFit::arrange()
{
    const QScrollArea& area = m_parts.area;
    const QSize view = area.viewport()->size();
    // A vertical scroll bar takes its width from the margins of the pages, the left one first.
    const int margins = std::max(area.widget()->width() - m_pages.width(), 0);
    const int left = std::min(std::max(margins - m_rightMargin, margins / 2), m_pages.x());
    m_parts.pages.move(left, m_pages.y());

    const int lowest = area.verticalScrollBar()->value() + view.height() - m_buttons.height();
    QRect buttons(left, std::clamp(lowest, 0, m_buttons.top()), m_buttons.width(),
                  m_buttons.height());
    if (view.width() < m_buttons.width()) {
        buttons.setLeft(area.horizontalScrollBar()->value());
        buttons.setWidth(view.width());
    }
    m_parts.buttons.setGeometry(buttons);
}

} // namespace kestrel
