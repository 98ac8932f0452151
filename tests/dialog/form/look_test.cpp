// Sizes, positions and colours of the form.
#include "access/palettes.h"
#include "dialog/form/form.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>

using kestrel::test::darkPalette;
using kestrel::test::Form;
using kestrel::test::PaletteInForce;

namespace {

/// @return the lightness (0-255) of the darkest and of the lightest pixel
std::pair<int, int> lightness(const QImage& image)
{
    std::pair<int, int> range(255, 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int here = image.pixelColor(x, y).lightness();
            range = {std::min(range.first, here), std::max(range.second, here)};
        }
    }
    return range;
}

/// @return a pixel of the dialog's picture in the empty corner of the current page
QPoint groundOf(Form& form)
{
    QWidget& page = *form.ui.tabWidget->currentWidget();
    return page.mapTo(&form.dialog, page.rect().bottomRight() - QPoint(3, 3)) *
           form.dialog.devicePixelRatioF();
}

QImage picture(QWidget& widget)
{
    return widget.grab().toImage();
}

/// Counts how often each object's style changes while it lives.
class StyleChanges : public QObject
{
public:
    StyleChanges() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::StyleChange) {
            ++counts_[watched];
        } else if (event->type() == QEvent::Destroy) {
            counts_.remove(watched); // the next one at this address is another
        }
        return false;
    }

    int of(const QObject* object) const { return counts_.value(object); }

private:
    QHash<const QObject*, int> counts_;
};

} // namespace

TEST(FormLook, ScaleOfThisRunIsInForce)
{
    const double scale = qgetenv("QT_SCALE_FACTOR").toDouble();
    ASSERT_GT(scale, 0);
    EXPECT_DOUBLE_EQ(qApp->devicePixelRatio(), scale);
}

// Styling is nearly all that creating the dialog costs: a second sheet between the window and the
// controls would double it.
TEST(FormLook, EveryControlIsStyledOnce)
{
    const StyleChanges changes;
    Form form;
    ASSERT_GT(changes.of(form.ui.sure), 0);
    for (const QWidget* widget : form.widgets()) {
        const int own_sheet = widget->styleSheet().isEmpty() ? 0 : 1;
        EXPECT_LE(changes.of(widget), 1 + own_sheet) << widget->objectName().toStdString();
    }
}

TEST(FormLook, WindowIsModalAndOfFixedWidth)
{
    Form form;
    EXPECT_TRUE(form.dialog.isModal());
    EXPECT_EQ(form.dialog.windowModality(), Qt::ApplicationModal);
    EXPECT_EQ(form.dialog.size(), QSize(770, 750));
    EXPECT_EQ(form.dialog.minimumSize(), QSize(770, 600));
    EXPECT_EQ(form.dialog.maximumSize(), QSize(770, 750));
}

TEST(FormLook, GeometryOfTheFrame)
{
    Form form;
    form.dialog.show();
    EXPECT_EQ(form.dialog.size(), QSize(770, 750));
    EXPECT_EQ(form.ui.verticalLayout_3->contentsMargins(), QMargins());
    EXPECT_TRUE(form.ui.scrollArea->widgetResizable());
    EXPECT_EQ(form.ui.scrollArea->widget(), form.ui.scrollAreaWidgetContents);
    EXPECT_EQ(form.ui.scrollAreaWidgetContents->geometry(), QRect(0, 0, 768, 748));
    EXPECT_EQ(form.ui.scrollAreaWidgetContents->minimumSize(), QSize(750, 740));
    EXPECT_EQ(form.ui.tabWidget->geometry(), QRect(10, 10, 750, 670));
    EXPECT_EQ(form.ui.widget_cd_front->size(), QSize(190, 23));
    EXPECT_EQ(form.ui.widget_cd_rear->size(), QSize(190, 23));
    EXPECT_EQ(form.ui.scan_waitingjob_widget->maximumHeight(), 40);
    EXPECT_EQ(form.ui.scan_waitingjob_widget->minimumHeight(), 40);
    EXPECT_EQ(form.ui.verticalLayout->spacing(), 3);
}

TEST(FormLook, GeometryOfThePreview)
{
    Form form;
    form.ui.tabWidget->setCurrentIndex(5);
    form.dialog.show();
    EXPECT_EQ(form.ui.widget_5->geometry(), QRect(10, 10, 421, 601));
    EXPECT_EQ(form.ui.widget_5->minimumSize(), QSize(311, 531));
    EXPECT_EQ(form.ui.preview_box->geometry(), QRect(36, 31, 371, 561));
    EXPECT_EQ(form.ui.preview_box->styleSheet(),
              QStringLiteral("background-color: rgb(255, 255, 127);"));
}

