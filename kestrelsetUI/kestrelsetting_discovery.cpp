// What the scanner offers: every option that is known by name gives its control limits and value.
#include "kestrelsetting.h"

#include "dialogs/customresolution.h"
#include "rules/paper_size.h"
#include "rules/side_mode.h"
#include "scanner/sane_device.h"
#include "scanner/value_tables.h"
#include "system/signal_blocker.h"
#include "ui_kestrelsetting.h"

#include <QDebug>

#include <algorithm>
#include <strings.h>

using namespace kestrel;

namespace {

constexpr int kDefaultMaxResolution = 600; // dpi, for a scanner that states none
constexpr double kLengthStepMm = 0.1;

QString utf8(const char* text)
{
    return QString::fromUtf8(text);
}

bool sameText(const char* a, const char* b)
{
    return strcasecmp(a, b) == 0;
}

bool isSwitchOn(const QByteArray& text)
{
    return text == "Enable";
}

/// Index of a text in a table, ignoring case; -1 when it is not there.
template <std::size_t Size>
int indexIn(const tables::Texts<Size>& table, const char* text)
{
    const auto found = std::find_if(table.begin(), table.end(),
                                    [text](const char* entry) { return sameText(entry, text); });
    return found != table.end() ? static_cast<int>(found - table.begin()) : -1;
}

} // namespace

/// One walk over the options of the device.
class KestrelSettingUI::Discovery
{
public:
    explicit Discovery(KestrelSettingUI& dialog)
        : dialog_(dialog), ui_(*dialog.ui), device_(dialog.sane_handle)
    {
    }

    void startAfresh();
    void walk(const SaneDevice::OptionCount& count);
    void measureLongPaper();
    void measureFlatbed();
    void listPaperSizes();

private:
    struct Row
    {
        const char* name;
        void (*handle)(Discovery&);
    };
    static const Row* row(const char* name);

    // The option at hand.
    bool active() const { return isActive(*option_); }
    std::optional<SANE_Word> word();
    std::optional<QByteArray> text() const { return device_.readText(index_, *option_); }
    std::optional<double> lengthMm();

    // How an option's value meets its control.
    template <typename Control>
    void integer(Control* control);
    template <typename Control>
    void integerRange(Control* control);
    void lengthRange(QDoubleSpinBox* control);
    void length(QDoubleSpinBox* control);
    void area(QDoubleSpinBox* control, QDoubleSpinBox* offset, QDoubleSpinBox* extent);
    void check(QAbstractButton* control);
    void onOff(QAbstractButton* control);
    template <std::size_t Size>
    void choice(QComboBox* control, const tables::Texts<Size>& table);
    void counter(std::uint32_t& count, const char* pattern);

    // Options that need more.
    void source();
    void resolution();
    void crop();
    void longPaper();
    void background();
    void backgroundList();
    void prefeed();
    void blankPage();
    void cacheDefault();
    void powerOffTime();
    void serialNumber();
    void deviceInfo();

    std::optional<SANE_Fixed> areaMaximum(int index) const;

    KestrelSettingUI& dialog_;
    Ui_KestrelSetting& ui_;
    SaneDevice device_;
    int index_ = 0;
    const SANE_Option_Descriptor* option_ = nullptr;
    SANE_Word lastWord_ = 0;
};

