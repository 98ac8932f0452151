// What the form says: window, tabs, labels, buttons, group boxes and the fixed items of the combo
// boxes.
#include "dialog/form/form.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>

using kestrel::test::Form;
using kestrel::test::Names;

namespace {

struct Text
{
    const char* widget;
    const char* text;
};

struct Items
{
    const char* combo;
    QStringList items;
};

// clang-format off
const Text labels[] = {
    {"resolution_label", "分辨率："},         {"label_65", "黑白反相："},
    {"label_57", "二值化："},                 {"label_67", "灵敏度："},
    {"brightness_label", "亮     度 ："},     {"contrast_label", "对 比 度 ："},
    {"gamma_label", "Gamma："},               {"label_59", "文件类型："},
    {"label_70", "阈值："},                   {"label_66", "纸张来源："},
    {"color_correction_label", "色彩校正："},
    {"label_34", "非彩色选项："},             {"label_39", "非彩色选项："},
    {"label_37", "灵　敏　度："},             {"label_40", "灵　敏　度："},
    {"label_38", "模　　　式："},             {"label_41", "模　　　式："},
    {"label_13", "欲滤除的颜色："},           {"label_14", "模式："},
    {"label_16", "红色："},                   {"label_17", "绿色："},
    {"label_18", "蓝色："},                   {"label_15", "筛选阈值："},
    {"label_19", "裁切："},                   {"label_31", "单位："},
    {"scanrange_label", "扫描范围："},        {"tl_x_label", "X偏移量："},
    {"tl_y_label", "Y偏移量："},              {"br_x_label", "宽度："},
    {"br_y_label", "高度："},                 {"label_25", "裁切调整："},
    {"label_26", "上："},                     {"label_27", "下："},
    {"label_28", "左："},                     {"label_29", "右："},
    {"background_setting_label", "背景设置："},
    {"label_20", "秒"},                       {"waitjob_label", "平板扫描间隔："},
    {"label_35", "秒"},                       {"label_32", "单位："},
    {"label_6", "扫描范围："},                {"offset_x_label", "X 偏移量："},
    {"offset_y_label", "Y 偏移量："},         {"offset_w_label", "宽度："},
    {"offset_h_label", "高度："},             {"label_5", "单位："},
    {"label_rotate", "旋转角度："},           {"label_rotate_mode", "自动翻转模式"},
    {"label_42", "图像分割："},               {"blankpage_threshold_value", "50"},
    {"label_43", " %"},                       {"label_46", "背景处理："},
    {"label_48", "模     式："},              {"label_47", "灵敏度："},
    {"label_background", "0"},                {"label_49", "毫米"},
    {"label_50", "噪声数目："},               {"label_51", "噪声范围："},
    {"label_52", "像素"},                     {"label_53", "像素"},
    {"label_54", "模式："},                   {"label_55", "内存大小"},
    {"cachemode_value_label", "0"},           {"label_62", "MB"},
    {"label_56", "图像张数"},                 {"cachemode_image_num_label", "1"},
    {"label_58", "页"},                       {"label_60", "纸张数目"},
    {"cachemode_page_num_label", "1"},        {"label_61", "页"},
    {"powersaving_value", "15"},              {"label_63", "分钟"},
    {"poweroff_value", "120"},                {"label_64", "分钟"},
    {"label_12", "信息"},
};

const Text buttons[] = {
    {"default_setting", "默认设置"},          {"preview", "预览"},
    {"sure", "确定"},                         {"cancel", "取消"},
    {"color_detection_checkbox", ""},         {"color_detection_checkbox_2", ""},
    {"color_detection_image_front", "正面自动彩色侦测"},
    {"color_detection_image_back", "背面自动彩色侦测"},
    {"front_color", ""},                      {"color_front_image", "彩色正面"},
    {"front_gray", ""},                       {"gray_front_image", "灰阶正面"},
    {"front_bw", ""},                         {"lineart_front_image", "黑白正面"},
    {"rear_color", ""},                       {"color_back_image", "彩色背面"},
    {"rear_gray", ""},                        {"gray_back_image", "灰阶背面"},
    {"rear_bw", ""},                          {"lineart_back_image", "黑白背面"},
    {"customresolution", "..."},              {"template_setting", "使用者设置..."},
    {"redhead", "公文模式"},                  {"test_button", "测试按钮"},
    {"front_color_dropout", ""},              {"pushButton_14", "彩色正面"},
    {"front_gray_dropout", ""},               {"pushButton_16", "灰阶正面"},
    {"front_bw_dropout", ""},                 {"pushButton_18", "黑白正面"},
    {"rear_color_dropout", ""},               {"pushButton_17", "彩色背面"},
    {"rear_gray_dropout", ""},                {"pushButton_13", "灰阶背面"},
    {"rear_bw_dropout", ""},                  {"pushButton_15", "黑白背面"},
    {"adv_color_dropout", "进阶处理"},        {"long_paper_scan", "长纸张扫描"},
    {"pushButton_custum", " ..."},            {"center_alignment", "置中"},
    {"vertical_range", "直式"},               {"horizontal_range", "横式"},
    {"prefeed", "预先进纸"},                  {"ultrasonic", "超声波侦测"},
    {"stop_scanning_after_multifeed", "重叠进纸时，停止扫描"},
    {"length_detection", "多余长度侦测："},
    {"pushButton_9", "彩色背面"},             {"pushButton_7", "灰阶正面"},
    {"pushButton_8", "黑白背面"},             {"pushButton_10", "灰阶背面"},
    {"pushButton_11", "彩色正面"},            {"pushButton_12", "黑白正面"},
    {"checkBox", ""},   {"checkBox_2", ""},   {"checkBox_3", ""},
    {"checkBox_4", ""}, {"checkBox_5", ""},   {"checkBox_6", ""},
    {"vertical_range_preview", "直式"},       {"horizontal_range_preview", "横式"},
    {"rotation_book", "左右翻页"},            {"rotation_fanfold", "上下翻页"},
    {"eject_paper_opposite_side_3", "镜像"},  {"remove_blankpage", "去白页阀值："},
    {"checkBox_27", "开启"},                  {"checkBox_28", "开启"},
    {"punch_hole_removal", "去除装订孔"},     {"radioButton_7", "白色"},
    {"radioButton_8", "黑色"},                {"checkBox_29", "边缘延伸"},
    {"despeckle", "去噪点"},                  {"cachemode_use_default", "默认值"},
    {"cachemode_image_num_default", "无限"},  {"powersaving", "启用节电模式"},
    {"poweroff", "关机时间"},                 {"eject_paper_opposite_side", "反方向退纸"},
    {"eject_paper_manual", "手动退纸"},
};

const Text groupBoxes[] = {
    {"groupBox_front_autodetection", "正面彩色侦测设置"},
    {"groupBox_back_autodetection", "背面彩色侦测设置"},
    {"groupBox_prefeed", "进纸"},             {"paper_detection", "重叠进纸侦测"},
    {"groupBox_rotate_image", "旋转图像"},    {"groupBox_split_image", "图像控制"},
    {"groupBox_rotate_double_slide", "旋转双面文件"},
    {"groupBox_image_contral", "图像控制"},   {"groupBox_blank_remove", "去白页"},
    {"groupBox_8", "电脑条码侦测"},           {"groupBox_9", "分隔码辨识"},
    {"groupBox_10", "去除装订孔"},            {"groupBox_11", "背景设置"},
    {"groupBox_add_frame", "加边框"},         {"despeckle_groupBox", "去除杂点"},
    {"groupBox_14", "缓存"},                  {"groupBox_15", "节电模式"},
    {"eject_paper_groupBox", "退纸设置"},
};

const Items combos[] = {
    {"resolution_gengel_slide", {"75", "100", "150", "200", "300", "400", "600"}},
    {"invert", {"白底黑字", "黑底白字"}},
    {"binarization", {"动态阈值", "固定处理", "扩散"}},
    {"gray_doc_type", {"文本", "图片", "普通"}},
    {"source", {}},
    {"usertemplate", {"自订"}},
    {"color_correction", {"无", "图文混合", "文本", "图片"}},
    {"acd_nocolor_mode_front", {"黑白", "灰阶"}},
    {"acd_mode_front", {"普通", "忽略纸张颜色"}},
    {"acd_nocolor_mode_back", {"黑白", "灰阶"}},
    {"acd_mode_back", {"普通", "忽略纸张颜色"}},
    {"color_dropout", {"无", "红色", "绿色", "蓝色"}},
    {"comboBox_4", {"普通"}},
    {"autocropdeskew", {"固定尺寸"}},
    {"comboBox_11", {"毫米"}},
    {"scanrange_setting", {}},
    {"background_setting_combobox", {"无", "黑色背景", "白色背景"}},
    {"comboBox_12", {"毫米"}},
    {"preview_scanrange", {}},
    {"comboBox", {"毫米"}},
    {"rotate", {"无", "顺时针90度", "180度", "逆时针90度", "自动翻转"}},
    {"auto_orientation_mode", {"快速", "全文本", "复杂模式"}},
    {"split_image", {"无", "水平", "垂直"}},
    {"background_processing", {"无", "平滑", "移除"}},
    {"background_processing_setting", {}},
    {"cachemode", {"无", "纸张数量", "内存模式"}},
};
// clang-format on

/// @return the names of the widgets of class T that stand in the form
template <typename T>
Names namesOf(const Form& form)
{
    Names names;
    for (QWidget* const widget : form.widgets()) {
        if (qobject_cast<T*>(widget) != nullptr) {
            names.insert(widget->objectName().toStdString());
        }
    }
    return names;
}

template <typename T, typename Table>
void expectTexts(const Table& table, QString (T::*text)() const)
{
    Form form;
    Names seen;
    for (const auto& row : table) {
        EXPECT_EQ((form.get<T>(row.widget).*text)(), QString::fromUtf8(row.text)) << row.widget;
        seen.insert(row.widget);
    }
    EXPECT_EQ(namesOf<T>(form), seen) << "the table and the form differ";
}

} // namespace

