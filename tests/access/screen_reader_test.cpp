// The dialog as a screen reader tells it, and as the Tab key walks it.
#include "access/access_bench.h"

#include <QAccessible>
#include <QDialog>
#include <QLabel>
#include <QTabBar>
#include <QTest>

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

using namespace kestrel::test;

namespace {

class ScreenReader : public Access
{
protected:
    ScreenReader() { QAccessible::setActive(true); }
    ~ScreenReader() override { QAccessible::setActive(false); }

    /// Shows every row, so that all of them are looked at.
    void showAll()
    {
        show();
        for (const char* hidden : {"cachemode_memory", "cachemode_pagecount"}) {
            widget(hidden).show();
        }
    }
};

QString told(const QWidget& widget, QAccessible::Text what)
{
    QAccessibleInterface* const interface =
        QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
    return interface != nullptr ? interface->text(what) : QString();
}

/// @return whether a name says something: not only dots and blanks
bool isName(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isLetterOrNumber(); });
}

/// @return the names of all controls; each has to have one
QStringList namesIn(const QWidget& parent)
{
    QStringList names;
    for (const QWidget* control : controlsIn(parent)) {
        const QString name = told(*control, QAccessible::Name);
        EXPECT_TRUE(isName(name)) << control->objectName().toStdString();
        names << name;
    }
    return names;
}

/// @return the stops of the Tab key within @p inside, from its first one on
std::vector<QWidget*> walk(QWidget& window, QWidget& start, const QWidget& inside)
{
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    start.setFocus();
    QWidget* const first = QApplication::focusWidget();
    std::vector<QWidget*> stops;
    for (int step = 0; step < 300; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget* const here = QApplication::focusWidget();
        if (here == nullptr || here == first) {
            break;
        }
        if (inside.isAncestorOf(here)) {
            stops.push_back(here);
        }
    }
    return stops;
}

/// Adds what the arrow keys reach from the buttons among @p stops: of buttons that belong together,
/// the Tab key visits one.
void addByArrows(std::vector<QWidget*>& stops)
{
    for (std::size_t i = 0; i < stops.size(); ++i) {
        if (qobject_cast<QAbstractButton*>(stops[i]) == nullptr) {
            continue;
        }
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Right, Qt::Key_Left}) {
            stops[i]->setFocus();
            QTest::keyClick(stops[i], key);
            QWidget* const here = QApplication::focusWidget();
            if (here != nullptr && std::count(stops.begin(), stops.end(), here) == 0) {
                stops.push_back(here);
            }
        }
    }
}

/// @return whether keys have to reach the control; the mirror of a bar only shows its value
bool isStop(const QWidget& control)
{
    const auto* const spin = qobject_cast<const QAbstractSpinBox*>(&control);
    return control.isEnabled() && !(spin != nullptr && spin->isReadOnly());
}

std::set<std::string> namesOf(const std::vector<QWidget*>& widgets)
{
    std::set<std::string> names;
    for (const QWidget* widget : widgets) {
        names.insert(widget->objectName().toStdString());
    }
    return names;
}

} // namespace

TEST_F(ScreenReader, EveryControlOfEveryPageHasAName)
{
    showAll();
    int controls = 0;
    onEachPage([&](QWidget& page) { controls += namesIn(page).size(); });
    EXPECT_GT(controls, 120);
    EXPECT_EQ(namesIn(widget("widget_13")).size(), 3);
}

TEST_F(ScreenReader, TabsAreNamedAndTellWhichOneIsChosen)
{
    show();
    QTabBar& bar = *pages().tabBar();
    QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(&bar);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::PageTabList);
    onEachPage([&](QWidget&) {
        int chosen = 0;
        for (int index = 0; index < bar.count(); ++index) {
            QAccessibleInterface* const tab = list->child(index);
            ASSERT_NE(tab, nullptr);
            EXPECT_EQ(tab->text(QAccessible::Name), bar.tabText(index));
            EXPECT_TRUE(!bar.isTabEnabled(index) || isName(tab->text(QAccessible::Name)));
            // Qt tells the chosen tab of a bar by the focus.
            chosen += tab->state().focused ? 1 : 0;
        }
        EXPECT_EQ(chosen, 1);
    });
}

TEST_F(ScreenReader, ControlsTellTheirValues)
{
    showAll();
    onEachPage([](QWidget& page) {
        for (const QWidget* control : controlsIn(page)) {
            QAccessibleInterface* const told =
                QAccessible::queryAccessibleInterface(const_cast<QWidget*>(control));
            ASSERT_NE(told, nullptr);
            const std::string name = control->objectName().toStdString();
            if (const auto* const combo = qobject_cast<const QComboBox*>(control)) {
                EXPECT_EQ(told->text(QAccessible::Value), combo->currentText()) << name;
            } else if (qobject_cast<const QAbstractSlider*>(control) != nullptr ||
                       qobject_cast<const QAbstractSpinBox*>(control) != nullptr) {
                EXPECT_NE(told->valueInterface(), nullptr) << name;
            } else if (const auto* const button = qobject_cast<const QAbstractButton*>(control)) {
                EXPECT_EQ(told->state().checked, button->isChecked()) << name;
                EXPECT_EQ(told->state().disabled, !button->isEnabled()) << name;
            }
        }
    });
}