/// What is known of an option, by name and ignoring case.
const KestrelSettingUI::Discovery::Row* KestrelSettingUI::Discovery::row(const char* name)
{
    using D = Discovery;
    // clang-format off
    static constexpr Row kRows[] = {
        {"mode",                              [](D& d) { (void)d.text(); }},
        {"source",                            [](D& d) { d.source(); }},
        {"resolution",                        [](D& d) { d.resolution(); }},
        {"brightness",                        [](D& d) { d.integer(d.ui_.brightness_set); }},
        {"contrast",                          [](D& d) { d.integer(d.ui_.contrast_set); }},
        {"gray_doc_type",                     [](D& d) { d.choice(d.ui_.gray_doc_type, tables::gray_doc_type); }},
        {"gray-doc-type",                     [](D& d) { d.choice(d.ui_.gray_doc_type, tables::gray_doc_type); }},
        {"binarization",                      [](D& d) { d.choice(d.ui_.binarization, tables::binarization_str); }},
        {"binarization-value",                [](D& d) { d.integer(d.ui_.binarization_value); }},
        {"color-dropout",                     [](D& d) { d.choice(d.ui_.color_dropout, tables::color_dropout); }},
        {"adv-color-dropout",                 [](D& d) { d.check(d.ui_.adv_color_dropout); }},
        {"autocropdeskew",                    [](D& d) { d.crop(); }},
        {"flatbed-multi-crop",                [](D& d) { d.dialog_.flatbed_multi_crop = true; }},
        {"br-x",                              [](D& d) { d.area(d.ui_.br_x, d.ui_.offset_x, d.ui_.offset_w); }},
        {"br-y",                              [](D& d) { d.dialog_.br_y_option = d.index_; d.area(d.ui_.br_y, nullptr, d.ui_.offset_h); }},
        {"long-paper-scan",                   [](D& d) { d.longPaper(); }},
        {"tl-x",                              [](D& d) { d.area(d.ui_.tl_x, d.ui_.offset_x, d.ui_.offset_x); }},
        {"tl-y",                              [](D& d) { d.area(d.ui_.tl_y, d.ui_.offset_y, d.ui_.offset_y); }},
        {"crop-adjust-top",                   [](D& d) { d.length(d.ui_.crop_adjust_top); }},
        {"crop-adjust-bottom",                [](D& d) { d.length(d.ui_.crop_adjust_bottom); }},
        {"crop-adjust-left",                  [](D& d) { d.length(d.ui_.crop_adjust_left); }},
        {"crop-adjust-right",                 [](D& d) { d.length(d.ui_.crop_adjust_right); }},
        {"bg-color-setting",                  [](D& d) { d.background(); }},
        {"prefeed",                           [](D& d) { d.prefeed(); }},
        {"prefeed-time",                      [](D& d) { d.length(d.ui_.prefeed_time); }},
        {"ultrasonic",                        [](D& d) { d.onOff(d.ui_.ultrasonic); }},
        {"rotate",                            [](D& d) { d.choice(d.ui_.rotate, tables::rotate_mode); }},
        {"auto-orientation-mode",             [](D& d) { d.choice(d.ui_.auto_orientation_mode, tables::auto_orientation_mode); }},
        {"blank-page-removal",                [](D& d) { d.blankPage(); }},
        {"blank-page-threshold",              [](D& d) { d.integer(d.ui_.blankpage_threshold); }},
        {"punch-hole-removal",                [](D& d) { d.check(d.ui_.punch_hole_removal); }},
        {"background-processing-sensitivity", [](D& d) { d.integerRange(d.ui_.background_processing_sensitivity); }},
        {"background-processing-setting",     [](D& d) { d.backgroundList(); }},
        {"cachemode",                         [](D& d) { d.choice(d.ui_.cachemode, tables::cachemode); }},
        {"cachemode-use-default",             [](D& d) { d.cacheDefault(); }},
        {"cachemode-value",                   [](D& d) { d.integerRange(d.ui_.cachemode_value); d.integer(d.ui_.cachemode_value); }},
        {"powersaving",                       [](D& d) { d.onOff(d.ui_.powersaving); }},
        {"powersaving-time",                  [](D& d) { d.integerRange(d.ui_.powersaving_time); d.integer(d.ui_.powersaving_time); }},
        {"poweroff",                          [](D& d) { d.onOff(d.ui_.poweroff); }},
        {"poweroff-time",                     [](D& d) { d.powerOffTime(); }},
        {"serial-number",                     [](D& d) { d.serialNumber(); }},
        {"device-info",                       [](D& d) { d.deviceInfo(); }},
        {"padscan-count",                     [](D& d) { d.counter(d.dialog_.counters.separation_roller_count, "自动分纸滚轮/垫片次数：%1\n"); }},
        {"roller-count",                      [](D& d) { d.counter(d.dialog_.counters.feed_roller_count, "自动进纸滚轮次数：%1\n"); }},
        {"eject-paper-opposite-side",         [](D& d) { d.ui_.eject_paper_groupBox->setHidden(!d.active()); }},
    };
    // clang-format on
    const auto* const found =
        std::find_if(std::begin(kRows), std::end(kRows),
                     [name](const Row& known) { return sameText(known.name, name); });
    return found != std::end(kRows) ? found : nullptr;
}

