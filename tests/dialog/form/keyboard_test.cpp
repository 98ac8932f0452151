// The form without a mouse and without eyes: tab order, default button, accessible names.
#include "dialog/form/form.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTest>
#include <QTextEdit>

#include <algorithm>
#include <map>
#include <set>

using kestrel::test::Form;

namespace {

/// @return what the Tab key visits, beginning after the tab bar
std::vector<QWidget*> tabChain(Form& form)
{
    const std::vector<QWidget*> own = form.widgets();
    std::vector<QWidget*> chain;
    for (QWidget* widget = form.ui.tabWidget->nextInFocusChain(); widget != form.ui.tabWidget;
         widget = widget->nextInFocusChain()) {
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 &&
            std::find(own.begin(), own.end(), widget) != own.end()) {
            chain.push_back(widget);
        }
    }
    return chain;
}

/// @return the index of the page, or the number of pages for the row below them
int pageOf(const Form& form, const QWidget* widget)
{
    const QTabWidget& tabs = *form.ui.tabWidget;
    for (int index = 0; index < tabs.count(); ++index) {
        if (tabs.widget(index)->isAncestorOf(widget)) {
            return index;
        }
    }
    return tabs.count();
}

bool isControl(const QWidget& widget)
{
    return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSlider*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QTextEdit*>(&widget) != nullptr;
}

} // namespace

TEST(FormKeyboard, TabVisitsEveryControlOnceExceptReadOnlyMirrors)
{
    Form form;
    std::multiset<QString> visited;
    for (const QWidget* widget : tabChain(form)) {
        visited.insert(widget->objectName());
    }
    for (const QWidget* widget : form.widgets()) {
        if (!isControl(*widget)) {
            continue;
        }
        const auto* const spin = qobject_cast<const QAbstractSpinBox*>(widget);
        const std::size_t times = spin != nullptr && spin->isReadOnly() ? 0U : 1U;
        EXPECT_EQ(visited.count(widget->objectName()), times) << widget->objectName().toStdString();
    }
}

TEST(FormKeyboard, TabGoesPageByPageThenToTheButtonsBelow)
{
    Form form;
    int page = 0;
    for (const QWidget* widget : tabChain(form)) {
        const int here = pageOf(form, widget);
        EXPECT_GE(here, page) << widget->objectName().toStdString();
        page = here;
    }
    EXPECT_EQ(page, form.ui.tabWidget->count());
}

TEST(FormKeyboard, TabNeverGoesBackUpAndLeftWithinAPanel)
{
    Form form;
    form.ui.cachemode_memory->show();
    form.ui.cachemode_pagecount->show();
    form.dialog.show();
    for (int page = 0; page < form.ui.tabWidget->count(); ++page) {
        form.ui.tabWidget->setCurrentIndex(page);
        QApplication::processEvents();
        std::map<const QWidget*, QPoint> last;
        for (const QWidget* widget : tabChain(form)) {
            if (pageOf(form, widget) != page) {
                continue;
            }
            const QWidget* const panel = widget->parentWidget();
            const QPoint here = widget->geometry().center();
            if (last.count(panel) != 0) {
                const QPoint before = last[panel];
                EXPECT_FALSE(here.y() < before.y() - 4 && here.x() <= before.x())
                    << widget->objectName().toStdString();
            }
            last[panel] = here;
        }
    }
}

TEST(FormKeyboard, ControlsWithoutTextHaveAnAccessibleName)
{
    Form form;
    int named = 0;
    for (const QWidget* widget : form.widgets()) {
        if (!isControl(*widget)) {
            continue;
        }
        const auto* const button = qobject_cast<const QAbstractButton*>(widget);
        const QString text =
            button != nullptr ? button->text().remove(QLatin1Char('.')).trimmed() : QString();
        if (text.isEmpty()) {
            EXPECT_FALSE(widget->accessibleName().trimmed().isEmpty())
                << widget->objectName().toStdString();
            ++named;
        }
    }
    EXPECT_GT(named, 80);
}

TEST(FormKeyboard, AccessibleNamesOfOnePageDiffer)
{
    Form form;
    std::set<std::pair<int, QString>> seen;
    for (const QWidget* widget : form.widgets()) {
        if (isControl(*widget) && !widget->accessibleName().isEmpty()) {
            EXPECT_TRUE(seen.emplace(pageOf(form, widget), widget->accessibleName()).second)
                << widget->objectName().toStdString();
        }
    }
}

TEST(FormKeyboard, BuddiesStandBesideTheirLabels)
{
    Form form;
    for (const QLabel* label : form.dialog.findChildren<QLabel*>()) {
        if (label->buddy() == nullptr) {
            continue;
        }
        const QString name = label->objectName();
        EXPECT_TRUE(isControl(*label->buddy())) << name.toStdString();
        EXPECT_TRUE(label->parentWidget()->isAncestorOf(label->buddy())) << name.toStdString();
    }
}

TEST(FormKeyboard, EnterMeansOkAndNothingElse)
{
    Form form;
    for (const QPushButton* button : form.dialog.findChildren<QPushButton*>()) {
        const bool below = button->parentWidget() == form.ui.widget_13;
        EXPECT_EQ(button->autoDefault(), below) << button->objectName().toStdString();
        EXPECT_EQ(button->isDefault(), button == form.ui.sure)
            << button->objectName().toStdString();
    }
}

TEST(FormKeyboard, BarsMoveByArrowKeys)
{
    Form form;
    form.dialog.show();
    form.ui.tabWidget->setCurrentIndex(0);
    form.ui.brightness_set->setFocus();
    QTest::keyClick(form.ui.brightness_set, Qt::Key_Right);
    EXPECT_EQ(form.ui.brightness_set->value(), 1);
    EXPECT_EQ(form.ui.brightness_balue->value(), 1);
}
