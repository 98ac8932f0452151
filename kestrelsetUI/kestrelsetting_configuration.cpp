// The settings file: opened at a binding, written group by group.
#include "kestrelsetting.h"

#include "dialogs/edittemplate.h"
#include "settings/open_group.h"
#include "settings/settings_file.h"
#include "settings/settings_table.h"
#include "settings/template_list.h"
#include "settings/text_codec.h"
#include "ui_kestrelsetting.h"

#include <QSettings>

#include <cstring>

using namespace kestrel;

namespace {

constexpr int kConfigVersion = 102;

const QLatin1String versionKey("config_version");

bool holdsAnything(QSettings& settings, const QString& group)
{
    const OpenGroup open(settings, group);
    return !settings.childKeys().isEmpty();
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
    saveLeftOvers(std::chrono::milliseconds::zero());
    settings = kestrel::openSettings(file).release();
    opened_settings = settings;
    edit_template->setPathINI(file);
}

/// Nobody asks again for what could not be written when it was confirmed.
void KestrelSettingUI::saveLeftOvers(std::chrono::milliseconds patience)
{
    if (opened_settings != nullptr) {
        saveLeftOver(*opened_settings, patience);
    }
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

/// Writes the settings of one kind of group; the file follows with the next save.
void KestrelSettingUI::storeGroup(const QString& group, bool defaults)
{
    const OpenGroup open(*settings, groupName(group));
    for (const auto& setting : settingsTable()) {
        if (defaults ? setting.inDefaultGroup() : setting.inWorkingGroup()) {
            const bool constant = defaults && setting.defaultText != nullptr;
            settings->setValue(QString::fromLatin1(setting.key),
                               constant   ? QString::fromLatin1(setting.defaultText)
                               : defaults ? settingText(setting)
                                          : textToStore(setting));
        }
    }
}

void KestrelSettingUI::writeDefaultConfig(QString group)
{
    if (settings != nullptr) {
        storeGroup(group, true);
        saveSettings(*settings, groupsOf({group}));
    }
}

void KestrelSettingUI::writeConfig(QString group)
{
    if (settings != nullptr) {
        storeGroup(group, false);
        saveSettings(*settings, groupsOf({group}));
    }
}

/// The group that tells by which version of the settings the file was begun.
QString KestrelSettingUI::versionGroup() const
{
    return device_name + versionKey;
}

bool KestrelSettingUI::isVersionNoted() const
{
    const OpenGroup open(*settings, groupName(versionGroup()));
    return settings->value(versionKey).toString().toInt() == kConfigVersion;
}

void KestrelSettingUI::noteVersion()
{
    if (!isVersionNoted()) {
        const OpenGroup open(*settings, groupName(versionGroup()));
        settings->setValue(versionKey, integerText(kConfigVersion));
    }
}

/// The first binding of a device keeps its state. What a device would say only in parts takes the
/// place of nothing, and the next binding looks again.
void KestrelSettingUI::keepFirstState()
{
    if (isVersionNoted() || (half_asked && holdsAnything(*settings, groupName(device_name)))) {
        return;
    }
    if (!half_asked) {
        noteVersion();
    }
    storeGroup(device_name + QStringLiteral("default"), true);
    storeGroup(device_name, false);
}

/// The end of a binding: every one loads what was confirmed.
void KestrelSettingUI::startConfiguration()
{
    if (settings == nullptr) {
        return;
    }
    keepFirstState();
    configuration_loaded = true;
    notePresets();
    const bool template_selected = listTemplates();
    saveSettings(*settings);
    loadConfig(template_selected ? ui->usertemplate->currentText() : device_name);
}
