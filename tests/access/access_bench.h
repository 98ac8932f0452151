/// @file
/// What the tests of reaching and reading the dialog have in common.
#pragma once

#include "dialog/dialog_fixture.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QTabWidget>
#include <QTextEdit>
#include <QWidget>

#include <functional>
#include <vector>

namespace kestrel::test {

/// @return whether a user can act on the widget or read a value in it
inline bool isControl(const QWidget& widget)
{
    return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSlider*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QTextEdit*>(&widget) != nullptr;
}

/// @return the visible controls below @p parent, without those inside other controls
inline std::vector<QWidget*> controlsIn(const QWidget& parent)
{
    std::vector<QWidget*> found;
    for (QWidget* const widget : parent.findChildren<QWidget*>()) {
        const QString name = widget->objectName();
        if (widget->isVisible() && !name.isEmpty() && !name.startsWith(QLatin1String("qt_")) &&
            isControl(*widget)) {
            found.push_back(widget);
        }
    }
    return found;
}

/// @return the scale that the test's environment asks for
inline double scaleOfThisRun()
{
    return qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble();
}

/// A dialog bound to a scanner with everything.
class Access : public DialogTest
{
protected:
    Access() : m_scanner(fullScanner())
    {
        EXPECT_DOUBLE_EQ(qApp->devicePixelRatio(), scaleOfThisRun());
        bind(m_scanner);
    }

    QTabWidget& pages() { return child<QTabWidget>(dialog(), "tabWidget"); }
    QScrollArea& area() { return child<QScrollArea>(dialog(), "scrollArea"); }

    /// Calls @p look on each page that has a tab.
    void onEachPage(const std::function<void(QWidget&)>& look)
    {
        for (int index = 0; index < pages().count(); ++index) {
            if (pages().isTabEnabled(index)) {
                SCOPED_TRACE("page " + pages().tabText(index).toStdString());
                pages().setCurrentIndex(index);
                settle();
                look(*pages().widget(index));
            }
        }
    }

    FakeScanner m_scanner;
};

} // namespace kestrel::test
