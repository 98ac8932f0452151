/// @file
/// The Tab key among buttons that stand in a group.
#pragma once

#include <QObject>
#include <QWidget>

namespace kestrel {

/// Lets the Tab key stop at every check box of the groups of a form where several may be chosen. Qt
/// leaves it only one of a group, as for radio buttons; the others could not be reached with the
/// keyboard at all. Where one is chosen the key stops at that one, also if it was not chosen by the
/// keyboard.
class GroupFocus : public QObject
{
    Q_OBJECT

public:
    /// @param form the button groups among its children are looked after; becomes the owner
    explicit GroupFocus(QWidget& form);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void passToChosen(const QWidget* before, const QWidget* now);

    const QObject* reached_by_tab = nullptr; ///< only compared: it may be gone
};

} // namespace kestrel
