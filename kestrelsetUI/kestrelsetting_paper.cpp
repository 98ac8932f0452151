// Crop, rotation, background, despeckle, long paper, cache and power: which choice brings what into
// play, and the labels that follow their sliders.
#include "kestrelsetting.h"

#include "rules/bounds.h"
#include "rules/paper_size.h"
#include "scanner/sane_device.h"
#include "scanner/value_tables.h"
#include "ui_kestrelsetting.h"

using namespace kestrel;

namespace {

constexpr int kAutoOrientation = 4;
constexpr int kPreviewTab = 5;

void refill(QComboBox* list, const tables::Texts<2>& labels)
{
    list->clear();
    for (const char* const label : labels) {
        list->addItem(QString::fromUtf8(label));
    }
}

} // namespace

void KestrelSettingUI::on_autocropdeskew_currentIndexChanged(int index)
{
    const bool fixedSize = index == 0;
    for (auto* const container :
         {static_cast<QWidget*>(ui->fixed_sizesetting), static_cast<QWidget*>(ui->widget),
          static_cast<QWidget*>(ui->widget_3), static_cast<QWidget*>(ui->widget_4),
          static_cast<QWidget*>(ui->widget_length_detection)}) {
        container->setEnabled(fixedSize);
    }
    ui->autocropdeskew_widget->setEnabled(!fixedSize);
    if (!fixedSize) {
        for (auto* const offset : {ui->offset_x, ui->offset_y, ui->offset_w, ui->offset_h}) {
            offset->setValue(0.0);
        }
    }
}

void KestrelSettingUI::on_rotate_currentIndexChanged(int index)
{
    ui->auto_orientation_mode->setEnabled(index == kAutoOrientation);
    ui->label_rotate_mode->setEnabled(index == kAutoOrientation);
}

void KestrelSettingUI::on_background_processing_currentIndexChanged(int index)
{
    ui->background_widget->setEnabled(index != 0);
    if (index == 1) {
        refill(ui->background_processing_setting, tables::background_smoothing_label);
    } else if (index == 2) {
        refill(ui->background_processing_setting, tables::background_removal_label);
    }
}

void KestrelSettingUI::on_blankpage_threshold_valueChanged(int v)
{
    ui->blankpage_threshold_value->setNum(v);
}

void KestrelSettingUI::on_background_processing_sensitivity_valueChanged(int v)
{
    ui->label_background->setNum(v);
}

void KestrelSettingUI::on_despeckle_dotsnumber_valueChanged(int n)
{
    ui->despeckle_ratios->setValue(despeckleRatio(ui->despeckle_ratios->value(), n));
}

void KestrelSettingUI::on_long_paper_scan_toggled(bool on)
{
    if (!long_paper_available) {
        return; // no scanner, or one that has no second height to offer
    }
    updating = true;
    ui->br_y->setMaximum(fixedToMm(on ? long_paper_max_height : normal_max_height));
    const int whole =
        ui->scanrange_setting->findText(scanAreaText(ScanArea::Maximum), Qt::MatchFixedString);
    if (whole >= 0) {
        ui->br_y->setValue(ui->br_y->maximum());
        ui->tl_y->setValue(0.0);
        ui->scanrange_setting->setCurrentIndex(whole);
    }
    updating = false;
}

void KestrelSettingUI::on_cachemode_currentIndexChanged(int index)
{
    ui->cachemode_none->setVisible(index == 0);
    ui->cachemode_pagecount->setVisible(index == 1);
    ui->cachemode_memory->setVisible(index != 0 && index != 1);
}

void KestrelSettingUI::on_cachemode_value_valueChanged(int v)
{
    ui->cachemode_value_label->setNum(v);
}

void KestrelSettingUI::on_cachemode_image_num_valueChanged(int v)
{
    ui->cachemode_image_num_label->setNum(v);
}

void KestrelSettingUI::on_cachemode_page_num_valueChanged(int v)
{
    ui->cachemode_page_num_label->setNum(v);
}

void KestrelSettingUI::on_powersaving_time_valueChanged(int v)
{
    ui->powersaving_value->setNum(v);
    ui->poweroff_time->setValue(powerOffTime(ui->poweroff_time->value(), v));
}

void KestrelSettingUI::on_poweroff_time_valueChanged(int v)
{
    ui->poweroff_value->setNum(v);
    ui->poweroff_time->setValue(powerOffTime(v, ui->powersaving_time->value()));
}

void KestrelSettingUI::on_tabWidget_currentChanged(int index)
{
    ui->preview->setVisible(index == kPreviewTab);
}