TEST(FormTexts, Window)
{
    Form form;
    EXPECT_EQ(form.dialog.windowTitle(), QStringLiteral("扫描设置"));
}

TEST(FormTexts, TabsInOrder)
{
    const Text tabs[] = {
        {"tab_image", "图像"},
        {"tab_color_detection", "自动彩色侦测"},
        {"tab_colordrop", "滤色"},
        {"tab_page_size", "纸张"},
        {"tab_ultrasonic", "重张检测"},
        {"tab_preview", "预览"},
        {"tab_advance_setting", "高级设置"},
        {"tab_7", "分隔"},
        {"tab_image_enhancement", "图像增强"},
        {"tab_setting", "设置"},
        {"tab_info", "信息"},
    };
    Form form;
    const QTabWidget& bar = *form.ui.tabWidget;
    ASSERT_EQ(bar.count(), int(std::size(tabs)));
    for (int index = 0; index < bar.count(); ++index) {
        EXPECT_EQ(bar.widget(index)->objectName(), QString::fromUtf8(tabs[index].widget));
        EXPECT_EQ(bar.tabText(index), QString::fromUtf8(tabs[index].text));
    }
}

TEST(FormTexts, Labels)
{
    expectTexts<QLabel>(labels, &QLabel::text);
}

TEST(FormTexts, Buttons)
{
    expectTexts<QAbstractButton>(buttons, &QAbstractButton::text);
}

