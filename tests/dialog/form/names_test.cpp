// Every widget of the form under its name, with its class and its place. Settings files, slots and
// other floors find the widgets by these names.
#include "dialog/form/form.h"

#include <QStringList>

#include <map>

using kestrel::test::Form;

namespace {

struct Panel
{
    const char* parent;
    const char* children; ///< class:name, in the order in which they are created
};

// clang-format off
const Panel panels[] = {
    {"KestrelSetting",
     "QScrollArea:scrollArea"},
    {"scrollArea",
     "QWidget:scrollAreaWidgetContents"},
    {"scrollAreaWidgetContents",
     "QTabWidget:tabWidget QWidget:widget_13"},
    {"tabWidget",
     "QWidget:tab_image QWidget:tab_color_detection QWidget:tab_colordrop "
     "QWidget:tab_page_size QWidget:tab_ultrasonic QWidget:tab_preview "
     "QWidget:tab_advance_setting QWidget:tab_7 QWidget:tab_image_enhancement "
     "QWidget:tab_setting QWidget:tab_info"},
    {"tab_image",
     "MyWidget:widget_mode QLabel:label_66 QComboBox:source QLabel:resolution_label "
     "QComboBox:resolution_gengel_slide QPushButton:customresolution "
     "QComboBox:usertemplate QPushButton:template_setting QPushButton:test_button "
     "MyWidget:widget_12"},
    {"widget_mode",
     "QWidget:widget_front QWidget:widget_rear"},
    {"widget_front",
     "QWidget:widget_cd_front QWidget:front_widget"},
    {"widget_cd_front",
     "QCheckBox:color_detection_checkbox QPushButton:color_detection_image_front"},
    {"front_widget",
     "QCheckBox:front_color QPushButton:color_front_image QCheckBox:front_gray "
     "QPushButton:gray_front_image QCheckBox:front_bw "
     "QPushButton:lineart_front_image"},
    {"widget_rear",
     "QWidget:widget_cd_rear QWidget:rear_widget"},
    {"widget_cd_rear",
     "QCheckBox:color_detection_checkbox_2 QPushButton:color_detection_image_back"},
    {"rear_widget",
     "QCheckBox:rear_color QPushButton:color_back_image QCheckBox:rear_gray "
     "QPushButton:gray_back_image QCheckBox:rear_bw QPushButton:lineart_back_image"},
    {"widget_12",
     "QWidget:color_widget QWidget:color_correction_widget QCheckBox:redhead "
     "QWidget:gray_widget QWidget:binarization_widget QLabel:label_65 "
     "QComboBox:invert"},
    {"color_widget",
     "QLabel:brightness_label QScrollBar:brightness_set QSpinBox:brightness_balue "
     "QLabel:contrast_label QScrollBar:contrast_set QSpinBox:contrast_balue "
     "QLabel:gamma_label QScrollBar:gamma_set QDoubleSpinBox:gamma_value"},
    {"color_correction_widget",
     "QLabel:color_correction_label QComboBox:color_correction"},
    {"gray_widget",
     "QLabel:label_59 QComboBox:gray_doc_type QLabel:label_70 QScrollBar:gray_value "
     "QSpinBox:spinBox_11"},
    {"binarization_widget",
     "QLabel:label_57 QComboBox:binarization QWidget:binarization_value_widget"},
    {"binarization_value_widget",
     "QLabel:label_67 QScrollBar:binarization_value QSpinBox:spinBox_9"},
    {"tab_color_detection",
     "QGroupBox:groupBox_front_autodetection QGroupBox:groupBox_back_autodetection"},
    {"groupBox_front_autodetection",
     "QWidget:adc_front_widget"},
    {"adc_front_widget",
     "QLabel:label_34 QComboBox:acd_nocolor_mode_front QLabel:label_37 "
     "QScrollBar:acd_sensitivity_front QSpinBox:acd_sensitivity_front_value "
     "QLabel:label_38 QComboBox:acd_mode_front"},
    {"groupBox_back_autodetection",
     "QWidget:adc_back_widget"},
    {"adc_back_widget",
     "QLabel:label_39 QComboBox:acd_nocolor_mode_back QLabel:label_40 "
     "QScrollBar:acd_sensitivity_back QSpinBox:acd_sensitivity_back_value "
     "QLabel:label_41 QComboBox:acd_mode_back"},
    {"tab_colordrop",
     "MyWidget:widget_7 MyWidget:widget_8"},
    {"widget_7",
     "QCheckBox:front_color_dropout QPushButton:pushButton_14 "
     "QCheckBox:front_gray_dropout QPushButton:pushButton_16 "
     "QCheckBox:front_bw_dropout QPushButton:pushButton_18 QWidget:widget_11"},
    {"widget_11",
     "QCheckBox:rear_color_dropout QPushButton:pushButton_17 "
     "QCheckBox:rear_gray_dropout QPushButton:pushButton_13 "
     "QCheckBox:rear_bw_dropout QPushButton:pushButton_15"},
    {"widget_8",
     "QLabel:label_13 QComboBox:color_dropout QCheckBox:adv_color_dropout "
     "QWidget:widget_dropout"},
    {"widget_dropout",
     "QLabel:label_14 QComboBox:comboBox_4 QLabel:label_16 QSpinBox:spinBox_2 "
     "QLabel:label_17 QSpinBox:spinBox QLabel:label_18 QSpinBox:spinBox_3 "
     "QLabel:label_15 QScrollBar:horizontalScrollBar QLineEdit:lineEdit"},
    {"tab_page_size",
     "MyWidget:widget_9 QGroupBox:groupBox_prefeed QWidget:scan_waitingjob_widget"},
    {"widget_9",
     "QLabel:label_19 QComboBox:autocropdeskew QCheckBox:long_paper_scan "
     "QLabel:label_31 QComboBox:comboBox_11 QWidget:fixed_sizesetting "
     "QWidget:autocropdeskew_widget QWidget:background_setting_widget"},
    {"fixed_sizesetting",
     "QLabel:scanrange_label QComboBox:scanrange_setting "
     "QPushButton:pushButton_custum QRadioButton:vertical_range "
     "QRadioButton:horizontal_range QCheckBox:center_alignment QLabel:tl_x_label "
     "QDoubleSpinBox:tl_x QLabel:tl_y_label QDoubleSpinBox:tl_y QLabel:br_x_label "
     "QDoubleSpinBox:br_x QLabel:br_y_label QDoubleSpinBox:br_y"},
    {"autocropdeskew_widget",
     "QLabel:label_25 QLabel:label_26 QDoubleSpinBox:crop_adjust_top QLabel:label_27 "
     "QDoubleSpinBox:crop_adjust_bottom QLabel:label_28 "
     "QDoubleSpinBox:crop_adjust_left QLabel:label_29 "
     "QDoubleSpinBox:crop_adjust_right"},
    {"background_setting_widget",
     "QLabel:background_setting_label QComboBox:background_setting_combobox"},
    {"groupBox_prefeed",
     "QCheckBox:prefeed QDoubleSpinBox:prefeed_time QLabel:label_20"},
    {"scan_waitingjob_widget",
     "QLabel:waitjob_label QScrollBar:waitingjob_time QSpinBox:waitingjob_value "
     "QLabel:label_35"},
    {"tab_ultrasonic",
     "QGroupBox:paper_detection"},
    {"paper_detection",
     "QCheckBox:ultrasonic QWidget:widget_length_detection QLabel:label_32 "
     "QComboBox:comboBox_12 QCheckBox:stop_scanning_after_multifeed"},
    {"widget_length_detection",
     "QCheckBox:length_detection QDoubleSpinBox:length_detection_value"},
    {"tab_preview",
     "MyWidget:widget MyWidget:widget_2 MyWidget:widget_3 MyWidget:widget_4"},
    {"widget",
     "PreViewUI:widget_5"},
    {"widget_5",
     "PreviewBoxUI:preview_box"},
    {"widget_2",
     "QCheckBox:checkBox QPushButton:pushButton_11 QCheckBox:checkBox_2 "
     "QPushButton:pushButton_7 QCheckBox:checkBox_3 QPushButton:pushButton_12 "
     "QCheckBox:checkBox_4 QPushButton:pushButton_9 QCheckBox:checkBox_5 "
     "QPushButton:pushButton_10 QCheckBox:checkBox_6 QPushButton:pushButton_8"},
    {"widget_3",
     "QLabel:label_6 QComboBox:preview_scanrange QRadioButton:vertical_range_preview "
     "QRadioButton:horizontal_range_preview"},
    {"widget_4",
     "QLabel:offset_x_label QDoubleSpinBox:offset_x QLabel:offset_y_label "
     "QDoubleSpinBox:offset_y QLabel:offset_w_label QDoubleSpinBox:offset_w "
     "QLabel:offset_h_label QDoubleSpinBox:offset_h QLabel:label_5 "
     "QComboBox:comboBox"},
    {"tab_advance_setting",
     "QGroupBox:groupBox_rotate_image QGroupBox:groupBox_split_image "
     "QGroupBox:groupBox_rotate_double_slide QGroupBox:groupBox_image_contral "
     "QGroupBox:groupBox_blank_remove"},
    {"groupBox_rotate_image",
     "QLabel:label_rotate QComboBox:rotate QLabel:label_rotate_mode "
     "QComboBox:auto_orientation_mode"},
    {"groupBox_split_image",
     "QLabel:label_42 QComboBox:split_image"},
    {"groupBox_rotate_double_slide",
     "QRadioButton:rotation_book QRadioButton:rotation_fanfold"},
    {"groupBox_image_contral",
     "QCheckBox:eject_paper_opposite_side_3"},
    {"groupBox_blank_remove",
     "QCheckBox:remove_blankpage QSlider:blankpage_threshold "
     "QLabel:blankpage_threshold_value QLabel:label_43"},
    {"tab_7",
     "QGroupBox:groupBox_8 QGroupBox:groupBox_9"},
    {"groupBox_8",
     "QCheckBox:checkBox_27"},
    {"groupBox_9",
     "QCheckBox:checkBox_28"},
    {"tab_image_enhancement",
     "QGroupBox:groupBox_10 QGroupBox:groupBox_11 QGroupBox:groupBox_add_frame "
     "QGroupBox:despeckle_groupBox"},
    {"groupBox_10",
     "QCheckBox:punch_hole_removal"},
    {"groupBox_11",
     "QLabel:label_46 QComboBox:background_processing QWidget:background_widget"},
    {"background_widget",
     "QLabel:label_48 QComboBox:background_processing_setting QLabel:label_47 "
     "QScrollBar:background_processing_sensitivity QLabel:label_background"},
    {"groupBox_add_frame",
     "QRadioButton:radioButton_7 QRadioButton:radioButton_8 QCheckBox:checkBox_29 "
     "QSpinBox:spinBox_4 QLabel:label_49"},
    {"despeckle_groupBox",
     "QCheckBox:despeckle QWidget:despeckle_widget"},
    {"despeckle_widget",
     "QLabel:label_50 QSpinBox:despeckle_dotsnumber QLabel:label_52 QLabel:label_51 "
     "QSpinBox:despeckle_ratios QLabel:label_53"},
    {"tab_setting",
     "QGroupBox:groupBox_14 QGroupBox:groupBox_15 QGroupBox:eject_paper_groupBox"},
    {"groupBox_14",
     "QLabel:label_54 QComboBox:cachemode QWidget:cachemode_memory "
     "QWidget:cachemode_none QWidget:cachemode_pagecount"},
    {"cachemode_memory",
     "QLabel:label_55 QCheckBox:cachemode_use_default QWidget:cachemode_widget"},
    {"cachemode_widget",
     "QScrollBar:cachemode_value QLabel:cachemode_value_label QLabel:label_62"},
    {"cachemode_none",
     "QLabel:label_56 QCheckBox:cachemode_image_num_default "
     "QWidget:cachemode_widget_image_num"},
    {"cachemode_widget_image_num",
     "QScrollBar:cachemode_image_num QLabel:cachemode_image_num_label "
     "QLabel:label_58"},
    {"cachemode_pagecount",
     "QLabel:label_60 QWidget:cachemode_widget_page_num"},
    {"cachemode_widget_page_num",
     "QScrollBar:cachemode_page_num QLabel:cachemode_page_num_label QLabel:label_61"},
    {"groupBox_15",
     "QCheckBox:powersaving QScrollBar:powersaving_time QLabel:powersaving_value "
     "QLabel:label_63 QCheckBox:poweroff QScrollBar:poweroff_time "
     "QLabel:poweroff_value QLabel:label_64"},
    {"eject_paper_groupBox",
     "QCheckBox:eject_paper_opposite_side QPushButton:eject_paper_manual"},
    {"tab_info",
     "QLabel:label_12 QTextEdit:scanner_info"},
    {"widget_13",
     "QPushButton:default_setting QPushButton:preview QPushButton:sure "
     "QPushButton:cancel"},
};
// clang-format on

struct Place
{
    QString className;
    QString parent;
};

std::map<QString, Place> expectedPlaces()
{
    std::map<QString, Place> places;
    for (const Panel& panel : panels) {
        for (const QString& child : QString::fromUtf8(panel.children).split(QLatin1Char(' '))) {
            const QStringList parts = child.split(QLatin1Char(':'));
            places[parts[1]] = {parts[0], QString::fromUtf8(panel.parent)};
        }
    }
    return places;
}

/// Tab pages stand in a stack of Qt's, the contents of the scroll area in its viewport.
QString parentInForm(const QWidget& widget)
{
    const QWidget* parent = widget.parentWidget();
    while (parent != nullptr && parent->objectName().startsWith(QLatin1String("qt_"))) {
        parent = parent->parentWidget();
    }
    return parent == nullptr ? QString() : parent->objectName();
}

} // namespace

TEST(FormNames, EveryWidgetIsThereWithItsClassInItsPlace)
{
    Form form;
    for (const auto& [name, place] : expectedPlaces()) {
        SCOPED_TRACE(name.toStdString());
        const auto found = form.dialog.findChildren<QWidget*>(name);
        ASSERT_EQ(found.size(), 1);
        EXPECT_EQ(QString::fromLatin1(found[0]->metaObject()->className()), place.className);
        EXPECT_EQ(parentInForm(*found[0]), place.parent);
    }
}

TEST(FormNames, NothingElseStandsInTheForm)
{
    Form form;
    const auto places = expectedPlaces();
    for (const QWidget* widget : form.widgets()) {
        EXPECT_EQ(places.count(widget->objectName()), 1U) << widget->objectName().toStdString();
    }
    EXPECT_EQ(form.widgets().size(), places.size());
}

TEST(FormNames, TheDialogIsNamedAfterItsForm)
{
    Form form;
    EXPECT_EQ(form.dialog.objectName(), QStringLiteral("KestrelSetting"));
}