void KestrelSettingUI::Discovery::startAfresh()
{
    for (const auto& limits : dialog_.form_limits) {
        limits.control->setProperty("minimum", limits.minimum);
        limits.control->setProperty("maximum", limits.maximum);
    }
    dialog_.portrait = true;
    ui_.vertical_range->setChecked(true);
    ui_.horizontal_range->setEnabled(true);
    ui_.source->clear();
    ui_.scanrange_setting->clear();
    ui_.preview_scanrange->clear();
    dialog_.device_kind = -1;
    dialog_.has_both_paths = 0;
    dialog_.flatbed_max_length = 0;
    dialog_.source_option = 0;
    dialog_.br_y_option = 0;
    dialog_.long_paper_option = 0;
    dialog_.long_paper_available = false;
    ui_.long_paper_scan->setChecked(false);
    ui_.background_processing->setCurrentIndex(0);
    dialog_.long_paper_max_height = 0;
    dialog_.normal_max_height = 0;
    dialog_.serial_text.clear();
    dialog_.counter_text.clear();
    dialog_.counters = {};
    while (ui_.autocropdeskew->count() > 1) {
        ui_.autocropdeskew->removeItem(ui_.autocropdeskew->count() - 1);
    }
    ui_.groupBox_prefeed->show();
    ui_.eject_paper_groupBox->show();
    ui_.background_setting_label->show();
    ui_.background_setting_combobox->show();
    dialog_.custom_resolution->setResolutionRange(kDefaultMaxResolution);
}

void KestrelSettingUI::Discovery::walk(const SaneDevice::OptionCount& count)
{
    for (index_ = 1; index_ < count.walkEnd(); ++index_) {
        option_ = device_.descriptor(index_);
        dialog_.half_asked = dialog_.half_asked || option_ == nullptr;
        if (option_ == nullptr || option_->name == nullptr) {
            continue;
        }
        if (const auto* const known = row(option_->name)) {
            known->handle(*this);
        }
    }
}

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

template <typename Control>
void KestrelSettingUI::Discovery::integer(Control* control)
{
    if (const auto value = word()) {
        control->setValue(wholeUnits(*option_, *value));
    }
}

