#include "dialogs/edittemplate.h"

#include "dialogs/addusertemplate.h"
#include "dialogs/fit_text.h"
#include "settings/open_group.h"
#include "settings/settings_table.h"
#include "settings/template_list.h"
#include "ui_edittemplate.h"

#include <QCloseEvent>
#include <QMessageBox>
#include <QPointer>
#include <QSettings>

#include <algorithm>
#include <utility>
#include <vector>

EditTemplate::EditTemplate(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui_EditTemplate>()),
      settings(kestrel::openSettings(QString()))
{
    ui->setupUi(this);
    setFixedSize(size());
    kestrel::fitText(*ui->label_template);
    name_dialog = new AddUserTemplate(this);
}

EditTemplate::~EditTemplate() = default;

void EditTemplate::setPathINI(QString path)
{
    // A name that is being asked for is one of the list before, even if it is confirmed just now.
    name_wanted = false;
    if (name_dialog->isVisible()) {
        name_dialog->reject();
    }
    auto opened = kestrel::openSettings(path);
    QString presets;
    QStringList names;
    {
        const kestrel::OpenGroup list(*opened, kestrel::templateListGroup());
        presets = opened->value(kestrel::presetCountKey).toString();
        names = kestrel::splitTemplateList(opened->value(kestrel::templateListKey).toString());
    }
    settings = std::move(opened);
    if (!presets.isEmpty()) {
        // A file may say anything; no entry stands below 0.
        preset_count = std::max(presets.toInt(), 0);
    }
    ui->usertemplate->clear();
    ui->usertemplate->addItems(names.isEmpty() ? QStringList(kestrel::workingEntry()) : names);
}

void EditTemplate::on_template_add_clicked()
{
    name_dialog->clearLineEdit();
    if (!askName()) {
        return;
    }
    const QString name = name_dialog->getTemplateName();
    if (ui->usertemplate->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0) {
        QMessageBox::critical(nullptr, tr("提示"), tr("已存在当前模板"));
        return;
    }
    ui->usertemplate->addItem(name);
    emit addUserTemplate(name);

    {
        const kestrel::OpenGroup list(*settings, kestrel::templateListGroup());
        const QString stored = settings->value(kestrel::templateListKey).toString();
        settings->setValue(kestrel::templateListKey,
                           stored.isEmpty() ? listText() : kestrel::appendTemplate(stored, name));
    }
    kestrel::saveSettings(*settings, kestrel::groupsOf({name}));
}

void EditTemplate::on_template_remove_clicked()
{
    const int index = ui->usertemplate->currentIndex();
    if (index < preset_count) {
        return;
    }
    const QString name = ui->usertemplate->currentText();
    removeGroup(name);
    ui->usertemplate->setCurrentIndex(0);
    ui->usertemplate->removeItem(index);

    {
        const kestrel::OpenGroup list(*settings, kestrel::templateListGroup());
        settings->setValue(kestrel::templateListKey, listText());
        settings->setValue(kestrel::templateIndexKey, QStringLiteral("0"));
    }
    kestrel::saveSettings(*settings, kestrel::groupsOf({name}));
    changed = true;
}

void EditTemplate::on_template_rename_clicked()
{
    const int index = ui->usertemplate->currentIndex();
    if (index < preset_count) {
        return;
    }
    const QString oldName = ui->usertemplate->currentText();
    name_dialog->setLineEdit(oldName);
    if (!askName()) {
        return;
    }
    const QString newName = name_dialog->getTemplateName();
    ui->usertemplate->setItemText(index, newName);
    // Renaming to the same name therefore leaves an entry without a group.
    renameUserTemplate(oldName, newName);
    removeGroup(oldName);

    {
        const kestrel::OpenGroup list(*settings, kestrel::templateListGroup());
        settings->setValue(kestrel::templateListKey, listText());
    }
    kestrel::saveSettings(*settings, kestrel::groupsOf({oldName, newName}));
    changed = true;
}

void EditTemplate::on_template_reset_clicked()
{
    if (ui->usertemplate->count() == preset_count) {
        return;
    }
    for (int index = ui->usertemplate->count() - 1; index >= preset_count; --index) {
        removeGroup(ui->usertemplate->itemText(index));
        ui->usertemplate->removeItem(index);
    }
    {
        const kestrel::OpenGroup list(*settings, kestrel::templateListGroup());
        // "自订" alone, however many presets the file counts.
        settings->setValue(kestrel::templateListKey, kestrel::workingEntry());
    }
    kestrel::saveSettings(*settings);
    changed = true;
}

void EditTemplate::on_template_reset_2_clicked()
{
    close();
}

void EditTemplate::reject()
{
    close();
}

void EditTemplate::closeEvent(QCloseEvent* event)
{
    emit resetCurrentUserTemplate(std::exchange(changed, false));
    event->accept();
}

void EditTemplate::renameUserTemplate(QString from, QString to)
{
    const std::vector<QString> keys = kestrel::renamedKeys();
    std::vector<QString> texts;
    texts.reserve(keys.size());
    {
        const kestrel::OpenGroup group(*settings, kestrel::groupName(from));
        for (const QString& key : keys) {
            texts.push_back(settings->value(key).toString());
        }
    }
    const kestrel::OpenGroup group(*settings, kestrel::groupName(to));
    for (std::size_t i = 0; i < keys.size(); ++i) {
        settings->setValue(keys[i], texts[i]);
    }
}

// False when the user cancelled, or when the host took the dialogs away meanwhile. What is still
// being typed when a host hides them or the application quits was confirmed by nobody.
bool EditTemplate::askName()
{
    const QPointer<EditTemplate> self(this);
    name_wanted = true;
    name_dialog->setLineEditFocus();
    const bool confirmed = name_dialog->exec() == QDialog::Accepted;
    return self && name_wanted && confirmed && !name_dialog->getTemplateName().isEmpty();
}

QString EditTemplate::listText() const
{
    QStringList names;
    for (int index = 0; index < ui->usertemplate->count(); ++index) {
        names.append(ui->usertemplate->itemText(index));
    }
    return kestrel::joinTemplateList(names);
}

void EditTemplate::removeGroup(const QString& templateName)
{
    // The group without a name would be the whole file.
    if (templateName.isEmpty()) {
        return;
    }
    // Key by key: removing the group as such would take a key of that name outside all groups with
    // it.
    const kestrel::OpenGroup group(*settings, kestrel::groupName(templateName));
    const QStringList keys = settings->allKeys();
    for (const QString& key : keys) {
        settings->remove(key);
    }
}
