// Whatever colours the user's desktop has, texts can be read.
#include "access/access_bench.h"
#include "access/contrast.h"
#include "access/palettes.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>

#include <functional>
#include <vector>

using namespace kestrel::test;

namespace {

struct Desktop
{
    const char* name;
    QPalette palette;
};

std::vector<Desktop> desktops()
{
    QPalette inverted;
    inverted.setColor(QPalette::Window, Qt::black);
    inverted.setColor(QPalette::Base, Qt::black);
    inverted.setColor(QPalette::Button, Qt::black);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        inverted.setColor(role, Qt::yellow);
    }
    return {{"light", QApplication::palette()}, {"dark", darkPalette()}, {"high", inverted}};
}

/// @return whether there are letters in the text; dots are too small to be measured
bool hasLetters(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isLetterOrNumber(); });
}

/// @return whether the widget shows a text that somebody has to read now
bool showsText(const QWidget& widget)
{
    const bool readable = widget.isVisible() && widget.isEnabled();
    return readable && !widget.objectName().isEmpty() &&
           (hasLetters(widget.property("text").toString()) ||
            qobject_cast<const QComboBox*>(&widget) != nullptr ||
            qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
            (qobject_cast<const QTextEdit*>(&widget) != nullptr));
}

/// The blue of what is chosen belongs to the look of the dialog.
double wanted(const QWidget& widget)
{
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    const bool chosen =
        button != nullptr && button->isChecked() && widget.property("modeButton").toBool();
    return chosen ? enoughForLargeText : enoughContrast;
}

void expectLegible(QWidget& parent)
{
    int looked = 0;
    for (QWidget* widget : parent.findChildren<QWidget*>()) {
        if (showsText(*widget)) {
            EXPECT_GE(contrastOf(*widget), wanted(*widget)) << widget->objectName().toStdString();
            ++looked;
        }
    }
    EXPECT_GT(looked, 0);
}

/// Calls @p look with the colours of each desktop in force.
void onEachDesktop(const std::function<void()>& look)
{
    for (const Desktop& desktop : desktops()) {
        SCOPED_TRACE(desktop.name);
        const PaletteInForce inForce(desktop.palette);
        look();
    }
}

class Colours : public Access
{
};

} // namespace

TEST_F(Colours, EveryEnabledTextOfTheDialogIsLegible)
{
    destroy();
    onEachDesktop([&] {
        DialogProbe dialog;
        dialog.show();
        for (QWidget* part : dialog.findChildren<QWidget*>()) {
            part->setEnabled(true);
        }
        auto& pages = child<QTabWidget>(dialog, "tabWidget");
        for (int index = 0; index < pages.count(); ++index) {
            SCOPED_TRACE(pages.tabText(index).toStdString());
            pages.setCurrentIndex(index);
            settle();
            for (QComboBox* list : pages.widget(index)->findChildren<QComboBox*>()) {
                if (list->count() == 0) {
                    list->addItem(QStringLiteral("选项"));
                }
            }
            expectLegible(dialog);
        }
    });
}

TEST_F(Colours, EveryTabIsLegible)
{
    onEachDesktop([&] {
        show();
        QTabBar& bar = *pages().tabBar();
        pages().setCurrentIndex(0);
        settle();
        for (int index = 0; index < bar.count(); ++index) {
            if (bar.isTabEnabled(index)) {
                EXPECT_GE(contrastAt(bar, bar.tabRect(index)),
                          index == 0 ? enoughForLargeText : enoughContrast)
                    << index;
            }
        }
    });
}

TEST_F(Colours, TitlesOfGroupsAreLegible)
{
    onEachDesktop([&] {
        show();
        onEachPage([](QWidget& page) {
            for (QGroupBox* box : page.findChildren<QGroupBox*>()) {
                if (!box->isVisible() || !box->isEnabled()) {
                    continue;
                }
                const QRect title(10, 0, box->fontMetrics().horizontalAdvance(box->title()),
                                  box->fontMetrics().height());
                EXPECT_GE(contrastAt(*box, title), enoughContrast)
                    << box->objectName().toStdString();
            }
        });
    });
}

TEST_F(Colours, OpenListsAreLegible)
{
    onEachDesktop([&] {
        show();
        pages().setCurrentIndex(0);
        settle();
        QComboBox& list = combo("resolution_gengel_slide");
        list.showPopup();
        settle();
        QAbstractItemView& items = *list.view();
        for (int row = 0; row < list.count(); ++row) {
            const QRect place = items.visualRect(items.model()->index(row, 0));
            EXPECT_GE(contrastAt(*items.viewport(), place), enoughContrast) << row;
        }
        list.hidePopup();
    });
}

TEST_F(Colours, SmallDialogsAreLegible)
{
    destroy();
    onEachDesktop([&] {
        DialogProbe dialog;
        for (const char* name : {"EditTemplate", "AddUserTemplate", "CustomResolution"}) {
            SCOPED_TRACE(name);
            auto& small = child<QDialog>(dialog, name);
            small.setModal(false);
            small.show();
            for (auto* line : small.findChildren<QLineEdit*>()) {
                line->setText(QStringLiteral("12"));
            }
            settle();
            expectLegible(small);
        }
    });
}

TEST_F(Colours, CheckMarksCanBeSeen)
{
    destroy();
    onEachDesktop([&] {
        DialogProbe dialog;
        dialog.show();
        settle();
        auto& check = child<QCheckBox>(dialog, "front_color");
        const auto mark = [&check] {
            return check.grab({0, 0, check.height(), check.height()})
                .toImage()
                .convertToFormat(QImage::Format_RGB32);
        };
        check.setChecked(true);
        const QImage on = mark();
        check.setChecked(false);
        const QImage off = mark();
        EXPECT_NE(on, off);
        EXPECT_GE(contrastIn(on), enoughForLargeText);
    });
}
