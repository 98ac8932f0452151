// No text is cut off, nothing overlaps, and rows stand in line, in several fonts.
#include "dialog/form/form.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyleOption>
#include <QTabBar>

#include <string>

using kestrel::test::Form;

namespace {

struct Face
{
    const char* family;
    int points;
};

/// The fonts of usual desktops. A family that is missing falls back to another of the same size.
const Face faces[] = {
    {"DejaVu Sans", 9}, {"DejaVu Sans", 11}, {"Noto Sans CJK SC", 10}, {"Noto Sans CJK SC", 11}};

/// The form as a bound dialog shows it, with the longest texts that come at run time.
class Clipping : public testing::TestWithParam<Face>
{
protected:
    Clipping() : m_before(QApplication::font())
    {
        QApplication::setFont(QFont(QString::fromUtf8(GetParam().family), GetParam().points));
    }
    ~Clipping() override { QApplication::setFont(m_before); }
    Q_DISABLE_COPY_MOVE(Clipping)

    /// Calls @p look once for each page, with all its panels shown.
    template <typename Look>
    void onEachPage(Look look)
    {
        Form form;
        form.ui.source->addItems({"文档进纸器", "平板", "自动选择纸张来源"});
        form.ui.resolution_gengel_slide->addItem("custom-1200");
        form.ui.autocropdeskew->addItems({"原稿尺寸", "自动多张图像-平台"});
        for (QComboBox* const sizes : {form.ui.scanrange_setting, form.ui.preview_scanrange}) {
            sizes->addItems({"US Letter - 8.5 x 11 英寸", "ISO A4 - 21.0 x 29.7 厘米"});
        }
        form.ui.background_processing_setting->addItems({"自动", "网纹"});
        form.ui.cachemode_memory->show();
        form.ui.cachemode_pagecount->show();
        form.ui.cachemode_value_label->setText("1024");
        form.dialog.show();
        for (int page = 0; page < form.ui.tabWidget->count(); ++page) {
            SCOPED_TRACE("page " + form.ui.tabWidget->tabText(page).toStdString());
            form.ui.tabWidget->setCurrentIndex(page);
            QApplication::processEvents();
            look(form, *form.ui.tabWidget->widget(page));
        }
    }

private:
    QFont m_before;
};

int textWidth(const QWidget& widget, const QString& text)
{
    return widget.fontMetrics().horizontalAdvance(text);
}

/// @return the room that a button has for its text
QRect textRoom(const QAbstractButton& button)
{
    if (const auto* const check = qobject_cast<const QCheckBox*>(&button)) {
        QStyleOptionButton option;
        option.initFrom(check);
        return button.style()->subElementRect(QStyle::SE_CheckBoxContents, &option, check);
    }
    if (const auto* const radio = qobject_cast<const QRadioButton*>(&button)) {
        QStyleOptionButton option;
        option.initFrom(radio);
        return button.style()->subElementRect(QStyle::SE_RadioButtonContents, &option, radio);
    }
    return button.rect().adjusted(1, 1, -1, -1);
}

/// @return the room that a combo box has for its current text
int textRoom(const QComboBox& combo)
{
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    return combo.style()
        ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo)
        .width();
}

/// Glyphs of the text stand inside the height; the font's own leading may not.
int glyphHeight(const QWidget& widget, const QString& text)
{
    return widget.fontMetrics().tightBoundingRect(text).height();
}

std::string nameOf(const testing::TestParamInfo<Face>& info)
{
    std::string name = info.param.family;
    name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
    return name + std::to_string(info.param.points);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Fonts, Clipping, testing::ValuesIn(faces), nameOf);

TEST_P(Clipping, LabelsAndButtonsShowTheirWholeText)
{
    onEachPage([](Form&, const QWidget& page) {
        for (const QLabel* label : page.findChildren<QLabel*>()) {
            EXPECT_GE(label->width(), textWidth(*label, label->text()))
                << label->objectName().toStdString();
            EXPECT_GE(label->height(), glyphHeight(*label, label->text()))
                << label->objectName().toStdString();
        }
        for (const QAbstractButton* button : page.findChildren<QAbstractButton*>()) {
            if (button->text().isEmpty()) {
                continue;
            }
            const QRect room = textRoom(*button);
            EXPECT_GE(room.width(), textWidth(*button, button->text()))
                << button->objectName().toStdString();
            EXPECT_GE(room.height(), glyphHeight(*button, button->text()))
                << button->objectName().toStdString();
        }
        for (const QGroupBox* box : page.findChildren<QGroupBox*>()) {
            EXPECT_GE(box->width(), textWidth(*box, box->title()) + 20);
        }
    });
}

