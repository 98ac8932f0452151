#include "optionset.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "optiontable.h"

namespace kestrel::sim {
namespace {

/// When an option that does not concern every scan is active.
struct Rule
{
    const char* key;
    bool (*isActive)(const OptionSet&);
};

bool detectsColor(const OptionSet& set)
{
    return set.string("mode").rfind("Auto", 0) == 0;
}

bool isEnabled(const OptionSet& set, const char* key)
{
    return set.string(key) == "Enable";
}

bool crops(const OptionSet& set)
{
    return set.on("autocropdeskew");
}

bool treatsBackground(const OptionSet& set)
{
    return set.string("background-processing") != "None";
}

bool despeckles(const OptionSet& set)
{
    return set.on("despeckle");
}

// clang-format off
constexpr std::array<Rule, 25> rules{{
    {"multistream-list",                   [](const OptionSet& s) { return !detectsColor(s); }},
    {"auto-scan-source-setting",           [](const OptionSet& s) { return s.string("source") == "Automatic"; }},
    {"crop-adjust-top",                    crops},
    {"crop-adjust-bottom",                 crops},
    {"crop-adjust-left",                   crops},
    {"crop-adjust-right",                  crops},
    {"binarization-value",                 [](const OptionSet& s) { return s.string("binarization") != "Diffusion"; }},
    {"adv-color-dropout",                  [](const OptionSet& s) { return s.string("color-dropout") != "No color dropout"; }},
    {"auto-color-front-noncolor-mode",     detectsColor},
    {"auto-color-front-sensitivity",       detectsColor},
    {"auto-color-front-mode",              detectsColor},
    {"auto-color-back-noncolor-mode",      detectsColor},
    {"auto-color-back-sensitivity",        detectsColor},
    {"auto-color-back-mode",               detectsColor},
    {"background-processing-sensitivity",  treatsBackground},
    {"background-processing-setting",      treatsBackground},
    {"despeckle-ratio",                    despeckles},
    {"despeckle-dotsnumber",               despeckles},
    {"prefeed-time",                       [](const OptionSet& s) { return s.on("prefeed"); }},
    {"additional-length-detection-length", [](const OptionSet& s) { return isEnabled(s, "additional-length-detection"); }},
    {"stop-scanning-after-multifeed",      [](const OptionSet& s) { return isEnabled(s, "additional-length-detection") || isEnabled(s, "ultrasonic"); }},
    {"auto-orientation-mode",              [](const OptionSet& s) { return s.string("rotate") == "Auto Orientation"; }},
    {"blank-page-threshold",               [](const OptionSet& s) { return s.on("blank-page-removal"); }},
    {"powersaving-time",                   [](const OptionSet& s) { return isEnabled(s, "powersaving"); }},
    {"poweroff-time",                      [](const OptionSet& s) { return isEnabled(s, "poweroff"); }},
}};
// clang-format on

SANE_Range millimetres(double max)
{
    return {0, SANE_FIX(max), 0};
}

} // namespace

OptionSet::OptionSet(const DeviceModel& model) : model_(model)
{
    Option count;
    count.title = "Number of options";
    count.text = "How many options this scanner has, this one included.";
    count.type = SANE_TYPE_INT;
    count.cap = SANE_CAP_SOFT_DETECT;
    count.words = {0};
    options_.push_back(count);
    for (const auto& table : {scanOptions, imageOptions, paperOptions, deviceOptions}) {
        std::vector<Option> group = table(model);
        std::move(group.begin(), group.end(), std::back_inserter(options_));
    }
    for (const OptionOverride& change : model.overrides) {
        override(change);
    }
    options_.front().words = {model.faults.optionCount >= 0
                                  ? model.faults.optionCount
                                  : static_cast<SANE_Int>(options_.size())};
    applyRules();
    for (Option& option : options_) {
        option.describe();
    }
}

const SANE_Option_Descriptor* OptionSet::descriptor(SANE_Int index) const
{
    if (index < 0 || static_cast<std::size_t>(index) >= options_.size()) {
        return nullptr;
    }
    const Option& option = options_[static_cast<std::size_t>(index)];
    return option.nullDescriptor ? nullptr : &option.descriptor();
}

Option* OptionSet::at(SANE_Int index)
{
    const bool exists = index >= 0 && static_cast<std::size_t>(index) < options_.size();
    return exists ? &options_[static_cast<std::size_t>(index)] : nullptr;
}

Option* OptionSet::find(const std::string& key)
{
    return const_cast<Option*>(std::as_const(*this).find(key));
}

const Option* OptionSet::find(const std::string& key) const
{
    const auto found = std::find_if(options_.begin(), options_.end(), [&key](const Option& option) {
        return option.key == key && !key.empty();
    });
    return found == options_.end() ? nullptr : &*found;
}

bool OptionSet::on(const std::string& key) const
{
    return number(key, 0) != 0;
}

double OptionSet::number(const std::string& key, double fallback) const
{
    const Option* const option = find(key);
    if (option == nullptr || !option->isActive() || option->words.empty()) {
        return fallback;
    }
    return option->type == SANE_TYPE_FIXED ? SANE_UNFIX(option->words[0]) : option->words[0];
}

std::string OptionSet::string(const std::string& key) const
{
    const Option* const option = find(key);
    return option != nullptr && option->isActive() ? option->string : std::string();
}

void OptionSet::setWord(const std::string& key, SANE_Word value)
{
    Option* const option = find(key);
    if (option != nullptr && !option->words.empty()) {
        option->words[0] = value;
    }
}

SANE_Status OptionSet::control(SANE_Int index, SANE_Action action, void* value, SANE_Int& info)
{
    Option* const option = at(index);
    if (option == nullptr || option->type == SANE_TYPE_GROUP || !option->isActive()) {
        return SANE_STATUS_INVAL;
    }
    if (action == SANE_ACTION_GET_VALUE) {
        const bool readable = (option->cap & SANE_CAP_SOFT_DETECT) != 0 && value != nullptr &&
                              option->type != SANE_TYPE_BUTTON;
        if (!readable || option->readStatus != SANE_STATUS_GOOD) {
            return readable ? option->readStatus : SANE_STATUS_INVAL;
        }
        option->read(value);
        return SANE_STATUS_GOOD;
    }
    if (action != SANE_ACTION_SET_VALUE || !option->isSettable()) {
        return SANE_STATUS_INVAL;
    }
    if (option->setStatus != SANE_STATUS_GOOD) {
        return option->setStatus;
    }
    const SANE_Status status = option->write(value, info);
    if (status == SANE_STATUS_GOOD && applyRules()) {
        info |= SANE_INFO_RELOAD_OPTIONS;
    }
    return status;
}

bool OptionSet::applyRules()
{
    bool changed = false;
    for (const Rule& rule : rules) {
        if (Option* const option = find(rule.key)) {
            changed = option->setActive(rule.isActive(*this)) || changed;
        }
    }
    if (Option* const threshold = find("binarization-value")) {
        const bool isFixed = string("binarization") == "Fixed Processing";
        changed =
            threshold->setRange(isFixed ? SANE_Range{0, 255, 1} : SANE_Range{1, 30, 1}) || changed;
    }
    if (Option* const setting = find("background-processing-setting")) {
        const bool removes = string("background-processing") == "Removal";
        changed = setting->setTexts(removes ? std::vector<std::string>{"White", "Auto"}
                                            : std::vector<std::string>{"Auto", "Moire"}) ||
                  changed;
    }
    return applyAreaRules() || changed;
}

bool OptionSet::applyAreaRules()
{
    const bool flat = string("source") == "Flatbed" || !model_.hasFeeder();
    SizeMm area = flat ? model_.flatbed : model_.feeder;
    if (!flat && on("long-paper-scan")) {
        area.height = model_.longPaperMm;
    }
    bool changed = false;
    const auto limit = [this, &changed](const char* key, double max) {
        if (Option* const option = find(key)) {
            changed = option->setRange(millimetres(max)) || changed;
        }
    };
    limit("tl-x", area.width);
    limit("br-x", area.width);
    limit("tl-y", area.height);
    limit("br-y", area.height);
    return changed;
}

} // namespace kestrel::sim
