// Every setting, one option at a time and always in this order, from the controls to the scanner.
#include "kestrelsetting.h"

#include "kestrelsetting_controls.h"
#include "rules/gamma.h"
#include "scanner/sane_device.h"
#include "scanner/value_tables.h"
#include "ui_kestrelsetting.h"

#include <new>
#include <utility>

using namespace kestrel;

namespace {

constexpr int kDiffusion = 2;       // `binarization`
constexpr int kAutoOrientation = 4; // `rotate`

QString text(int value)
{
    return QStringLiteral("%1").arg(value);
}
QString text(double value)
{
    return QStringLiteral("%1").arg(value);
}
QString flag(bool on)
{
    return text(on ? 1 : 0);
}
QString flag(const QAbstractButton* control)
{
    return flag(control->isChecked());
}
template <typename Control>
QString text(const Control* control)
{
    return text(control->value());
}

QString onOff(const QAbstractButton* control)
{
    return control->isChecked() ? QStringLiteral("Enable") : QStringLiteral("Disable");
}

/// The table's entry at the combo's item; nothing for a combo without a current item.
template <std::size_t Size>
std::optional<QString> choice(const tables::Texts<Size>& table, const QComboBox* combo)
{
    const auto index = static_cast<std::size_t>(combo->currentIndex());
    return index < Size ? std::make_optional(QString::fromUtf8(table[index])) : std::nullopt;
}

/// The number of a custom resolution, cut to what an option value can hold.
QString customResolutionNumber(const QString& text)
{
    constexpr int kLongest = static_cast<int>(kStringValueSize) - 1;
    const QStringList parts = text.split(QStringLiteral("custom-"));
    return parts.size() > 1 ? QString::fromUtf8(parts.at(1).toUtf8().left(kLongest))
                            : QStringLiteral("0");
}

} // namespace

unsigned int KestrelSettingUI::kst_SetParam(const char* name, const char* value)
{
    try {
        return setOptionByName(sane_handle, name, value, gamma_table);
    } catch (const std::bad_alloc&) {
        return SANE_STATUS_NO_MEM;
    }
}

bool KestrelSettingUI::SetupGammaTable1(int* table, double gamma)
{
    return setupGammaTable(table, gamma);
}

bool KestrelSettingUI::set_blank_page_func(bool on)
{
    if (ui->remove_blankpage->isChecked() == on) {
        return false;
    }
    ui->remove_blankpage->setChecked(on);
    send("blank-page-removal", flag(ui->remove_blankpage));
    return true;
}

void KestrelSettingUI::send(const char* name, const QString& value)
{
    kst_SetParam(name, value.toUtf8().constData());
}

void KestrelSettingUI::send(const char* name, const std::optional<QString>& value)
{
    if (value) {
        send(name, *value);
    }
}

void KestrelSettingUI::setAllParam()
{
    sendSource();
    sendMode();
    sendImage();
    sendColorDetection();
    send("color-dropout", choice(tables::color_dropout, ui->color_dropout));
    send("adv-color-dropout", flag(ui->adv_color_dropout));
    send("long-paper-scan", flag(ui->long_paper_scan));
    sendScanArea();
    send("bg-color-setting", choice(tables::bg_color_setting, ui->background_setting_combobox));
    sendPaperHandling();
    sendImageProcessing();
    sendCache();
    send("eject-paper-opposite-side", flag(ui->eject_paper_opposite_side));
}

void KestrelSettingUI::sendSource()
{
    const auto source = currentSource();
    if (!source) {
        return;
    }
    const auto decision = decideSource(*source, multistream_mask);
    double_side = decision.duplex;
    kst_SetParam("source", tables::at(tables::source, decision.source));
    if (decision.automatic) {
        kst_SetParam("auto-scan-source-setting",
                     tables::at(tables::auto_scan_source_setting, *decision.automatic));
    }
}

void KestrelSettingUI::sendMode()
{
    kst_SetParam("mode", modeValue(multistream_mask, backend_name.toStdString()));
    if (const auto images = multistreamValue(multistream_mask)) {
        kst_SetParam("multistream-list", tables::at(tables::Multistream, *images));
    }
}

void KestrelSettingUI::sendImage()
{
    send("brightness", text(ui->brightness_set));
    send("contrast", text(ui->contrast_set));
    kst_SetParam("gamma-table", nullptr);
    // With underscores, unlike every other option: a scanner that only knows the hyphens is meant
    // not to get it.
    send("gray_doc_type", choice(tables::gray_doc_type, ui->gray_doc_type));
    send("binarization", choice(tables::binarization_str, ui->binarization));
    if (ui->binarization->currentIndex() != kDiffusion) {
        send("binarization-value", text(ui->binarization_value));
    }
    send("invert", text(ui->invert->currentIndex()));
    const QString resolution = ui->resolution_gengel_slide->currentText();
    const bool custom = ui->resolution_gengel_slide->currentIndex() == customResolutionItem;
    send("resolution", custom ? customResolutionNumber(resolution) : resolution);
    send("color-register", flag(ui->redhead));
}

