// Paper size, orientation and the four fields of the scan area.
#include "kestrelsetting.h"

#include "kestrelsetting_controls.h"
#include "out_of_memory.h"
#include "rules/scan_range.h"
#include "ui_kestrelsetting.h"

using namespace kestrel;

namespace {

Orientation checkedOrientation(const Ui_KestrelSetting& ui)
{
    if (ui.horizontal_range->isChecked()) {
        return Orientation::Landscape;
    }
    return ui.vertical_range->isChecked() ? Orientation::Portrait : Orientation::None;
}

} // namespace

ScanRange KestrelSettingUI::scanRange() const
{
    return {spinMm(*ui->tl_x),
            spinMm(*ui->tl_y),
            spinMm(*ui->br_x),
            spinMm(*ui->br_y),
            checkedOrientation(*ui),
            portrait,
            ui->center_alignment->isChecked(),
            ui->scanrange_setting->currentIndex() == 0};
}

void KestrelSettingUI::write(const std::vector<RangeWrite>& writes)
{
    for (const auto& [field, value] : writes) {
        const bool on = value != 0.0;
        switch (field) {
        case RangeField::Left:
            ui->tl_x->setValue(value);
            break;
        case RangeField::Top:
            ui->tl_y->setValue(value);
            break;
        case RangeField::Width:
            ui->br_x->setValue(value);
            break;
        case RangeField::Height:
            ui->br_y->setValue(value);
            break;
        case RangeField::PortraitFlag:
            portrait = on;
            break;
        case RangeField::CheckPortrait:
            ui->vertical_range->setChecked(true);
            break;
        case RangeField::UncheckLandscape:
            ui->horizontal_range->setChecked(false);
            break;
        case RangeField::LandscapeEnabled:
            ui->horizontal_range->setEnabled(on);
            break;
        case RangeField::LeftEnabled:
            ui->tl_x_label->setEnabled(on);
            ui->tl_x->setEnabled(on);
            break;
        case RangeField::SelectCustom:
            ui->scanrange_setting->setCurrentIndex(0);
            break;
        case RangeField::LengthDetectionMaximum:
            ui->length_detection_value->setRange(lengthDetectionMinimum(value), value);
            break;
        }
    }
}

void KestrelSettingUI::on_scanrange_setting_currentIndexChanged(int /*index*/)
{
    updating = true;
    unlessOutOfMemory([&] {
        write(paperChosen(scanRange(), scanAreaFromText(ui->scanrange_setting->currentText())));
    });
    updating = false;
}

void KestrelSettingUI::testGroup(int id)
{
    updating = true;
    unlessOutOfMemory([&] { write(orientationClicked(scanRange(), id)); });
    updating = false;
}

void KestrelSettingUI::on_center_alignment_toggled(bool on)
{
    unlessOutOfMemory([&] { write(centreAlignmentToggled(scanRange(), on)); });
}

void KestrelSettingUI::on_tl_x_valueChanged(double v)
{
    unlessOutOfMemory([&] { write(leftEdited(scanRange(), v)); });
}

void KestrelSettingUI::on_tl_y_valueChanged(double v)
{
    unlessOutOfMemory([&] { write(topEdited(scanRange(), v)); });
}

void KestrelSettingUI::on_br_x_valueChanged(double v)
{
    unlessOutOfMemory([&] { write(widthEdited(scanRange(), v, updating)); });
}

void KestrelSettingUI::on_br_y_valueChanged(double v)
{
    unlessOutOfMemory([&] { write(heightEdited(scanRange(), v, updating)); });
}