template <typename Control>
void KestrelSettingUI::Discovery::integerRange(Control* control)
{
    if (const auto range = wordRange(*option_)) {
        control->setRange(wholeUnits(*option_, range->min), wholeUnits(*option_, range->max));
    }
    control->setSingleStep(1);
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

template <std::size_t Size>
void KestrelSettingUI::Discovery::choice(QComboBox* control, const tables::Texts<Size>& table)
{
    const auto value = text();
    const int index = value ? indexIn(table, value->constData()) : -1;
    if (index >= 0) {
        control->setCurrentIndex(index);
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
        if (sameText(entry, tables::at(tables::source, SaneSource::Automatic))) {
            items.clear();
            for (const char* const all : tables::scanner_source) {
                items.append(utf8(all));
            }
            dialog_.device_kind = 2;
            dialog_.has_both_paths = 1;
            dialog_.source_option = index_;
            break;
        }
        if (sameText(entry, tables::at(tables::source, SaneSource::Flatbed))) {
            offer(ScanSource::Flatbed, 0);
        } else if (sameText(entry, tables::at(tables::source, SaneSource::AdfFront))) {
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
        const int known = indexIn(tables::backendground_setting, entry);
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

/// The upper bound of an edge of the scan area at this moment.
std::optional<SANE_Fixed> KestrelSettingUI::Discovery::areaMaximum(int index) const
{
    const auto* const option = index > 0 ? device_.descriptor(index) : nullptr;
    const auto range = option != nullptr ? wordRange(*option) : std::nullopt;
    return range ? std::make_optional(fixedLength(*option, range->max)) : std::nullopt;
}

/// How long a sheet may be with and without long-paper scanning: the scanner is asked in both
/// states.
void KestrelSettingUI::Discovery::measureLongPaper()
{
    const int index = dialog_.long_paper_option;
    const auto* const option = dialog_.long_paper_available ? device_.descriptor(index) : nullptr;
    if (option == nullptr) {
        return;
    }
    const auto size = option->size;
    const auto height = [&](SANE_Word on) {
        device_.writeWord(index, on, size);
        return areaMaximum(dialog_.br_y_option);
    };
    const auto before = device_.readWord(index, *option);
    const auto longPaper = height(1);
    const auto normal = height(0);
    if (before.value_or(0) != 0) {
        device_.writeWord(index, *before, size);
    }
    // A scanner that can't tell keeps the one height it has.
    const auto known = mmToFixed(ui_.br_y->maximum());
    dialog_.long_paper_max_height = longPaper.value_or(known);
    dialog_.normal_max_height = normal.value_or(known);
}

/// The longest sheet that the preview shows: the flatbed's where there is one beside the feeder.
void KestrelSettingUI::Discovery::measureFlatbed()
{
    auto length = static_cast<float>(ui_.br_y->maximum());
    if (dialog_.has_both_paths != 0) {
        const char* const flatbed = tables::at(tables::source, SaneSource::Flatbed);
        const auto* const option = device_.descriptor(dialog_.source_option);
        const auto status =
            device_.writeText(dialog_.source_option, flatbed, option != nullptr ? option->size : 0);
        qDebug() << dialog_.source_option << flatbed << status;
        dialog_.flatbed_max_length =
            static_cast<int>(fixedToMm(areaMaximum(dialog_.br_y_option).value_or(0)));
        qDebug() << dialog_.flatbed_max_length;
        length = static_cast<float>(dialog_.flatbed_max_length);
    }
    ui_.widget_5->setMaxHeight(length);
    ui_.preview_box->setMaxHeightAndStandrad(length, ui_.widget_5->getStandard());
}

/// The paper lists of both tabs; A4 is chosen, across the feed where the scanner takes A3.
void KestrelSettingUI::Discovery::listPaperSizes()
{
    const double width = ui_.br_x->maximum();
    const double height = ui_.br_y->maximum();
    for (const auto area : admittedAreas(width, height)) {
        ui_.scanrange_setting->addItem(scanAreaText(area));
        ui_.preview_scanrange->addItem(scanAreaText(area));
    }
    const auto a4 = scanAreaText(ScanArea::IsoA4);
    ui_.scanrange_setting->setCurrentIndex(
        ui_.scanrange_setting->findText(a4, Qt::MatchFixedString));
    if (admits(ScanArea::IsoA3, width, height)) {
        const auto& paper = paperSize(ScanArea::IsoA4);
        dialog_.updating = true;
        ui_.horizontal_range->setChecked(true);
        dialog_.portrait = false;
        ui_.br_x->setValue(paper.longMm);
        ui_.br_y->setValue(paper.shortMm);
        ui_.tl_x->setValue((width - ui_.br_x->value()) * 0.5);
        dialog_.updating = false;
    }
}

/// Notes the limits that the form gives: they stand for what a scanner does not limit.
void KestrelSettingUI::rememberFormLimits()
{
    const std::initializer_list<QWidget*> controls = {
        ui->br_x,
        ui->br_y,
        ui->tl_x,
        ui->tl_y,
        ui->offset_x,
        ui->offset_y,
        ui->offset_w,
        ui->offset_h,
        ui->crop_adjust_top,
        ui->crop_adjust_bottom,
        ui->crop_adjust_left,
        ui->crop_adjust_right,
        ui->prefeed_time,
        ui->background_processing_sensitivity,
        ui->cachemode_value,
        ui->powersaving_time,
        ui->poweroff_time,
    };
    for (auto* const control : controls) {
        form_limits.push_back(
            {control, control->property("minimum"), control->property("maximum")});
    }
}

int KestrelSettingUI::GetOptionByName()
{
    if (sane_handle == nullptr) {
        return 0;
    }
    const SignalBlocker noBrokenPipe(SIGPIPE);
    Discovery discovery(*this);
    discovery.startAfresh();
    showScannerInfo();
    const auto count = SaneDevice(sane_handle).optionCount();
    half_asked = count.option == nullptr || count.status != SANE_STATUS_GOOD;
    loaded_texts.clear();
    if (count.option == nullptr) {
        return 0;
    }
    discovery.walk(count);
    discovery.measureLongPaper();
    // The source may have been listed before it was known what the flatbed can do.
    updateCropList();
    discovery.measureFlatbed();
    discovery.listPaperSizes();
    showScannerInfo();
    startConfiguration();
    setPowerManager();
    return 1;
}
