#include "support/message_boxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <utility>

namespace kestrel::test {

MessageBoxes::MessageBoxes()
{
    qApp->installEventFilter(this);
}

MessageBoxes::~MessageBoxes()
{
    EXPECT_TRUE(m_answers.empty()) << m_answers.size() << " message boxes did not come";
    EXPECT_TRUE(m_looks.empty());
}

MessageBoxes& MessageBoxes::answer(QMessageBox::StandardButton button)
{
    m_answers.push_back(button);
    return *this;
}

MessageBoxes& MessageBoxes::whenShown(std::function<void(QMessageBox&)> look)
{
    m_looks.push_back(std::move(look));
    return *this;
}

bool MessageBoxes::eventFilter(QObject* watched, QEvent* event)
{
    auto* const box = qobject_cast<QMessageBox*>(watched);
    if (box != nullptr && event->type() == QEvent::Show) {
        m_shown.push_back({box->windowTitle(), box->text(), box->icon(), box->standardButtons(),
                           box->standardButton(box->defaultButton()), box->parent() != nullptr});
        // Only the box's own event loop can take the answer.
        QTimer::singleShot(0, box, [this, guard = QPointer<MessageBoxes>(this), box] {
            if (guard) {
                answerNow(*box);
            }
        });
    }
    return QObject::eventFilter(watched, event);
}

void MessageBoxes::answerNow(QMessageBox& box)
{
    if (!m_looks.empty()) {
        const auto look = m_looks.front();
        m_looks.pop_front();
        look(box);
    }
    if (m_answers.empty()) {
        ADD_FAILURE() << "unexpected message box: " << box.text().toStdString();
        box.reject();
        return;
    }
    const QMessageBox::StandardButton wanted = m_answers.front();
    m_answers.pop_front();
    if (wanted == QMessageBox::NoButton) {
        box.close();
        return;
    }
    QAbstractButton* const button = box.button(wanted);
    if (button == nullptr) {
        ADD_FAILURE() << "the message box has no such button: " << box.text().toStdString();
        box.reject();
        return;
    }
    button->click();
}

WhenShown::WhenShown(QWidget& widget, std::function<void()> action) : m_action(std::move(action))
{
    widget.installEventFilter(this);
}

WhenShown::~WhenShown()
{
    EXPECT_TRUE(m_ran) << "the widget was not shown";
}

bool WhenShown::eventFilter(QObject* watched, QEvent* event)
{
    if (m_pending && event->type() == QEvent::Show) {
        m_pending = false;
        QTimer::singleShot(0, this, [this] {
            m_ran = true;
            m_action();
        });
    }
    return QObject::eventFilter(watched, event);
}

} // namespace kestrel::test
