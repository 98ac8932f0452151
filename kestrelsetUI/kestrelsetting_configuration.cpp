// The settings file: one table of settings, walked to write a group and to load one.
#include "kestrelsetting.h"

#include "dialogs/edittemplate.h"
#include "rules/gamma.h"
#include "rules/paper_size.h"
#include "rules/scan_range.h"
#include "settings/settings_file.h"
#include "settings/settings_table.h"
#include "settings/template_list.h"
#include "settings/text_codec.h"
#include "ui_kestrelsetting.h"

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

constexpr int kConfigVersion = 102;
constexpr int kCustomResolutionItem = 7;
constexpr int kResolutionItemsWithCustom = 8;

/// The property of a control that holds a setting.
const char* valueProperty(Encoding encoding)
{
    switch (encoding) {
    case Encoding::Index:
        return "currentIndex";
    case Encoding::Bool:
    case Encoding::Orientation:
    case Encoding::Centering:
    case Encoding::BookRotation:
    case Encoding::EnableWord:
        return "checked";
    default:
        return "value";
    }
}

bool has(const QComboBox* list, int index)
{
    return index >= 0 && index < list->count();
}

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

void setCustomResolution(QComboBox* list, const QString& text)
{
    const bool present = list->count() == kResolutionItemsWithCustom;
    if (text.isEmpty()) {
        if (present) {
            list->removeItem(kCustomResolutionItem);
        }
    } else if (!present) {
        list->addItem(text);
    } else if (list->itemText(kCustomResolutionItem) != text) {
        list->setItemText(kCustomResolutionItem, text);
    }
}

} // namespace

void KestrelSettingUI::setsavepath(char* path)
{
    if (path == nullptr) {
        return;
    }
    const std::size_t length = std::strlen(path);
    if (length > 0 && path[length - 1] != '/') {
        path[length] = '/';
        path[length + 1] = '\0';
    }
    save_path = QString::fromUtf8(path);
}

void KestrelSettingUI::openSettings(const char* config_dir)
{
    config_path = config_dir != nullptr
                      ? QStringLiteral("%1/%2.ini").arg(QString::fromUtf8(config_dir), device_name)
                      : QString();
    // Without a folder there is no file: a path that can't be one keeps dialog and manager
    // together.
    const QString file =
        config_path.isEmpty()
            ? QStringLiteral("/dev/null/%1.ini").arg(QString(device_name).replace('/', '_'))
            : config_path;
    // Hosts may hold on to what an earlier binding opened, so it is never deleted.
    settings = kestrel::openSettings(file).release();
    edit_template->setPathINI(file);
}

/// The control of a setting; bound by object name, once.
QWidget* KestrelSettingUI::control(const Setting& setting) const
{
    const auto name = QString::fromLatin1(setting.control);
    auto found = setting_controls.constFind(name);
    if (found == setting_controls.constEnd()) {
        found = setting_controls.insert(name, ui->tabWidget->findChild<QWidget*>(name));
    }
    return *found;
}

QString KestrelSettingUI::settingText(const Setting& setting) const
{
    const auto value = [&] { return control(setting)->property(valueProperty(setting.encoding)); };
    switch (setting.encoding) {
    case Encoding::Mask:
        return integerText(multistream_mask.bits());
    case Encoding::CustomResolution:
        return ui->resolution_gengel_slide->count() == kResolutionItemsWithCustom
                   ? ui->resolution_gengel_slide->itemText(kCustomResolutionItem)
                   : QString();
    case Encoding::Real:
    case Encoding::SingleReal:
        return realText(value().toDouble());
    case Encoding::Bool:
    case Encoding::Orientation:
    case Encoding::Centering:
    case Encoding::BookRotation:
        return boolText(value().toBool());
    case Encoding::EnableWord:
        return enableText(value().toBool());
    case Encoding::Index:
    case Encoding::Integer:
    case Encoding::Gamma:
    case Encoding::TruncatedReal:
        break;
    }
    return integerText(value().toInt());
}

/// A scanner that failed while it was asked leaves empty lists and the form's limits. What a
/// control cannot show for that, and nobody has changed, stays as it is stored.
QString KestrelSettingUI::textToStore(const Setting& setting) const
{
    const auto text = settingText(setting);
    const auto loaded = loaded_texts.constFind(&setting);
    const bool untouched = loaded != loaded_texts.constEnd() && loaded->shown == text;
    return untouched ? loaded->stored : text;
}