// A list is called by its chosen entry on Linux; what the entry is about is said by something else.
TEST_F(ScreenReader, ListsTellWhatTheyAreAbout)
{
    int lists = 0;
    for (const QComboBox* list : dialog().findChildren<QComboBox*>()) {
        const std::string name = list->objectName().toStdString();
        QAccessibleInterface* const told =
            QAccessible::queryAccessibleInterface(const_cast<QComboBox*>(list));
        ASSERT_NE(told, nullptr);
        EXPECT_EQ(told->role(), QAccessible::ComboBox) << name;
        EXPECT_TRUE(!told->relations(QAccessible::Label).isEmpty() ||
                    isName(told->text(QAccessible::Description)))
            << name;
        EXPECT_TRUE(isName(list->accessibleName())) << name;
        ++lists;
    }
    EXPECT_GT(lists, 25);
}

TEST_F(ScreenReader, ControlsOfDisabledPanelsAreWhatTheyAre)
{
    const std::pair<const char*, QAccessible::Role> controls[] = {
        {"gray_doc_type", QAccessible::ComboBox},  {"gray_value", QAccessible::ScrollBar},
        {"pushButton_11", QAccessible::CheckBox},  {"checkBox", QAccessible::CheckBox},
        {"crop_adjust_top", QAccessible::SpinBox}, {"label_59", QAccessible::StaticText},
        {"despeckle", QAccessible::CheckBox},      {"lineEdit", QAccessible::EditableText}};
    for (const auto& [name, role] : controls) {
        QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(&widget(name));
        ASSERT_NE(told, nullptr) << name;
        EXPECT_EQ(told->role(), role) << name;
        EXPECT_TRUE(isName(told->text(QAccessible::Name))) << name;
    }
}

TEST_F(ScreenReader, LabelsAreSaidWithTheirControls)
{
    showAll();
    int labelled = 0;
    for (QLabel* label : dialog().findChildren<QLabel*>()) {
        // Qt looks for labels beside the control; further in, the control's own name has to do.
        if (label->buddy() == nullptr || label->buddy()->parent() != label->parent()) {
            continue;
        }
        QAccessibleInterface* const control = QAccessible::queryAccessibleInterface(label->buddy());
        ASSERT_NE(control, nullptr);
        const auto relations = control->relations(QAccessible::Label);
        EXPECT_TRUE(std::any_of(relations.cbegin(), relations.cend(), [&](const auto& relation) {
            return relation.first->object() == label;
        })) << label->objectName().toStdString();
        ++labelled;
    }
    EXPECT_GT(labelled, 30);
}

TEST_F(ScreenReader, KeysReachEveryControlThatCanBeUsed)
{
    showAll();
    onEachPage([&](QWidget& page) {
        std::vector<QWidget*> wanted;
        for (QWidget* control : controlsIn(page)) {
            if (isStop(*control)) {
                wanted.push_back(control);
            }
        }
        std::vector<QWidget*> stops = walk(dialog(), pages(), page);
        addByArrows(stops);
        const auto reached = namesOf(stops);
        for (const std::string& name : namesOf(wanted)) {
            EXPECT_EQ(reached.count(name), 1U) << name;
        }
        const auto below = namesOf(walk(dialog(), pages(), widget("widget_13")));
        EXPECT_EQ(below.count("sure") + below.count("cancel") + below.count("default_setting"), 3U);
    });
}

TEST_F(ScreenReader, TabKeyVisitsEachModeBothWays)
{
    show();
    pages().setCurrentIndex(0);
    const auto stops = namesOf(walk(dialog(), pages(), widget("widget_mode")));
    for (const char* name :
         {"front_color", "front_gray", "front_bw", "rear_color", "rear_gray", "rear_bw"}) {
        EXPECT_EQ(stops.count(name), 1U) << name;
    }
    std::set<std::string> back;
    combo("source").setFocus();
    for (int step = 0; step < 20; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        back.insert(QApplication::focusWidget()->objectName().toStdString());
    }
    EXPECT_EQ(back.count("front_gray") + back.count("rear_bw") + back.count("rear_gray"), 3U);
    // Reached, not chosen.
    EXPECT_EQ(dialog().mask(), 4);
}

TEST_F(ScreenReader, TabKeyFollowsTheEye)
{
    showAll();
    onEachPage([&](QWidget& page) {
        const std::vector<QWidget*> stops = walk(dialog(), pages(), page);
        for (std::size_t i = 1; i < stops.size(); ++i) {
            const auto place = [&page](const QWidget* stop) {
                return QRect(stop->mapTo(&page, QPoint()), stop->size());
            };
            const QRect before = place(stops[i - 1]);
            const QRect here = place(stops[i]);
            // Up only into a column further right.
            EXPECT_FALSE(here.bottom() < before.top() && here.left() <= before.left())
                << stops[i - 1]->objectName().toStdString() << " to "
                << stops[i]->objectName().toStdString();
        }
    });
}

TEST_F(ScreenReader, SmallDialogsAreNamedAndWalkedInOrder)
{
    for (const char* name : {"EditTemplate", "AddUserTemplate", "CustomResolution"}) {
        SCOPED_TRACE(name);
        auto& small = child<QDialog>(dialog(), name);
        EXPECT_TRUE(isName(told(small, QAccessible::Name)));
        small.setModal(false);
        small.show();
        settle();
        EXPECT_GE(namesIn(small).size(), 3);
        const std::vector<QWidget*> controls = controlsIn(small);
        ASSERT_FALSE(controls.empty());
        std::vector<QWidget*> wanted;
        std::copy_if(controls.begin(), controls.end(), std::back_inserter(wanted),
                     [](const QWidget* control) { return isStop(*control); });
        auto reached = namesOf(walk(small, *wanted.front(), small));
        reached.insert(wanted.front()->objectName().toStdString());
        EXPECT_EQ(reached, namesOf(wanted));
        small.close();
    }
}
