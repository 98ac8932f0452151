#include "dialog_hand.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPixmap>
#include <QTabWidget>
#include <QTimer>

namespace kestrel {

namespace {

void sendMouse(QWidget& widget, QEvent::Type type, const QPointF& place, Qt::MouseButton button,
               Qt::MouseButtons held)
{
    QMouseEvent event(type, place, widget.mapToGlobal(place.toPoint()), button, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

DialogHand::DialogHand(QWidget* dialog, QString& problem) : m_dialog(dialog), m_problem(problem)
{
    if (dialog == nullptr) {
        note(QStringLiteral("no dialog"));
    }
}

template <typename Widget>
Widget* DialogHand::find(const char* name)
{
    auto* widget = m_dialog ? m_dialog->findChild<Widget*>(QLatin1String(name)) : nullptr;
    if (widget == nullptr || !widget->isEnabled()) {
        note(QStringLiteral("%1 cannot be used").arg(QLatin1String(name)));
        return nullptr;
    }
    return widget;
}

void DialogHand::choose(const char* name, const QString& text)
{
    auto* list = find<QComboBox>(name);
    const int index = list != nullptr ? list->findText(text, Qt::MatchStartsWith) : -1;
    if (index < 0) {
        note(QStringLiteral("%1 has no %2").arg(QLatin1String(name), text));
        return;
    }
    list->setCurrentIndex(index);
}

void DialogHand::chooseFirst(const char* name)
{
    if (auto* list = find<QComboBox>(name)) {
        list->setCurrentIndex(0);
    }
}

void DialogHand::set(const char* name, bool on)
{
    auto* button = find<QAbstractButton>(name);
    if (button != nullptr && button->isChecked() != on) {
        button->click();
    }
}

void DialogHand::click(const char* name)
{
    if (auto* button = find<QAbstractButton>(name)) {
        button->click();
    }
}

void DialogHand::type(const char* name, const QString& text)
{
    if (auto* line = find<QLineEdit>(name)) {
        line->setText(text);
    }
}

void DialogHand::openTab(const char* page)
{
    auto* tabs = find<QTabWidget>("tabWidget");
    for (int i = 0; tabs != nullptr && i < tabs->count(); ++i) {
        if (tabs->widget(i)->objectName() == QLatin1String(page) && tabs->isTabEnabled(i)) {
            tabs->setCurrentIndex(i);
            // Layouts take their final shape in the event loop.
            QCoreApplication::processEvents();
            return;
        }
    }
    note(QStringLiteral("no page %1").arg(QLatin1String(page)));
}

void DialogHand::drag(const char* name, QPointF from, QPointF to)
{
    auto* widget = find<QWidget>(name);
    if (widget == nullptr) {
        return;
    }
    const auto place = [widget](const QPointF& part) {
        return QPointF(qRound(part.x() * widget->width()), qRound(part.y() * widget->height()));
    };
    sendMouse(*widget, QEvent::MouseButtonPress, place(from), Qt::LeftButton, Qt::LeftButton);
    sendMouse(*widget, QEvent::MouseMove, place((from + to) / 2), Qt::NoButton, Qt::LeftButton);
    sendMouse(*widget, QEvent::MouseMove, place(to), Qt::NoButton, Qt::LeftButton);
    sendMouse(*widget, QEvent::MouseButtonRelease, place(to), Qt::LeftButton, Qt::NoButton);
}

bool DialogHand::isOn(const char* name)
{
    const auto* button = find<QAbstractButton>(name);
    return button != nullptr && button->isChecked();
}

QString DialogHand::chosen(const char* name)
{
    const auto* list = find<QComboBox>(name);
    return list != nullptr ? list->currentText() : QString();
}

double DialogHand::number(const char* name)
{
    const auto* box = find<QDoubleSpinBox>(name);
    return box != nullptr ? box->value() : 0.0;
}

void DialogHand::photograph(const QString& file)
{
    if (QWidget* focus = QApplication::focusWidget()) {
        focus->clearFocus();
    }
    QCoreApplication::processEvents();
    if (!m_dialog || !m_dialog->grab().save(file)) {
        note(QStringLiteral("%1 cannot be written").arg(file));
    }
}

void DialogHand::note(const QString& problem)
{
    if (m_problem.isEmpty()) {
        m_problem = problem;
    }
}

void inNextDialog(QObject* context, const std::function<void(QWidget*)>& then)
{
    QWidget* before = QApplication::activeModalWidget();
    QTimer::singleShot(0, context, [then, before] {
        QWidget* dialog = QApplication::activeModalWidget();
        then(dialog != before ? dialog : nullptr);
    });
}

} // namespace kestrel
