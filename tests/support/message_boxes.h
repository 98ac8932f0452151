/// @file
/// Message boxes and modal dialogs in tests: answered when they appear, without waiting for a
/// while.
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QString>

#include <deque>
#include <functional>
#include <vector>

namespace kestrel::test {

/// A message box that was shown.
struct ShownBox
{
    QString title;
    QString text;
    QMessageBox::Icon icon;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton defaultButton;
    bool hadParent;
};

/// Records and answers every message box that is shown while it lives. A box that no answer waits
/// for fails the test and is closed; an answer that no box came for fails the test, too.
class MessageBoxes : public QObject
{
public:
    MessageBoxes();
    ~MessageBoxes() override;
    Q_DISABLE_COPY_MOVE(MessageBoxes)

    /// Queues the answer to the next box; NoButton closes it as its close button does.
    MessageBoxes& answer(QMessageBox::StandardButton button);
    /// Runs @p look before the next box is answered.
    MessageBoxes& whenShown(std::function<void(QMessageBox&)> look);

    const std::vector<ShownBox>& shown() const { return m_shown; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void answerNow(QMessageBox& box);

    std::deque<QMessageBox::StandardButton> m_answers;
    std::deque<std::function<void(QMessageBox&)>> m_looks;
    std::vector<ShownBox> m_shown;
};

/// Does something as soon as a widget has been shown and its event loop runs: what the user does
/// while a modal dialog is open. Fails the test when the widget was not shown.
class WhenShown : public QObject
{
public:
    /// @param action runs once, from the event loop
    WhenShown(QWidget& widget, std::function<void()> action);
    ~WhenShown() override;
    Q_DISABLE_COPY_MOVE(WhenShown)

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void()> m_action;
    bool m_pending = true;
    bool m_ran = false;
};

} // namespace kestrel::test
