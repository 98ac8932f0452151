// A group of the settings file, loaded into the controls; and what its order bends, put right.
#include "kestrelsetting.h"

#include "rules/paper_size.h"
#include "rules/scan_range.h"
#include "settings/open_group.h"
#include "settings/settings_table.h"
#include "settings/template_list.h"
#include "settings/text_codec.h"
#include "ui_kestrelsetting.h"

#include <QScopedValueRollback>
#include <QSettings>
#include <QSizeF>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

using namespace kestrel;

namespace {

bool has(const Setting& setting, const char* key)
{
    return std::strcmp(setting.key, key) == 0;
}

/// Whether an area is what a paper size gives, upright or across.
bool isSizeOf(ScanArea paper, const QSizeF& area, bool upright, double maxWidth, double maxHeight)
{
    constexpr double kHalfStepMm = 0.05;
    const auto is = [&area](double width, double height) {
        return std::abs(area.width() - width) < kHalfStepMm &&
               std::abs(area.height() - height) < kHalfStepMm;
    };
    const auto& size = paperSize(paper);
    return paper == ScanArea::Maximum
               ? is(maxWidth, maxHeight)
               : is(upright ? size.shortMm : size.longMm, upright ? size.longMm : size.shortMm);
}

} // namespace

void KestrelSettingUI::loadConfig(QString group)
{
    if (settings == nullptr) {
        return;
    }
    // While the controls hold half of a group, without the memory for the rest, OK stores nothing.
    const bool loaded_before = std::exchange(configuration_loaded, false);
    try {
        loadGroup(group);
        configuration_loaded = configuration_loaded || loaded_before;
    } catch (const std::bad_alloc&) { // no exception passes through the toolkit
    }
}

void KestrelSettingUI::loadGroup(const QString& group)
{
    // Everything is read before a control is touched: some of them load a group themselves.
    const auto order = readOrder();
    std::vector<StoredSetting> stored;
    stored.reserve(order.size());
    {
        const OpenGroup open(*settings, groupName(group));
        for (const auto* const setting : order) {
            const auto value = settings->value(QString::fromLatin1(setting->key));
            // An empty text says nothing, but for the custom resolution: there is none.
            if (value.isValid() &&
                (setting->encoding == Encoding::CustomResolution || !value.toString().isEmpty())) {
                stored.emplace_back(setting, value.toString());
            }
        }
    }
    for (const auto& [setting, text] : stored) {
        loadSetting(*setting, text);
        if (has(*setting, "source")) {
            mendSideMode(stored.front());
        }
    }
    mendBounded(stored);
    // Also what closing without OK has brought back after a binding that could not be asked.
    configuration_loaded = configuration_loaded || !stored.empty();
    // What this group does not name stays on show from the one before, as stored there.
    if (half_asked) {
        for (const auto& [setting, text] : stored) {
            loaded_texts.insert(setting, {text, settingText(*setting), true});
        }
    }
}

void KestrelSettingUI::rememberFormSettings()
{
    form_settings.reserve(settingsTable().size());
    for (const auto& setting : settingsTable()) {
        form_settings.emplace_back(&setting, settingText(setting));
    }
}

/// What the scanner of before has left in a control, and the next one says nothing about, would be
/// stored as the next one's own.
void KestrelSettingUI::loadFormSettings()
{
    ui->background_processing_setting->clear();
    for (const auto& [setting, text] : form_settings) {
        if (settingText(*setting) != text) {
            loadSetting(*setting, text);
        }
    }
}

/// Loaded one after the other, extents meet the offsets and the paper size that were on show
/// before: they are cut to what those leave, and count as edits by hand. What was bent so is put
/// back.
void KestrelSettingUI::mendBounded(const std::vector<StoredSetting>& stored)
{
    const auto find = [&stored](const char* key) {
        return std::find_if(stored.begin(), stored.end(),
                            [key](const auto& setting) { return has(*setting.first, key); });
    };
    const auto number = [&](const char* key) {
        const auto found = find(key);
        return found != stored.end() ? parseReal(found->second) : 0.0;
    };
    if (const auto paper = find("scanrange_setting"); paper != stored.end()) {
        const int index = parseInteger(paper->second);
        const auto area = scanAreaFromText(ui->scanrange_setting->itemText(index));
        if (area &&
            isSizeOf(*area, {number("br_x"), number("br_y")}, ui->vertical_range->isChecked(),
                     ui->br_x->maximum(), ui->br_y->maximum())) {
            ui->scanrange_setting->setCurrentIndex(index);
        }
    }
    const auto load = [&](const char* key) {
        const QScopedValueRollback<bool> mending(updating, true);
        loadSetting(*find(key)->first, find(key)->second);
    };
    // An extent without its offset stays within what the present offset leaves.
    for (const auto& [extent, offset] : {std::pair("br_x", "tl_x"), std::pair("br_y", "tl_y")}) {
        if (find(extent) != stored.end() && find(offset) != stored.end()) {
            load(extent);
            load(offset);
        }
    }
    // Its limit has moved with the area, or stems from an offset that was typed and not taken.
    if (find("additional_length_detection_length") != stored.end()) {
        write({{RangeField::LengthDetectionMaximum,
                (ui->br_y->maximum() - ui->tl_y->value()) - ui->br_y->value()}});
        load("additional_length_detection_length");
    }
}

/// The side mode comes before the source: under the automatic source of before, the back's
/// detection takes the front's along. What was confirmed for the feeder is put back. (The flatbed's
/// own rule stands: it drops the front's detection whoever chooses it.)
void KestrelSettingUI::mendSideMode(const StoredSetting& first)
{
    if (first.first->encoding != Encoding::Mask) {
        return;
    }
    const SideMode mask(parseMask(first.second));
    if (currentSource() == ScanSource::Feeder && mask.detects(Side::Back) &&
        multistream_mask != mask) {
        loadSideMode(mask);
    }
}