TEST(FormLook, LowWindowScrollsDownOnly)
{
    Form form;
    form.dialog.resize(770, 600);
    form.dialog.show();
    QApplication::processEvents();
    EXPECT_TRUE(form.ui.scrollArea->verticalScrollBar()->isVisible());
    EXPECT_FALSE(form.ui.scrollArea->horizontalScrollBar()->isVisible());
}

TEST(FormLook, TabBarShowsAllTextsAndCannotBeClosed)
{
    Form form;
    EXPECT_EQ(form.ui.tabWidget->tabPosition(), QTabWidget::North);
    EXPECT_EQ(form.ui.tabWidget->tabShape(), QTabWidget::Rounded);
    EXPECT_EQ(form.ui.tabWidget->elideMode(), Qt::ElideNone);
    EXPECT_FALSE(form.ui.tabWidget->documentMode());
    EXPECT_FALSE(form.ui.tabWidget->tabsClosable());
}

TEST(FormLook, DisabledTabTakesNoRoom)
{
    Form form;
    form.dialog.show();
    const QTabBar& bar = *form.ui.tabWidget->tabBar();
    for (const int index : {7, 2, 1}) {
        EXPECT_GT(bar.tabRect(index).width(), 20);
        form.ui.tabWidget->setTabEnabled(index, false);
        // The bar measures its tabs again when a text is set, not when one is disabled.
        form.ui.tabWidget->setTabText(index, form.ui.tabWidget->tabText(index));
        EXPECT_EQ(bar.tabRect(index).width(), 0);
    }
    EXPECT_EQ(bar.tabRect(8).left(), bar.tabRect(6).right() + 1);
}

TEST(FormLook, PreviewLabelsUseElevenPointsWithKerning)
{
    Form form;
    for (const QLabel* label : {form.ui.offset_x_label, form.ui.offset_y_label,
                                form.ui.offset_w_label, form.ui.offset_h_label}) {
        EXPECT_EQ(label->font().pointSize(), 11);
        EXPECT_TRUE(label->font().kerning());
    }
}

TEST(FormLook, CheckedModeButtonIsBlue)
{
    Form form;
    form.ui.tabWidget->setCurrentIndex(0);
    form.dialog.show();
    const QImage checked = picture(*form.ui.color_front_image);
    const QImage plain = picture(*form.ui.gray_front_image);
    const int near = 4 * qRound(checked.devicePixelRatio());
    EXPECT_EQ(checked.pixelColor(near, near), QColor(29, 150, 255));
    EXPECT_EQ(plain.pixelColor(near, near), QColor(245, 245, 245));
    form.ui.front_widget->setEnabled(false);
    QApplication::processEvents();
    EXPECT_EQ(picture(*form.ui.gray_front_image).pixelColor(near, near), QColor(240, 240, 240));
}

TEST(FormLook, ReadableWhateverThePaletteOfTheHost)
{
    for (const QPalette& palette : {QPalette(QApplication::palette()), darkPalette()}) {
        const PaletteInForce inForce(palette);
        Form form;
        form.ui.background_processing_setting->addItem(QStringLiteral("自动"));
        form.dialog.show();
        for (int page = 0; page < form.ui.tabWidget->count(); ++page) {
            form.ui.tabWidget->setCurrentIndex(page);
            QApplication::processEvents();
            EXPECT_EQ(picture(form.dialog).pixelColor(groundOf(form)), QColor(Qt::white));
            for (QWidget* const widget : form.widgets()) {
                const bool shown = widget->isVisible() && widget->isEnabled() &&
                                   !widget->property("modeButton").toBool();
                if (!shown || (qobject_cast<QLabel*>(widget) == nullptr &&
                               qobject_cast<QAbstractButton*>(widget) == nullptr &&
                               qobject_cast<QComboBox*>(widget) == nullptr &&
                               qobject_cast<QAbstractSpinBox*>(widget) == nullptr)) {
                    continue;
                }
                const auto range = lightness(picture(*widget));
                EXPECT_GE(range.second, 245) << widget->objectName().toStdString();
                const auto* const button = qobject_cast<QAbstractButton*>(widget);
                if (button == nullptr || !button->text().isEmpty()) {
                    EXPECT_LE(range.first, 120) << widget->objectName().toStdString();
                }
            }
        }
    }
}

TEST(FormLook, ChildDialogsLookAsElsewhere)
{
    const auto look = [](QWidget& parent) {
        QDialog child(&parent);
        child.resize(200, 100);
        QPushButton button(QStringLiteral("确定"), &child);
        QLabel label(QStringLiteral("提示"), &child);
        label.move(100, 50);
        child.ensurePolished();
        return picture(child);
    };
    Form form;
    QDialog plain;
    EXPECT_EQ(look(form.dialog), look(plain));
}
