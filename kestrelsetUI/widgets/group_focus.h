/// @file
/// The Tab key among check boxes that stand in a button group.
#pragma once

#include <QObject>
#include <QWidget>

namespace kestrel {

/// Lets the Tab key stop at every check box of the groups of a form. Qt leaves it only one of a
/// group, as for radio buttons, also where several may be chosen; the others could not be reached
/// with the keyboard at all.
class GroupFocus : public QObject
{
    Q_OBJECT

public:
    /// @param form the button groups among its children are looked after; becomes the owner
    explicit GroupFocus(QWidget& form);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace kestrel
