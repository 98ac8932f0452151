/// @file
/// The template manager with a settings file and a user.
#pragma once

#include "dialogs/addusertemplate.h"
#include "dialogs/edittemplate.h"
#include "settings/settings_file.h"
#include "settings/settings_table.h"

#include "support/message_boxes.h"
#include "support/user.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kestrel::test {

class ManagerBench : public testing::Test
{
protected:
    const QString list = QStringLiteral("UserTemplates/usertemplate");
    const QString storedIndex = QStringLiteral("UserTemplates/usertemplate_index");
    const QString presets = QStringLiteral("UserTemplates/preset_template_num");

    QComboBox& combo() { return child<QComboBox>(manager, "usertemplate"); }
    QPushButton& button(const char* name) { return child<QPushButton>(manager, name); }
    AddUserTemplate& nameDialog() { return *manager.findChild<AddUserTemplate*>(); }

    QString path() const { return directory.filePath(QStringLiteral("ScannerA.ini")); }

    /// The main dialog's own object on the file.
    QSettings& file()
    {
        if (!settings) {
            settings = openSettings(path());
        }
        return *settings;
    }

    /// Fills the file with a list, and with a whole group for each of its templates.
    void store(const QStringList& names)
    {
        file().setValue(list, names.join(QLatin1Char(';')));
        for (const QString& name : names.mid(1)) {
            for (const Setting& setting : settingsTable()) {
                if (setting.inWorkingGroup()) {
                    file().setValue(name + QLatin1Char('/') + QLatin1String(setting.key),
                                    name + QLatin1String(setting.key));
                }
            }
        }
        ASSERT_TRUE(saveSettings(file()));
    }

    QStringList groups() { return file().childGroups(); }

    QStringList keysOf(const QString& group)
    {
        file().beginGroup(group);
        QStringList keys = file().childKeys();
        file().endGroup();
        return keys;
    }

    /// What a program that starts now reads.
    QString onDisk(const QString& key) const
    {
        const QTemporaryDir elsewhere;
        const QString copy = elsewhere.filePath(QStringLiteral("copy.ini"));
        QFile::copy(path(), copy);
        return QSettings(copy, QSettings::IniFormat).value(key).toString();
    }

    /// Clicks a button that asks for a name, and enters @p name.
    void clickAndEnter(const char* buttonName, const QString& name)
    {
        const WhenShown user(nameDialog(), [this, name] {
            nameDialog().setLineEdit(name);
            click(child<QPushButton>(nameDialog(), "pushButton"));
        });
        press(button(buttonName));
    }

    /// Clicks a button that asks for a name, and cancels.
    void clickAndCancel(const char* buttonName)
    {
        const WhenShown user(nameDialog(),
                             [this] { click(child<QPushButton>(nameDialog(), "pushButton_2")); });
        press(button(buttonName));
    }

    QTemporaryDir directory;
    SettingsHandle settings;
    EditTemplate manager;
    QSignalSpy added{&manager, &EditTemplate::addUserTemplate};
    QSignalSpy closed{&manager, &EditTemplate::resetCurrentUserTemplate};
};

} // namespace kestrel::test
