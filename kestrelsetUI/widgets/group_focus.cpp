#include "widgets/group_focus.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QEvent>
#include <QFocusEvent>

#include <utility>

namespace kestrel {

namespace {

// Qt takes the key away from the others when one gets the focus; before the next key, and when the
// group is left, they have it back.
void openToTab(const QButtonGroup& group)
{
    for (QAbstractButton* const button : group.buttons()) {
        button->setFocusPolicy(Qt::StrongFocus);
    }
}

bool isByTab(const QFocusEvent& event)
{
    return event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason;
}

const QButtonGroup* groupOf(const QWidget* widget)
{
    const auto* const button = qobject_cast<const QAbstractButton*>(widget);
    return button != nullptr ? button->group() : nullptr;
}

} // namespace

GroupFocus::GroupFocus(QWidget& form) : QObject(&form)
{
    for (const QButtonGroup* group : form.findChildren<QButtonGroup*>()) {
        for (QAbstractButton* const button : group->buttons()) {
            button->installEventFilter(this);
        }
    }
    connect(qApp, &QApplication::focusChanged, this, &GroupFocus::passToChosen);
}

bool GroupFocus::eventFilter(QObject* watched, QEvent* event)
{
    const QButtonGroup* const group = groupOf(qobject_cast<QWidget*>(watched));
    if (group != nullptr && group->exclusive()) {
        if (event->type() == QEvent::FocusIn && isByTab(*static_cast<QFocusEvent*>(event))) {
            reached_by_tab = watched;
        }
    } else if (group != nullptr &&
               (event->type() == QEvent::KeyPress || event->type() == QEvent::FocusOut)) {
        openToTab(*group);
    }
    return QObject::eventFilter(watched, event);
}

// Qt leaves the key with the button that had it last, whichever is chosen by now. From another
// button of the group the arrow keys come, which may go anywhere.
void GroupFocus::passToChosen(const QWidget* before, const QWidget* now)
{
    const QButtonGroup* const group = groupOf(now);
    if (group == nullptr || std::exchange(reached_by_tab, nullptr) != now ||
        groupOf(before) == group) {
        return;
    }
    QAbstractButton* const chosen = group->checkedButton();
    if (chosen != nullptr && chosen != now && chosen->isEnabled() && chosen->isVisible()) {
        chosen->setFocus(Qt::TabFocusReason);
    }
}

} // namespace kestrel
