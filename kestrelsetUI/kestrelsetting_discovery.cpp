// What the scanner offers: every option that is known by name gives its control limits and value.
#include "kestrelsetting_discovery.h"

#include "dialogs/customresolution.h"
#include "system/signal_blocker.h"
#include "ui_kestrelsetting.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <vector>

using namespace kestrel;

namespace {

constexpr int kDefaultMaxResolution = 600; // dpi, for a scanner that states none

} // namespace

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
                     [name](const Row& known) { return tables::sameText(known.name, name); });
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
    // What was drawn on the preview of another scanner is no area of this one.
    for (auto* const edge : {ui_.offset_w, ui_.offset_h, ui_.offset_x, ui_.offset_y}) {
        edge->setValue(0.0);
    }
    dialog_.use_preview_area = false;
    const auto& before = dialog_.discovered_name;
    const bool is_state_missing =
        dialog_.half_described || (dialog_.settings != nullptr && dialog_.areDefaultsInDoubt());
    // What the user has tried on a scanner that could not be asked is not the scanner's state.
    if (before && (before != dialog_.device_name || is_state_missing)) {
        dialog_.loadFormSettings();
    }
    dialog_.discovered_name = dialog_.device_name;
}

void KestrelSettingUI::Discovery::walk(const SaneDevice::OptionCount& count)
{
    if (count.status != SANE_STATUS_GOOD) {
        noteSilence();
    }
    std::vector<int> gaps;
    for (index_ = 1; index_ < count.walkEnd(); ++index_) {
        option_ = device_.descriptor(index_);
        if (option_ == nullptr) {
            gaps.push_back(index_);
            continue;
        }
        if (option_->name == nullptr) {
            continue;
        }
        if (const auto* const known = row(option_->name)) {
            known->handle(*this);
        }
    }
    if (!gaps.empty()) {
        half_asked_ = true;
        half_described_ = half_described_ || !areForGood(gaps, count);
    }
}

/// Whether the scanner still answers the same, and still does not describe these options: it has
/// none there.
bool KestrelSettingUI::Discovery::areForGood(const std::vector<int>& gaps,
                                             const SaneDevice::OptionCount& count) const
{
    const auto now = device_.optionCount();
    return now.option != nullptr && now.status == SANE_STATUS_GOOD && now.value == count.value &&
           std::all_of(gaps.begin(), gaps.end(),
                       [this](int index) { return device_.descriptor(index) == nullptr; });
}

void KestrelSettingUI::Discovery::noteSilence()
{
    half_asked_ = true;
    half_described_ = true;
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
    const bool bound_before = discovered_name == device_name;
    half_asked = true; // also when the walk comes to no end
    loaded_texts.clear();
    discovery.startAfresh();
    half_described = true;
    showScannerInfo();
    const auto count = SaneDevice(sane_handle).optionCount();
    if (count.option == nullptr) {
        showTemplates(bound_before);
        return 0;
    }
    discovery.walk(count);
    discovery.measureLongPaper();
    // The source may have been listed before it was known what the flatbed can do.
    updateCropList();
    discovery.measureFlatbed();
    discovery.listPaperSizes();
    half_asked = discovery.isHalfAsked();
    half_described = discovery.isHalfDescribed();
    showScannerInfo();
    startConfiguration();
    setPowerManager();
    return 1;
}