void KestrelSettingUI::loadSetting(const Setting& setting, const QString& text)
{
    const auto set = [&](const QVariant& value) {
        control(setting)->setProperty(valueProperty(setting.encoding), value);
    };
    switch (setting.encoding) {
    case Encoding::Mask:
        loadSideMode(SideMode(parseMask(text)));
        break;
    case Encoding::Index:
        if (has(static_cast<QComboBox*>(control(setting)), parseInteger(text))) {
            set(parseInteger(text));
        }
        break;
    case Encoding::CustomResolution:
        setCustomResolution(ui->resolution_gengel_slide, text);
        break;
    case Encoding::Integer:
        set(parseInteger(text));
        break;
    case Encoding::Gamma:
        if (const int gamma = parseInteger(text); gamma > 0) {
            set(gamma);
            // The table follows the stored number also where the slider can't.
            SetupGammaTable1(gamma_table.data(), gammaExponent(gamma));
        }
        break;
    case Encoding::Real:
        set(parseReal(text));
        break;
    case Encoding::SingleReal:
        set(parseSingleReal(text));
        break;
    case Encoding::TruncatedReal:
        set(parseTruncated(text));
        break;
    case Encoding::Bool:
        set(parseBool(text));
        break;
    case Encoding::EnableWord:
        set(parseEnable(text));
        break;
    case Encoding::Orientation:
        portrait = parseBool(text);
        (portrait ? ui->vertical_range : ui->horizontal_range)->setChecked(true);
        break;
    case Encoding::Centering:
        loadCentering(parseBool(text));
        break;
    case Encoding::BookRotation:
        if (const int book = parseInteger(text); book == 0 || book == 1) {
            (book == 1 ? ui->rotation_book : ui->rotation_fanfold)->setChecked(true);
        }
        break;
    }
}

void KestrelSettingUI::loadSideMode(SideMode mask)
{
    multistream_mask = mask;
    if (mask.detects()) {
        ui->color_detection_image_front->setChecked(mask.detects(Side::Front));
        ui->color_detection_image_back->setChecked(mask.detects(Side::Back));
    } else {
        // The back first: with the automatic source the front can't go before it.
        ui->color_detection_image_back->setChecked(false);
        ui->color_detection_image_front->setChecked(false);
    }
    ui->groupBox_front_autodetection->setEnabled(ui->color_detection_image_front->isChecked());
    ui->groupBox_back_autodetection->setEnabled(ui->color_detection_image_back->isChecked());
    if (!mask.detects()) {
        static constexpr std::array kOrder = {Mode::FrontColour,     Mode::FrontGray,
                                              Mode::FrontBlackWhite, Mode::BackColour,
                                              Mode::BackGray,        Mode::BackBlackWhite};
        for (const auto mode : kOrder) {
            ui->buttonGroup_multistream->button(idOf(mode))->setChecked(mask.has(mode));
        }
    }
}

void KestrelSettingUI::loadCentering(bool on)
{
    ui->center_alignment->setChecked(on);
    if (on) {
        ui->tl_x->setValue((ui->br_x->maximum() - ui->br_x->value()) * 0.5);
    }
    ui->tl_x_label->setEnabled(!on);
    ui->tl_x->setEnabled(!on);
}

/// Writes the settings of one kind of group; the file follows with the next save.
void KestrelSettingUI::storeGroup(const QString& group, bool defaults)
{
    settings->beginGroup(groupName(group));
    for (const auto& setting : settingsTable()) {
        if (defaults ? setting.inDefaultGroup() : setting.inWorkingGroup()) {
            const bool constant = defaults && setting.defaultText != nullptr;
            settings->setValue(QString::fromLatin1(setting.key),
                               constant   ? QString::fromLatin1(setting.defaultText)
                               : defaults ? settingText(setting)
                                          : textToStore(setting));
        }
    }
    settings->endGroup();
}

void KestrelSettingUI::writeDefaultConfig(QString group)
{
    if (settings != nullptr) {
        storeGroup(group, true);
        saveSettings(*settings);
    }
}

void KestrelSettingUI::writeConfig(QString group)
{
    if (settings != nullptr) {
        storeGroup(group, false);
        saveSettings(*settings);
    }
}

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
    settings->beginGroup(groupName(group));
    for (const auto* const setting : order) {
        const auto value = settings->value(QString::fromLatin1(setting->key));
        // An empty text says nothing, but for the custom resolution: there is none.
        if (value.isValid() &&
            (setting->encoding == Encoding::CustomResolution || !value.toString().isEmpty())) {
            stored.emplace_back(setting, value.toString());
        }
    }
    settings->endGroup();
    for (const auto& [setting, text] : stored) {
        loadSetting(*setting, text);
        if (has(*setting, "source")) {
            mendSideMode(stored.front());
        }
    }
    mendBounded(stored);
    // Also what closing without OK has brought back after a binding that could not be asked.
    configuration_loaded = configuration_loaded || !stored.empty();
    loaded_texts.clear();
    if (half_asked) {
        for (const auto& [setting, text] : stored) {
            loaded_texts.insert(setting, {text, settingText(*setting)});
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
        updating = true;
        loadSetting(*find(key)->first, find(key)->second);
        updating = false;
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

/// The end of a binding: the first one of a device keeps its state, every one loads what was
/// confirmed.
void KestrelSettingUI::startConfiguration()
{
    if (settings == nullptr) {
        return;
    }
    settings->beginGroup(groupName(device_name + QStringLiteral("config_version")));
    const bool current =
        settings->value(QStringLiteral("config_version")).toString().toInt() == kConfigVersion;
    if (!current) {
        settings->setValue(QStringLiteral("config_version"), integerText(kConfigVersion));
    }
    settings->endGroup();
    if (!current) {
        storeGroup(device_name + QStringLiteral("default"), true);
        storeGroup(device_name, false);
    }
    configuration_loaded = true;
    const bool template_selected = listTemplates();
    saveSettings(*settings);
    loadConfig(template_selected ? ui->usertemplate->currentText() : device_name);
}