TEST(FormTexts, GroupBoxes)
{
    expectTexts<QGroupBox>(groupBoxes, &QGroupBox::title);
}

TEST(FormTexts, ItemsOfComboBoxes)
{
    Form form;
    Names seen;
    for (const Items& row : combos) {
        SCOPED_TRACE(row.combo);
        const auto& combo = form.get<QComboBox>(row.combo);
        QStringList items;
        for (int index = 0; index < combo.count(); ++index) {
            items.append(combo.itemText(index));
        }
        EXPECT_EQ(items, row.items);
        seen.insert(row.combo);
    }
    EXPECT_EQ(namesOf<QComboBox>(form), seen) << "the table and the form differ";
}

TEST(FormTexts, LabelsOfBuddiesShowNoAmpersand)
{
    Form form;
    int buddies = 0;
    for (const QLabel* label : form.dialog.findChildren<QLabel*>()) {
        EXPECT_FALSE(label->text().contains(QLatin1Char('&'))) << label->objectName().toStdString();
        buddies += label->buddy() != nullptr ? 1 : 0;
    }
    EXPECT_GT(buddies, 40);
}

TEST(FormTexts, TextsOnlyComeFromTheForm)
{
    Form form;
    form.ui.sure->setText(QString());
    form.ui.label_12->setText(QString());
    form.ui.retranslateUi(&form.dialog);
    EXPECT_EQ(form.ui.sure->text(), QStringLiteral("确定"));
    EXPECT_EQ(form.ui.label_12->text(), QStringLiteral("信息"));
}
