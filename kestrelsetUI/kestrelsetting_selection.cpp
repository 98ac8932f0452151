// The selection on the preview, in millimetres beside the picture.
#include "kestrelsetting.h"

#include "kestrelsetting_controls.h"
#include "rules/paper_size.h"
#include "rules/scan_range.h"
#include "ui_kestrelsetting.h"

using namespace kestrel;

namespace {

/// What is left of @p extent beside @p taken, as exact as the boxes are: a number that is held
/// there has to count as at the edge when it comes back, whatever the difference of the doubles is.
double roomBeside(const QDoubleSpinBox* extent, double taken)
{
    return QString::number(extent->maximum() - taken, 'f', extent->decimals()).toDouble();
}

} // namespace

void KestrelSettingUI::getSelectedRect(QRect rect, int standard)
{
    preview_selected = true;
    preview_rect = rect;
    const double perMm = standard / 20.0;
    const auto mm = [perMm](int pixels) { return perMm > 0.0 ? pixels / perMm : 0.0; };
    const bool before = updating;
    updating = true;
    ui->offset_x->setValue(mm(rect.left()));
    ui->offset_y->setValue(mm(rect.top()));
    ui->offset_w->setValue(mm(rect.width()));
    ui->offset_h->setValue(mm(rect.height()));
    updating = before;
}

void KestrelSettingUI::setMoveRect()
{
    ui->preview_box->setMoveRect(ui->offset_x->value(), ui->offset_y->value());
}

void KestrelSettingUI::setSelectedRect()
{
    ui->preview_box->setSelectedRect(ui->offset_w->value(), ui->offset_h->value());
}

/// An offset was typed. At the edge of the picture the number alone is held; the selection follows
/// only numbers that leave it room.
void KestrelSettingUI::previewOffsetEdited(QDoubleSpinBox* offset, double v,
                                           const QDoubleSpinBox* extent)
{
    if (updating) {
        return;
    }
    const double room = roomBeside(extent, extent->value());
    if (v >= room) {
        offset->setValue(room);
    } else {
        setMoveRect();
    }
}

/// An extent was typed; the same as for an offset.
void KestrelSettingUI::previewExtentEdited(QDoubleSpinBox* extent, double v,
                                           const QDoubleSpinBox* offset)
{
    if (updating) {
        return;
    }
    const double room = roomBeside(extent, offset->value());
    if (v >= room) {
        extent->setValue(room);
    } else {
        setSelectedRect();
    }
}

void KestrelSettingUI::on_offset_x_valueChanged(double v)
{
    previewOffsetEdited(ui->offset_x, v, ui->offset_w);
}

void KestrelSettingUI::on_offset_y_valueChanged(double v)
{
    previewOffsetEdited(ui->offset_y, v, ui->offset_h);
}

void KestrelSettingUI::on_offset_w_valueChanged(double v)
{
    previewExtentEdited(ui->offset_w, v, ui->offset_x);
}

void KestrelSettingUI::on_offset_h_valueChanged(double v)
{
    previewExtentEdited(ui->offset_h, v, ui->offset_y);
}

PreviewRange KestrelSettingUI::previewRange() const
{
    return {spinMm(*ui->offset_x), spinMm(*ui->offset_y), spinMm(*ui->offset_w),
            spinMm(*ui->offset_h), ui->horizontal_range_preview->isChecked()};
}

void KestrelSettingUI::writePreviewArea(const AreaMm& area)
{
    ui->offset_w->setValue(area.width);
    ui->offset_h->setValue(area.height);
    ui->offset_x->setValue(area.x);
    ui->offset_y->setValue(area.y);
    ui->preview_box->setRect(ui->offset_x->value(), ui->offset_y->value(), ui->offset_w->value(),
                             ui->offset_h->value());
}

void KestrelSettingUI::on_preview_scanrange_currentIndexChanged(int /*index*/)
{
    updating = true;
    const auto choice =
        previewSizeChosen(previewRange(), scanAreaFromText(ui->preview_scanrange->currentText()));
    if (choice.checkPortrait) {
        ui->vertical_range_preview->setChecked(true);
    }
    if (choice.landscapeEnabled) {
        ui->horizontal_range_preview->setEnabled(*choice.landscapeEnabled);
    }
    if (choice.area) {
        writePreviewArea(*choice.area);
    }
    updating = false;
}

void KestrelSettingUI::previewRangeGroup(int /*id*/)
{
    updating = true;
    writePreviewArea(previewOrientationClicked(previewRange()));
    updating = false;
}
