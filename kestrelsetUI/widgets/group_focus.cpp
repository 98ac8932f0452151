#include "widgets/group_focus.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QEvent>

namespace kestrel {

GroupFocus::GroupFocus(QWidget& form) : QObject(&form)
{
    for (const QButtonGroup* group : form.findChildren<QButtonGroup*>()) {
        if (group->exclusive()) {
            continue;
        }
        for (QAbstractButton* const button : group->buttons()) {
            button->installEventFilter(this);
        }
    }
}

// Qt takes the key away from the others when one gets the focus; before the next key, and when the
// group is left, they have it back.
bool GroupFocus::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const button = qobject_cast<QAbstractButton*>(watched);
    const bool leaving = event->type() == QEvent::KeyPress || event->type() == QEvent::FocusOut;
    if (leaving && button != nullptr && button->group() != nullptr) {
        for (QAbstractButton* const other : button->group()->buttons()) {
            other->setFocusPolicy(Qt::StrongFocus);
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace kestrel