/// Both sides hang on the front's detection: the back's settings alone never reach the scanner.
void KestrelSettingUI::sendColorDetection()
{
    if (!multistream_mask.detects(Side::Front)) {
        return;
    }
    const auto& nocolor = tables::auto_nocolor_mode;
    const auto& mode = tables::auto_color_detection_mode;
    send("auto-color-front-noncolor-mode", choice(nocolor, ui->acd_nocolor_mode_front));
    send("auto-color-front-sensitivity", text(ui->acd_sensitivity_front));
    send("auto-color-front-mode", choice(mode, ui->acd_mode_front));
    send("auto-color-back-noncolor-mode", choice(nocolor, ui->acd_nocolor_mode_back));
    send("auto-color-back-sensitivity", text(ui->acd_sensitivity_back));
    send("auto-color-back-mode", choice(mode, ui->acd_mode_back));
}

void KestrelSettingUI::sendScanArea()
{
    const int crop = ui->autocropdeskew->currentIndex();
    const bool automaticCrop = crop == 1 || crop == 2;
    send("autocropdeskew", flag(automaticCrop));
    send("flatbed-multi-crop", flag(crop == 2));
    if (automaticCrop) {
        send("crop-adjust-top", text(ui->crop_adjust_top));
        send("crop-adjust-bottom", text(ui->crop_adjust_bottom));
        send("crop-adjust-left", text(ui->crop_adjust_left));
        send("crop-adjust-right", text(ui->crop_adjust_right));
    } else if (!use_preview_area) {
        const bool centred = ui->center_alignment->isChecked();
        const double left = centred ? 0.0 : ui->tl_x->value();
        send("center-alignment", flag(ui->center_alignment));
        send("tl-x", text(left));
        send("br-x", text(ui->br_x->value() + left));
        send("br-y", text(ui->br_y->value() + ui->tl_y->value()));
        send("tl-y", text(ui->tl_y));
    } else {
        send("center-alignment", QStringLiteral("0"));
        send("tl-x", text(ui->offset_x));
        send("br-x", text(ui->offset_w->value() + ui->offset_x->value()));
        send("br-y", text(ui->offset_h->value() + ui->offset_y->value()));
        send("tl-y", text(ui->offset_y));
    }
}

void KestrelSettingUI::sendPaperHandling()
{
    send("prefeed", flag(ui->prefeed));
    send("prefeed-time", text(ui->prefeed_time));
    send("ultrasonic", onOff(ui->ultrasonic));
    send("additional-length-detection", onOff(ui->length_detection));
    const bool length = ui->length_detection->isChecked() && ui->length_detection->isVisible();
    if (length) {
        send("additional-length-detection-length", text(ui->length_detection_value));
    }
    if (length || ui->ultrasonic->isChecked()) {
        send("stop-scanning-after-multifeed", flag(ui->stop_scanning_after_multifeed));
    }
}

void KestrelSettingUI::sendImageProcessing()
{
    send("rotate", choice(tables::rotate_mode, ui->rotate));
    if (ui->rotate->currentIndex() == kAutoOrientation) {
        send("auto-orientation-mode",
             choice(tables::auto_orientation_mode, ui->auto_orientation_mode));
    }
    kst_SetParam("flip-side-rotation", ui->rotation_book->isChecked() ? "Book" : "Fanfold");
    send("blank-page-removal", flag(ui->remove_blankpage));
    if (ui->remove_blankpage->isChecked()) {
        send("blank-page-threshold", text(ui->blankpage_threshold));
    }
    send("split-image", choice(tables::splitimage, ui->split_image));
    send("punch-hole-removal", flag(ui->punch_hole_removal));
    send("background-processing",
         choice(tables::backendground_processing, ui->background_processing));
    const int background = ui->background_processing->currentIndex();
    if (background == 1 || background == 2) {
        const auto& table =
            background == 1 ? tables::backendground_setting : tables::backendground_removal;
        send("background-processing-sensitivity", text(ui->background_processing_sensitivity));
        send("background-processing-setting", choice(table, ui->background_processing_setting));
    }
    send("despeckle", flag(ui->despeckle));
    if (ui->despeckle->isChecked()) {
        send("despeckle-ratio", text(ui->despeckle_ratios));
        send("despeckle-dotsnumber", text(ui->despeckle_dotsnumber));
    }
}

void KestrelSettingUI::sendCache()
{
    send("cachemode", choice(tables::cachemode, ui->cachemode));
    switch (ui->cachemode->currentIndex()) {
    case 0:
        // The page count although the image count is on show: scanners expect it there.
        send("cachemode-value", text(ui->cachemode_page_num));
        send("cachemode-use-default", flag(ui->cachemode_image_num_default));
        break;
    case 1:
        send("cachemode-value", text(ui->cachemode_page_num));
        break;
    case 2:
        send("cachemode-value", text(ui->cachemode_value));
        send("cachemode-use-default", flag(ui->cachemode_use_default));
        break;
    default:
        break;
    }
}
