// What the paper source brings into play and takes away.
#include "kestrelsetting.h"

#include "scanner/value_tables.h"
#include "ui_kestrelsetting.h"

#include <algorithm>

using namespace kestrel;

namespace {

constexpr int kMultiCropItem = 2;

} // namespace

/// The source by the text on show: the order of the items is the device's.
std::optional<ScanSource> KestrelSettingUI::currentSource() const
{
    const QByteArray text = ui->source->currentText().toUtf8();
    const auto& table = tables::scanner_source;
    const auto found = std::find(table.begin(), table.end(), text);
    return found != table.end() ? scanSourceFromRow(static_cast<int>(found - table.begin()))
                                : std::nullopt;
}

void KestrelSettingUI::updateCropList()
{
    auto* const list = ui->autocropdeskew;
    switch (cropListChange(currentSource(), flatbed_multi_crop, list->count())) {
    case CropListChange::Append:
        list->addItem(QString::fromUtf8(tables::crop_option_label[kMultiCropItem]));
        break;
    case CropListChange::ResetAndDrop:
        list->setCurrentIndex(0);
        list->removeItem(kMultiCropItem);
        break;
    case CropListChange::None:
        break;
    }
}

void KestrelSettingUI::on_source_currentIndexChanged(int /*index*/)
{
    const auto source = currentSource();
    ui->widget_rear->setEnabled(backControlsEnabled(source));
    ui->widget_11->setEnabled(backControlsEnabled(source));
    updateCropList();
    if (!source) {
        return;
    }
    const auto controls = sourceControls(*source);
    scan_source_type = static_cast<int>(*source);
    ui->scan_waitingjob_widget->setEnabled(controls.waitingJob);
    ui->paper_detection->setEnabled(controls.paperDetection);
    if (controls.clearsBack) {
        clearBackSide();
    }
    if (backDetectionNeedsFront(*source == ScanSource::Automatic,
                                ui->color_detection_image_back->isChecked())) {
        ui->color_detection_image_front->setChecked(true);
    }
    if (multistream_mask.isEmpty()) {
        ui->front_color->setChecked(true);
        multistream_mask = multistream_mask.with(Mode::FrontColour);
    }
}

/// The flatbed has one side. Front detection leaves the mask, too, although its button stays
/// checked.
void KestrelSettingUI::clearBackSide()
{
    for (auto* const button : {static_cast<QAbstractButton*>(ui->color_detection_image_back),
                               static_cast<QAbstractButton*>(ui->rear_color),
                               static_cast<QAbstractButton*>(ui->rear_gray),
                               static_cast<QAbstractButton*>(ui->rear_bw)}) {
        button->setChecked(false);
    }
    multistream_mask = multistream_mask.onFlatbed();
}
