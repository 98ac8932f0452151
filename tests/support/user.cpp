#include "support/user.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

namespace kestrel::test {

QStringList items(const QComboBox& combo)
{
    QStringList texts;
    for (int i = 0; i < combo.count(); ++i) {
        texts << combo.itemText(i);
    }
    return texts;
}

bool reveal(QWidget& widget)
{
    for (QWidget* inner = &widget; inner != nullptr; inner = inner->parentWidget()) {
        if (auto* const tabs = qobject_cast<QTabWidget*>(inner)) {
            for (int i = 0; i < tabs->count(); ++i) {
                if (tabs->widget(i)->isAncestorOf(&widget)) {
                    tabs->setCurrentIndex(i);
                }
            }
        }
        if (auto* const area = qobject_cast<QScrollArea*>(inner)) {
            area->ensureWidgetVisible(&widget);
        }
    }
    settle();
    EXPECT_TRUE(widget.isVisible()) << widget.objectName().toStdString() << " is not visible";
    return widget.isVisible();
}

void click(QAbstractButton& button)
{
    if (!reveal(button)) {
        return;
    }
    EXPECT_TRUE(button.isEnabled()) << button.objectName().toStdString() << " is disabled";
    const bool hasIndicator = qobject_cast<QCheckBox*>(&button) != nullptr ||
                              qobject_cast<QRadioButton*>(&button) != nullptr;
    const QPoint middle = button.rect().center();
    const QPoint at = hasIndicator ? QPoint(qMin(8, middle.x()), middle.y()) : middle;
    QTest::mouseClick(&button, Qt::LeftButton, Qt::NoModifier, at);
}

void press(QAbstractButton& button)
{
    EXPECT_TRUE(button.isEnabled()) << button.objectName().toStdString() << " is disabled";
    button.click();
}

void type(QAbstractSpinBox& box, const QString& text)
{
    if (!reveal(box)) {
        return;
    }
    EXPECT_TRUE(box.isEnabled()) << box.objectName().toStdString() << " is disabled";
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, text);
    QTest::keyClick(&box, Qt::Key_Tab);
}

void select(QComboBox& combo, int index)
{
    if (!reveal(combo)) {
        return;
    }
    EXPECT_TRUE(combo.isEnabled()) << combo.objectName().toStdString() << " is disabled";
    ASSERT_LT(index, combo.count()) << combo.objectName().toStdString();
    while (combo.currentIndex() > index) {
        const int before = combo.currentIndex();
        QTest::keyClick(&combo, Qt::Key_Up);
        ASSERT_NE(combo.currentIndex(), before) << combo.objectName().toStdString();
    }
    while (combo.currentIndex() < index) {
        const int before = combo.currentIndex();
        QTest::keyClick(&combo, Qt::Key_Down);
        ASSERT_NE(combo.currentIndex(), before) << combo.objectName().toStdString();
    }
}

void select(QComboBox& combo, const QString& text)
{
    const int index = combo.findText(text);
    ASSERT_GE(index, 0) << combo.objectName().toStdString() << " has no item "
                        << text.toStdString();
    select(combo, index);
}

void settle()
{
    QApplication::sendPostedEvents();
    QApplication::processEvents();
}

} // namespace kestrel::test
