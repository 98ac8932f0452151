// How the form starts: ranges, values, states.
#include "dialog/form/form.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSpinBox>

using kestrel::test::Form;
using kestrel::test::Names;

namespace {

struct Bar
{
    const char* name;
    int minimum;
    int maximum;
    int value;
    int singleStep = 1;
    int pageStep = 10;
};

struct Spin
{
    const char* name;
    int minimum;
    int maximum;
    int value;
    bool readOnly;
    bool buttons;
};

struct Real
{
    const char* name;
    int decimals;
    double minimum;
    double maximum;
    double value;
    double step;
};

// clang-format off
const Bar bars[] = {
    {"binarization_value", 1, 30, 1},
    {"brightness_set", -100, 100, 0},
    {"contrast_set", -100, 100, 0},
    {"gamma_set", 30, 300, 200, 10, 50},
    {"gray_value", 1, 30, 1},
    {"acd_sensitivity_front", 1, 99, 50},
    {"acd_sensitivity_back", 1, 99, 50},
    {"horizontalScrollBar", 0, 99, 0},
    {"waitingjob_time", 0, 120, 0, 1, 5},
    {"blankpage_threshold", 0, 99, 50},
    {"background_processing_sensitivity", 0, 99, 0},
    {"cachemode_value", 0, 99, 0},
    {"cachemode_image_num", 1, 100, 1},
    {"cachemode_page_num", 1, 25, 1},
    {"powersaving_time", 1, 240, 15},
    {"poweroff_time", 1, 480, 120},
};

const Spin spins[] = {
    {"spinBox_9", 1, 30, 1, true, false},
    {"brightness_balue", -100, 100, 0, true, false},
    {"contrast_balue", -100, 100, 0, true, false},
    {"spinBox_11", 1, 30, 1, true, false},
    {"acd_sensitivity_front_value", 1, 99, 50, false, false},
    {"acd_sensitivity_back_value", 1, 99, 50, false, false},
    {"spinBox_2", 0, 99, 0, false, true},
    {"spinBox", 0, 99, 0, false, true},
    {"spinBox_3", 0, 99, 0, false, true},
    {"waitingjob_value", 0, 120, 0, true, false},
    {"spinBox_4", 0, 105, 0, false, true},
    {"despeckle_dotsnumber", 0, 255, 0, false, true},
    {"despeckle_ratios", 1, 30, 1, false, true},
};

const Real reals[] = {
    {"gamma_value", 2, 0.30, 3.00, 2.00, 0.1},
    {"tl_x", 1, 0, 99.99, 0, 0.1},
    {"tl_y", 1, 0, 99.99, 0, 0.1},
    {"br_x", 1, 0, 99.99, 0, 0.1},
    {"br_y", 1, 0, 99.99, 0, 0.1},
    {"crop_adjust_top", 1, 0, 99.99, 0, 0.1},
    {"crop_adjust_bottom", 1, 0, 99.99, 0, 0.1},
    {"crop_adjust_left", 1, 0, 99.99, 0, 0.1},
    {"crop_adjust_right", 1, 0, 99.99, 0, 0.1},
    {"prefeed_time", 1, 0, 99.99, 0, 1},
    {"length_detection_value", 1, 0, 99.99, 0, 1},
    {"offset_x", 1, 0, 215.6, 0, 0.1},
    {"offset_y", 1, 0, 1000, 0, 0.1},
    {"offset_w", 1, 0, 1000, 0, 0.1},
    {"offset_h", 1, 0, 1000, 0, 0.1},
};
// clang-format on

/// Exactly these widgets of class T, and no others, have the property.
template <typename T>
void expectOnly(const Names& expected, bool (*property)(const T&))
{
    Form form;
    Names found;
    for (QWidget* const widget : form.widgets()) {
        const auto* const one = qobject_cast<T*>(widget);
        if (one != nullptr && property(*one)) {
            found.insert(widget->objectName().toStdString());
        }
    }
    EXPECT_EQ(found, expected);
}

} // namespace

TEST(FormValues, BarsAndSliders)
{
    Form form;
    for (const Bar& row : bars) {
        SCOPED_TRACE(row.name);
        const auto& bar = form.get<QAbstractSlider>(row.name);
        EXPECT_EQ(bar.minimum(), row.minimum);
        EXPECT_EQ(bar.maximum(), row.maximum);
        EXPECT_EQ(bar.value(), row.value);
        EXPECT_EQ(bar.singleStep(), row.singleStep);
        EXPECT_EQ(bar.pageStep(), row.pageStep);
        EXPECT_EQ(bar.orientation(), Qt::Horizontal);
    }
}

TEST(FormValues, SpinBoxes)
{
    Form form;
    for (const Spin& row : spins) {
        SCOPED_TRACE(row.name);
        const auto& spin = form.get<QSpinBox>(row.name);
        EXPECT_EQ(spin.minimum(), row.minimum);
        EXPECT_EQ(spin.maximum(), row.maximum);
        EXPECT_EQ(spin.value(), row.value);
        EXPECT_EQ(spin.isReadOnly(), row.readOnly);
        EXPECT_EQ(spin.buttonSymbols() != QAbstractSpinBox::NoButtons, row.buttons);
    }
    EXPECT_EQ(form.get("spinBox_9").minimumWidth(), 60);
    EXPECT_EQ(form.get("spinBox_9").maximumWidth(), 60);
}