TEST_P(Clipping, ComboBoxesShowTheirLongestItem)
{
    onEachPage([](Form&, const QWidget& page) {
        for (const QComboBox* combo : page.findChildren<QComboBox*>()) {
            for (int index = 0; index < combo->count(); ++index) {
                EXPECT_GE(textRoom(*combo), textWidth(*combo, combo->itemText(index)))
                    << combo->objectName().toStdString() << " "
                    << combo->itemText(index).toStdString();
            }
            EXPECT_GE(combo->height(), combo->fontMetrics().ascent() + 2)
                << combo->objectName().toStdString();
        }
    });
}

TEST_P(Clipping, SpinBoxesShowTheirLongestValue)
{
    onEachPage([](Form& form, const QWidget& page) {
        form.ui.brightness_set->setMinimum(-1000);
        for (const QAbstractSpinBox* spin : page.findChildren<QAbstractSpinBox*>()) {
            const auto* const edit = spin->findChild<QLineEdit*>();
            ASSERT_NE(edit, nullptr);
            const QString longest =
                spin->property("decimals").isValid() ? "1000.0" : QStringLiteral("-100");
            EXPECT_GE(edit->width(), textWidth(*edit, longest)) << spin->objectName().toStdString();
            EXPECT_GE(edit->height(), glyphHeight(*edit, longest))
                << spin->objectName().toStdString();
        }
    });
}

TEST_P(Clipping, TabsShowTheirWholeTextSideBySide)
{
    onEachPage([](Form& form, const QWidget&) {
        const QTabBar& bar = *form.ui.tabWidget->tabBar();
        QFont font = bar.font();
        font.setPixelSize(16);
        for (int index = 0; index < bar.count(); ++index) {
            font.setBold(index == bar.currentIndex());
            EXPECT_GE(bar.tabRect(index).width(),
                      QFontMetrics(font).horizontalAdvance(bar.tabText(index)));
        }
        EXPECT_LE(bar.tabRect(bar.count() - 1).right(), form.ui.tabWidget->width());
    });
}

TEST_P(Clipping, NothingOverlapsOrLeavesItsPanel)
{
    onEachPage([](Form&, const QWidget& page) {
        for (const QWidget* widget : page.findChildren<QWidget*>()) {
            const QWidget* const panel = widget->parentWidget();
            const bool ours = !widget->objectName().isEmpty() && widget->isVisible() &&
                              !widget->objectName().startsWith(QLatin1String("qt_"));
            if (!ours) {
                continue;
            }
            EXPECT_TRUE(panel->rect().contains(widget->geometry()))
                << widget->objectName().toStdString();
            const auto peers = panel->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
            for (const QWidget* peer : peers) {
                if (peer != widget && peer->isVisible() && !peer->objectName().isEmpty()) {
                    EXPECT_FALSE(peer->geometry().intersects(widget->geometry()))
                        << widget->objectName().toStdString() << " and "
                        << peer->objectName().toStdString();
                }
            }
        }
    });
}

TEST_P(Clipping, LabelsStandInLineWithTheirControls)
{
    onEachPage([](Form& form, const QWidget& page) {
        for (const QLabel* label : page.findChildren<QLabel*>()) {
            const QWidget* const buddy = label->buddy();
            const bool above = label == form.ui.label_12 || label == form.ui.label_6;
            if (buddy == nullptr || above || !label->isVisible()) {
                continue;
            }
            const int a = label->mapTo(&page, label->rect().center()).y();
            const int b = buddy->mapTo(&page, buddy->rect().center()).y();
            EXPECT_LE(std::abs(a - b), 2) << label->objectName().toStdString();
            EXPECT_LT(label->mapTo(&page, label->rect().topRight()).x(),
                      buddy->mapTo(&page, QPoint()).x())
                << label->objectName().toStdString();
        }
    });
}

TEST_P(Clipping, FrontAndBackModesStandInLine)
{
    onEachPage([](Form& form, const QWidget& page) {
        if (&page != form.ui.tab_image) {
            return;
        }
        const auto middle = [&page](const QWidget* widget) {
            return widget->mapTo(&page, widget->rect().center());
        };
        const std::vector<std::vector<const QWidget*>> rows = {
            {form.ui.color_detection_checkbox, form.ui.color_detection_image_front,
             form.ui.color_detection_checkbox_2, form.ui.color_detection_image_back},
            {form.ui.front_color, form.ui.color_front_image, form.ui.rear_color,
             form.ui.color_back_image},
            {form.ui.front_gray, form.ui.gray_front_image, form.ui.rear_gray,
             form.ui.gray_back_image},
            {form.ui.front_bw, form.ui.lineart_front_image, form.ui.rear_bw,
             form.ui.lineart_back_image}};
        for (const auto& row : rows) {
            for (std::size_t column = 0; column < row.size(); ++column) {
                EXPECT_LE(std::abs(middle(row[column]).y() - middle(row[0]).y()), 1)
                    << row[column]->objectName().toStdString();
                EXPECT_LE(std::abs(middle(row[column]).x() - middle(rows[0][column]).x()), 1)
                    << row[column]->objectName().toStdString();
            }
        }
    });
}
