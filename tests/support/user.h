/// @file
/// What a user does with a dialog, and finding its widgets by name.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <stdexcept>
#include <string>

class QAbstractButton;
class QAbstractSpinBox;
class QComboBox;
class QWidget;

namespace kestrel::test {

/// @return the object of this name and class below @p parent; throws std::runtime_error without one
template <typename T>
T& child(const QObject& parent, const char* name)
{
    T* const found = parent.findChild<T*>(QLatin1String(name));
    if (found == nullptr) {
        throw std::runtime_error(std::string("there is no ") + T::staticMetaObject.className() +
                                 " " + name);
    }
    return *found;
}

/// @return the texts of a combo box, in order
QStringList items(const QComboBox& combo);

/// Brings the widget into view: the page of each tab widget around it becomes current, scroll areas
/// scroll to it. Fails the test when it is not visible even then.
bool reveal(QWidget& widget);

/// Clicks with the left mouse button where the widget reacts to it.
void click(QAbstractButton& button);
/// Clicks without needing the button to be visible, as its keyboard shortcut would.
void press(QAbstractButton& button);
/// Replaces the text of a spin box with @p text, key by key, and leaves it with Tab.
void type(QAbstractSpinBox& box, const QString& text);
/// Chooses an item with the keyboard.
void select(QComboBox& combo, int index);
/// Chooses the item with this text; fails the test when there is none.
void select(QComboBox& combo, const QString& text);
/// Handles what waits in the event queue.
void settle();

} // namespace kestrel::test
