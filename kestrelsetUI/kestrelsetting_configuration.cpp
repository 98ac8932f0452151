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
#include <new>

using namespace kestrel;

namespace {

constexpr int kConfigVersion = 102;

const QLatin1String versionKey("config_version");
const QLatin1String defaultsInDoubtKey("defaults_in_doubt");

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

/// Without the memory for all of it the dialog stays with the scanner of before.
void KestrelSettingUI::openSettings(const QString& name, const char* config_dir)
{
    const QString path = config_dir != nullptr
                             ? QStringLiteral("%1/%2.ini").arg(QString::fromUtf8(config_dir), name)
                             : QString();
    // Without a folder there is no file: a path that can't be one keeps dialog and manager
    // together.
    const QString file =
        path.isEmpty() ? QStringLiteral("/dev/null/%1.ini").arg(QString(name).replace('/', '_'))
                       : path;
    saveLeftOvers(settings, std::chrono::milliseconds::zero());
    SettingsHandle opened = kestrel::openSettings(file);
    edit_template->setPathINI(file);
    // Hosts may hold on to what an earlier binding opened, so it is never deleted.
    settings = opened.release();
    config_path = path;
    device_name = name;
}

/// A scanner that failed while it was asked leaves empty lists and the form's limits. What a
/// control cannot show for that, and nobody has changed, stays as it is stored, or is not.
std::optional<QString> KestrelSettingUI::textToStore(const Setting& setting) const
{
    const auto text = settingText(setting);
    const auto loaded = loaded_texts.constFind(&setting);
    const bool untouched = loaded != loaded_texts.constEnd() && loaded->shown == text;
    if (!untouched) {
        return text;
    }
    return loaded->is_stored ? std::make_optional(loaded->stored) : std::nullopt;
}

/// Writes the settings of one kind of group; the file follows with the next save.
void KestrelSettingUI::storeGroup(const QString& group, bool defaults)
{
    const OpenGroup open(*settings, groupName(group));
    for (const auto& setting : settingsTable()) {
        if (defaults ? !setting.inDefaultGroup() : !setting.inWorkingGroup()) {
            continue;
        }
        const bool constant = defaults && setting.defaultText != nullptr;
        const std::optional<QString> text = constant   ? QString::fromLatin1(setting.defaultText)
                                            : defaults ? settingText(setting)
                                                       : textToStore(setting);
        if (text) {
            settings->setValue(QString::fromLatin1(setting.key), *text);
        }
    }
    if (!defaults) {
        forgetTouched();
    }
}

/// What the user has changed is stored now as it is on show: going back to what was loaded is a
/// change, too.
void KestrelSettingUI::forgetTouched()
{
    for (auto loaded = loaded_texts.begin(); loaded != loaded_texts.end(); ++loaded) {
        if (const auto text = settingText(*loaded.key()); text != loaded->shown) {
            *loaded = {text, text, true};
        }
    }
}

/// What OK would take the place of, though no control shows it.
void KestrelSettingUI::noteStoredTexts(const QString& group)
{
    const OpenGroup open(*settings, groupName(group));
    for (const auto& setting : settingsTable()) {
        if (setting.inWorkingGroup()) {
            const auto value = settings->value(QString::fromLatin1(setting.key));
            loaded_texts.insert(&setting,
                                {value.toString(), settingText(setting), value.isValid()});
        }
    }
    configuration_loaded = true;
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

/// @return 0 without one
int KestrelSettingUI::notedVersion() const
{
    const OpenGroup open(*settings, groupName(versionGroup()));
    return settings->value(versionKey).toString().toInt();
}

/// @param defaults_known false when the default group does not hold the scanner's whole state: the
/// next binding that asks it all writes the group again.
void KestrelSettingUI::noteVersion(bool defaults_known)
{
    const OpenGroup open(*settings, groupName(versionGroup()));
    settings->setValue(versionKey, integerText(kConfigVersion));
    if (defaults_known) {
        settings->remove(defaultsInDoubtKey);
    } else {
        settings->setValue(defaultsInDoubtKey, integerText(1));
    }
}

bool KestrelSettingUI::areDefaultsInDoubt() const
{
    const OpenGroup open(*settings, groupName(versionGroup()));
    return settings->contains(defaultsInDoubtKey);
}

bool KestrelSettingUI::isVersionNoted() const
{
    return notedVersion() == kConfigVersion;
}

/// Without the version the next binding would put the scanner's state in the place of what has been
/// confirmed. One of a later program stays; the default group of an earlier one is not ours.
/// @return whether it had to be written
bool KestrelSettingUI::confirmVersion()
{
    const int noted = notedVersion();
    if (noted >= kConfigVersion) {
        return false;
    }
    const auto defaults = groupName(device_name + QStringLiteral("default"));
    noteVersion(noted == 0 && !half_described && holdsAnything(*settings, defaults));
    return true;
}

/// The first binding of a device keeps its state. What a device would say only in parts takes the
/// place of nothing, and the next binding looks again.
void KestrelSettingUI::keepFirstState()
{
    const bool is_noted = isVersionNoted();
    const auto defaults = device_name + QStringLiteral("default");
    if (half_described) {
        if (!is_noted && !holdsAnything(*settings, groupName(device_name))) {
            storeGroup(defaults, true);
            storeGroup(device_name, false);
        }
    } else if (!is_noted) {
        try {
            noteVersion(true);
            storeGroup(defaults, true);
            storeGroup(device_name, false);
        } catch (const std::bad_alloc&) { // by halves it is no state: the next binding looks again
            settings->remove(groupName(versionGroup()));
            throw;
        }
    } else if (areDefaultsInDoubt()) {
        storeGroup(defaults, true);
        noteVersion(true); // the doubt goes last: the version stands throughout
    }
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
