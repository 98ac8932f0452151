// How the value of an option meets its control, and the options that need more than that.
#include "kestrelsetting_discovery.h"

#include "dialogs/customresolution.h"
#include "rules/side_mode.h"
#include "ui_kestrelsetting.h"

using namespace kestrel;

namespace {

constexpr double kLengthStepMm = 0.1;

QString utf8(const char* text)
{
    return QString::fromUtf8(text);
}

bool isSwitchOn(const QByteArray& text)
{
    return text == "Enable";
}

} // namespace

/// The option's word. A value larger than a word is not read: the word read last stands in for it.
/// @return nothing when the device refuses
std::optional<SANE_Word> KestrelSettingUI::Discovery::word()
{
    if (option_->size > static_cast<SANE_Int>(sizeof(SANE_Word))) {
        return lastWord_;
    }
    const auto value = device_.readWord(index_, *option_);
    lastWord_ = value.value_or(lastWord_);
    return value;
}

std::optional<double> KestrelSettingUI::Discovery::lengthMm()
{
    const auto value = word();
    return value ? std::make_optional(millimetres(*option_, *value)) : std::nullopt;
}

void KestrelSettingUI::Discovery::lengthRange(QDoubleSpinBox* control)
{
    if (const auto range = wordRange(*option_)) {
        control->setRange(millimetres(*option_, range->min), millimetres(*option_, range->max));
    }
}

void KestrelSettingUI::Discovery::length(QDoubleSpinBox* control)
{
    lengthRange(control);
    control->setSingleStep(kLengthStepMm);
    if (const auto value = lengthMm()) {
        control->setValue(*value);
    }
}

/// An edge of the scan area: its control, and the preview's control that shares its limits.
void KestrelSettingUI::Discovery::area(QDoubleSpinBox* control, QDoubleSpinBox* offset,
                                       QDoubleSpinBox* extent)
{
    lengthRange(control);
    lengthRange(extent);
    extent->setValue(0.0);
    if (offset != nullptr) {
        offset->setValue(0.0);
    }
    control->setSingleStep(kLengthStepMm);
    if (const auto value = lengthMm()) {
        control->setValue(*value);
    }
}

void KestrelSettingUI::Discovery::check(QAbstractButton* control)
{
    if (const auto value = word()) {
        control->setChecked(*value != 0);
    }
}

void KestrelSettingUI::Discovery::onOff(QAbstractButton* control)
{
    if (const auto value = text()) {
        control->setChecked(isSwitchOn(*value));
    }
}

void KestrelSettingUI::Discovery::counter(std::uint32_t& count, const char* pattern)
{
    if (!active()) {
        return;
    }
    if (const auto value = word()) {
        count = static_cast<std::uint32_t>(*value);
        dialog_.counter_text += utf8(pattern).arg(count);
    }
}

/// The paper sources, in the device's order; a scanner that can choose by itself offers all three.
void KestrelSettingUI::Discovery::source()
{
    QStringList items;
    const auto offer = [this, &items](ScanSource source, int kind) {
        items.append(utf8(tables::at(tables::scanner_source, source)));
        if (dialog_.device_kind == -1) {
            dialog_.device_kind = kind;
        }
    };
    for (const char* const entry : stringList(*option_)) {
        if (tables::sameText(entry, tables::at(tables::source, SaneSource::Automatic))) {
            items.clear();
            for (const char* const all : tables::scanner_source) {
                items.append(utf8(all));
            }
            dialog_.device_kind = 2;
            dialog_.has_both_paths = 1;
            dialog_.source_option = index_;
            break;
        }
        if (tables::sameText(entry, tables::at(tables::source, SaneSource::Flatbed))) {
            offer(ScanSource::Flatbed, 0);
        } else if (tables::sameText(entry, tables::at(tables::source, SaneSource::AdfFront))) {
            offer(ScanSource::Feeder, 1);
        }
    }
    ui_.source->addItems(items);
}

void KestrelSettingUI::Discovery::resolution()
{
    if (const auto range = wordRange(*option_)) {
        dialog_.custom_resolution->setResolutionRange(wholeUnits(*option_, range->max));
    }
}

void KestrelSettingUI::Discovery::crop()
{
    if (active() && ui_.autocropdeskew->count() == 1) {
        ui_.autocropdeskew->addItem(utf8(tables::crop_option_label[1]));
    }
}

void KestrelSettingUI::Discovery::longPaper()
{
    dialog_.long_paper_available = active();
    if (active()) {
        dialog_.long_paper_option = index_;
    } else {
        ui_.long_paper_scan->hide();
    }
}

void KestrelSettingUI::Discovery::background()
{
    ui_.background_setting_label->setHidden(!active());
    ui_.background_setting_combobox->setHidden(!active());
}

void KestrelSettingUI::Discovery::backgroundList()
{
    ui_.background_processing_setting->clear();
    for (const char* const entry : stringList(*option_)) {
        const int known = tables::indexIn(tables::backendground_setting, entry);
        if (known >= 0) {
            ui_.background_processing_setting->addItem(
                utf8(tables::at(tables::background_smoothing_label, known)));
        }
    }
}

void KestrelSettingUI::Discovery::prefeed()
{
    if (!active()) {
        ui_.groupBox_prefeed->hide();
        return;
    }
    if (const auto value = word()) {
        ui_.prefeed->setChecked(*value != 0);
        ui_.prefeed_time->setEnabled(*value != 0);
    }
}

void KestrelSettingUI::Discovery::blankPage()
{
    if (const auto value = word()) {
        ui_.remove_blankpage->setChecked(*value != 0);
        ui_.blankpage_threshold->setEnabled(*value != 0);
    }
}

void KestrelSettingUI::Discovery::cacheDefault()
{
    if (const auto value = word()) {
        ui_.cachemode_use_default->setChecked(*value != 0);
        ui_.cachemode_widget->setEnabled(*value == 0);
    }
}

void KestrelSettingUI::Discovery::powerOffTime()
{
    if (const auto range = wordRange(*option_)) {
        ui_.poweroff_time->setRange(1, wholeUnits(*option_, range->max));
    }
    ui_.poweroff_time->setSingleStep(1);
}

void KestrelSettingUI::Discovery::serialNumber()
{
    if (const auto value = text()) {
        dialog_.serial_text = QStringLiteral("扫描仪型号:  %1\n").arg(dialog_.device_name);
        // The serial line takes the model line's place: only the number is shown.
        dialog_.serial_text = QStringLiteral("序列号:  %1\n").arg(QString::fromUtf8(*value));
    }
}

void KestrelSettingUI::Discovery::deviceInfo()
{
    if (const auto value = text()) {
        const QStringList parts = QString::fromUtf8(*value).split(QLatin1Char(':'));
        if (parts.size() >= 2) {
            dialog_.counter_text +=
                QStringLiteral("VID/PID   :    0x%1/0x%2\n").arg(parts.at(0), parts.at(1));
        }
    }
}