TEST(FormValues, MillimetresAndGamma)
{
    Form form;
    for (const Real& row : reals) {
        SCOPED_TRACE(row.name);
        const auto& spin = form.get<QDoubleSpinBox>(row.name);
        EXPECT_EQ(spin.decimals(), row.decimals);
        EXPECT_DOUBLE_EQ(spin.minimum(), row.minimum);
        // The toolkit's own 99.99 is rounded to the decimals of the box.
        const double maximum = row.maximum == 99.99 && row.decimals == 1 ? 100.0 : row.maximum;
        EXPECT_DOUBLE_EQ(spin.maximum(), maximum);
        EXPECT_DOUBLE_EQ(spin.value(), row.value);
        EXPECT_DOUBLE_EQ(spin.singleStep(), row.step);
        EXPECT_FALSE(spin.isReadOnly());
        EXPECT_EQ(spin.buttonSymbols() == QAbstractSpinBox::NoButtons,
                  QLatin1String(row.name) == QLatin1String("gamma_value"));
    }
}

TEST(FormValues, TablesHoldEveryRange)
{
    Form form;
    EXPECT_EQ(form.dialog.findChildren<QSpinBox*>().size(), int(std::size(spins)));
    EXPECT_EQ(form.dialog.findChildren<QDoubleSpinBox*>().size(), int(std::size(reals)));
    int named = 0;
    for (QWidget* const widget : form.widgets()) {
        named += qobject_cast<QAbstractSlider*>(widget) != nullptr ? 1 : 0;
    }
    EXPECT_EQ(named, int(std::size(bars)));
}

TEST(FormValues, CheckedButtons)
{
    expectOnly<QAbstractButton>({"front_color", "color_front_image", "front_color_dropout",
                                 "pushButton_16", "center_alignment", "vertical_range",
                                 "stop_scanning_after_multifeed", "checkBox", "pushButton_11",
                                 "vertical_range_preview", "rotation_book", "cachemode_use_default",
                                 "cachemode_image_num_default", "powersaving", "poweroff"},
                                [](const QAbstractButton& button) { return button.isChecked(); });
}

TEST(FormValues, PushButtonsThatStayDown)
{
    expectOnly<QPushButton>({"color_detection_image_front", "color_detection_image_back",
                             "color_front_image", "gray_front_image", "lineart_front_image",
                             "color_back_image", "gray_back_image", "lineart_back_image",
                             "test_button", "pushButton_16", "pushButton_18", "pushButton_13",
                             "pushButton_15", "pushButton_9", "pushButton_7", "pushButton_8",
                             "pushButton_10", "pushButton_11", "pushButton_12"},
                            [](const QPushButton& button) { return button.isCheckable(); });
}

TEST(FormValues, DisabledByThemselves)
{
    // Without those that are disabled only because their panel is.
    expectOnly<QWidget>(
        {"binarization_widget",
         "gray_widget",
         "gray_value",
         "spinBox_11",
         "groupBox_front_autodetection",
         "groupBox_back_autodetection",
         "front_color_dropout",
         "rear_color_dropout",
         "pushButton_14",
         "pushButton_17",
         "adv_color_dropout",
         "widget_dropout",
         "comboBox_11",
         "tl_x",
         "tl_x_label",
         "autocropdeskew_widget",
         "prefeed_time",
         "scan_waitingjob_widget",
         "stop_scanning_after_multifeed",
         "length_detection_value",
         "comboBox_12",
         "widget_2",
         "comboBox",
         "label_rotate_mode",
         "auto_orientation_mode",
         "blankpage_threshold",
         "tab_7",
         "background_widget",
         "despeckle_groupBox",
         "despeckle_widget",
         "cachemode_widget",
         "cachemode_widget_image_num"},
        [](const QWidget& widget) { return widget.testAttribute(Qt::WA_ForceDisabled); });
}

TEST(FormValues, OnlyThePanelOfTheFirstCacheModeIsShown)
{
    Form form;
    form.dialog.show();
    Names hidden;
    for (QWidget* const widget : form.widgets()) {
        if (widget->isHidden() && form.ui.tabWidget->indexOf(widget) < 0) {
            hidden.insert(widget->objectName().toStdString());
        }
    }
    EXPECT_EQ(hidden, Names({"cachemode_pagecount", "cachemode_memory"}));
}

TEST(FormValues, StartsOnTheAdvancedTabAtTwoHundredDpi)
{
    Form form;
    EXPECT_EQ(form.ui.tabWidget->currentIndex(), 6);
    EXPECT_EQ(form.ui.resolution_gengel_slide->currentIndex(), 3);
    EXPECT_EQ(form.ui.resolution_gengel_slide->currentText(), QStringLiteral("200"));
}

TEST(FormValues, OtherComboBoxesStartAtTheirFirstItem)
{
    Form form;
    for (const QComboBox* combo : form.dialog.findChildren<QComboBox*>()) {
        if (combo != form.ui.resolution_gengel_slide) {
            EXPECT_EQ(combo->currentIndex(), combo->count() > 0 ? 0 : -1)
                << combo->objectName().toStdString();
        }
        EXPECT_FALSE(combo->isEditable()) << combo->objectName().toStdString();
    }
}

TEST(FormValues, InformationCannotBeEdited)
{
    Form form;
    EXPECT_TRUE(form.ui.scanner_info->isReadOnly());
    EXPECT_TRUE(form.ui.scanner_info->toPlainText().isEmpty());
}
