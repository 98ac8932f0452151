#include "widgets/screen_reader.h"

#include <QAccessible>

namespace kestrel {

void describeAfresh(const QWidget& form)
{
    for (QWidget* const widget : form.findChildren<QWidget*>()) {
        if (widget->isEnabled()) {
            continue;
        }
        if (QAccessibleInterface* const early = QAccessible::queryAccessibleInterface(widget)) {
            QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(early));
        }
    }
}

} // namespace kestrel
