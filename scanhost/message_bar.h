/// @file
/// A line above the pages that says what went wrong.
#pragma once

#include <QFrame>

class QLabel;

namespace kestrel {

/// Hidden until there is something to say; stays until it is closed or the next action succeeds.
/// Does not stop the user's work as a message box would.
class MessageBar : public QFrame
{
    Q_OBJECT

public:
    explicit MessageBar(QWidget* parent = nullptr);

    void showMessage(const QString& text);

    /// @return what is shown; empty while hidden
    QString text() const;

private:
    QLabel* m_label;
};

} // namespace kestrel
