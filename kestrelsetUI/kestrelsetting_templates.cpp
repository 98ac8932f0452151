// User templates: the combo box, the manager's answers, the scanner's buttons.
#include "kestrelsetting.h"

#include "dialogs/edittemplate.h"
#include "settings/open_group.h"
#include "settings/settings_file.h"
#include "settings/template_list.h"
#include "ui_kestrelsetting.h"

#include <QSettings>
#include <QSignalBlocker>

using namespace kestrel;

namespace {

/// Selects an item; an index that the list does not have is ignored.
bool select(QComboBox* list, int index)
{
    const bool there = index >= 0 && index < list->count();
    if (there) {
        list->setCurrentIndex(index);
    }
    return there;
}

void refill(QComboBox* list, const QStringList& names)
{
    list->clear();
    list->addItems(names);
}

bool holdsOnly(const QComboBox* list, const QString& entry)
{
    return list->count() == 1 && list->itemText(0) == entry;
}

} // namespace

/// What the file says about templates. Read whole before the combo is touched, which loads groups.
struct KestrelSettingUI::TemplateRecord
{
    QStringList names;
    QString index; ///< the entry confirmed last, as text; empty when none was
};

KestrelSettingUI::TemplateRecord KestrelSettingUI::readTemplates() const
{
    const OpenGroup list(*settings, templateListGroup());
    return {splitTemplateList(settings->value(templateListKey).toString()),
            settings->value(templateIndexKey).toString()};
}

void KestrelSettingUI::notePresets()
{
    const OpenGroup list(*settings, templateListGroup());
    if (settings->value(presetCountKey).toString().isEmpty()) {
        settings->setValue(presetCountKey, QStringLiteral("1"));
    }
}

/// The templates of a scanner that can't be asked are there, the confirmed one on show. None is
/// loaded, but in the place of what was tried at an earlier binding of the scanner.
void KestrelSettingUI::showTemplates(bool bound_before)
{
    if (settings == nullptr) {
        return;
    }
    const QSignalBlocker loadsNothing(ui->usertemplate);
    const bool template_selected = listTemplates();
    // Without the version the working settings are the scanner's to say; a template never is.
    if (template_selected || isVersionNoted()) {
        const auto group = template_selected ? ui->usertemplate->currentText() : device_name;
        if (bound_before) {
            loadConfig(group);
        }
        noteStoredTexts(group); // after the rules, which move what the group does not name
    }
}

/// Fills the combo at a binding.
/// @return whether a template is selected
bool KestrelSettingUI::listTemplates()
{
    const auto record = readTemplates();
    if (record.names.size() < 2) {
        // Another device's list may be there; filling loads a group, so not without need.
        if (!holdsOnly(ui->usertemplate, workingEntry())) {
            refill(ui->usertemplate, {workingEntry()});
        }
        return false;
    }
    refill(ui->usertemplate, record.names);
    const int index = record.index.toInt();
    return index > 0 && select(ui->usertemplate, index);
}

void KestrelSettingUI::on_usertemplate_currentIndexChanged(int index)
{
    if (index >= 0) { // -1 while the list is being refilled
        loadConfig(index == 0 ? device_name : ui->usertemplate->currentText());
    }
}

void KestrelSettingUI::on_default_setting_clicked()
{
    loadConfig(device_name + QStringLiteral("default"));
}

void KestrelSettingUI::on_template_setting_clicked()
{
    edit_template->exec();
}

void KestrelSettingUI::addUserTemplateConfig(QString name)
{
    writeConfig(name);
}

void KestrelSettingUI::resetCurrentUserTemplate(bool reset)
{
    if (settings == nullptr) {
        return;
    }
    const int before = ui->usertemplate->currentIndex();
    auto record = readTemplates();
    if (!record.names.isEmpty()) {
        record.names.first() = workingEntry();
        refill(ui->usertemplate, record.names);
        // A confirmed template falls back to the working settings whenever the manager has been
        // open, whether or not it changed anything.
        if (const int confirmed = record.index.toInt(); confirmed > 0) {
            select(ui->usertemplate, confirmed);
            reset = true;
        }
    }
    if (reset) {
        select(ui->usertemplate, 0);
        loadConfig(device_name);
    } else {
        select(ui->usertemplate, before);
        loadConfig(ui->usertemplate->itemText(before));
    }
}

int KestrelSettingUI::setButtonTemplage(int n)
{
    const QString name = QStringLiteral("%1%2").arg(QStringLiteral("button")).arg(n);
    for (int i = 1; i < ui->usertemplate->count(); ++i) {
        if (ui->usertemplate->itemText(i) == name) {
            ui->usertemplate->setCurrentIndex(i);
            return 1;
        }
    }
    return 0;
}

/// Confirms: the selected entry's group takes what the controls show.
void KestrelSettingUI::saveSelectedTemplate()
{
    // A scanner that could not be asked leaves controls that say nothing about it: they must not
    // take the place of what is stored.
    if (settings == nullptr || !configuration_loaded) {
        return;
    }
    const int index = ui->usertemplate->currentIndex();
    const QString name = index > 0 ? ui->usertemplate->currentText() : device_name;
    storeGroup(name, false);
    if (index <= 0) {
        confirmVersion();
    }
    {
        const OpenGroup list(*settings, templateListGroup());
        settings->setValue(templateIndexKey, index);
    }
    saveSettings(*settings, groupsOf({name, versionGroup()}));
    // Only now it is known what other programs have made of the file.
    if (index <= 0 && confirmVersion()) {
        saveSettings(*settings, groupsOf({versionGroup()}));
    }
}

/// Throws unsaved edits away. A device that never saved keeps what the dialog shows.
void KestrelSettingUI::reloadConfirmed()
{
    if (settings == nullptr) {
        return;
    }
    const auto record = readTemplates();
    if (record.index.isEmpty()) {
        return;
    }
    select(ui->usertemplate, record.index.toInt());
    const int index = ui->usertemplate->currentIndex();
    loadConfig(index > 0 ? ui->usertemplate->itemText(index) : device_name);
}
