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

/// @return whether @p group told of this version already; it does now.
bool noteVersion(QSettings& settings, const QString& group)
{
    const OpenGroup open(settings, group);
    const QString key = QStringLiteral("config_version");
    const bool isCurrent = settings.value(key).toString().toInt() == kConfigVersion;
    if (!isCurrent) {
        settings.setValue(key, integerText(kConfigVersion));
    }
    return isCurrent;
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

/// The end of a binding: the first one of a device keeps its state, every one loads what was
/// confirmed.
void KestrelSettingUI::startConfiguration()
{
    if (settings == nullptr) {
        return;
    }
    if (!noteVersion(*settings, groupName(device_name + QStringLiteral("config_version")))) {
        storeGroup(device_name + QStringLiteral("default"), true);
        storeGroup(device_name, false);
    }
    configuration_loaded = true;
    const bool template_selected = listTemplates();
    saveSettings(*settings);
    loadConfig(template_selected ? ui->usertemplate->currentText() : device_name);
}
