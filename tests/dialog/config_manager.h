/// @file
/// A dialog with its settings file and a user who opens the template manager.
#pragma once

#include "config_bench.h"

#include "dialogs/addusertemplate.h"
#include "dialogs/edittemplate.h"
#include "support/message_boxes.h"

#include <QLineEdit>
#include <QPushButton>

#include <functional>

namespace kestrel::test {

class TemplatesBench : public SettingsBench
{
protected:
    TemplatesBench() : m_scanner(fullScanner()) {}

    static inline const QString list = QStringLiteral("UserTemplates/usertemplate");
    static inline const QString storedIndex = QStringLiteral("UserTemplates/usertemplate_index");
    static inline const QString working = QStringLiteral("自订");

    static QStringList withWorking(const QStringList& names)
    {
        return QStringList(working) + names;
    }

    /// Starts with a file that holds these templates, of brightness 1, 2, 3 and so on, and a
    /// working configuration of brightness 50.
    void start(const QStringList& names, const QString& index = {})
    {
        StoredList values{
            {QStringLiteral("ScannerAconfig_version/config_version"), QStringLiteral("102")},
            {QStringLiteral("ScannerA/brightness"), QStringLiteral("50")},
            {QStringLiteral("ScannerAdefault/brightness"), QStringLiteral("60")},
            {QStringLiteral("UserTemplates/preset_template_num"), QStringLiteral("1")},
            {list, withWorking(names).join(QLatin1Char(';'))}};
        int brightness = 0;
        for (const QString& name : names) {
            values.emplace_back(groupName(name) + QStringLiteral("/brightness"),
                                QString::number(++brightness));
        }
        if (!index.isEmpty()) {
            values.emplace_back(storedIndex, index);
        }
        prepare(values);
        restart(m_scanner);
    }

    void ok() { press(get<QAbstractButton>("sure")); }
    void cancel() { press(get<QAbstractButton>("cancel")); }

    /// How many keys a group has for a program that starts now.
    int keysOnDisk(const QString& group)
    {
        const StoredList entries = onDisk();
        return static_cast<int>(
            std::count_if(entries.begin(), entries.end(), [&group](const Stored& entry) {
                return entry.first.startsWith(group + QLatin1Char('/'));
            }));
    }

    EditTemplate& manager() { return *dialog().edit_template; }
    QComboBox& managed() { return child<QComboBox>(manager(), "usertemplate"); }
    AddUserTemplate& nameDialog() { return *manager().findChild<AddUserTemplate*>(); }
    QPushButton& managerButton(const char* name) { return child<QPushButton>(manager(), name); }

    /// Opens the manager with its button and does something there; it has to be closed after that.
    void openManager(const std::function<void()>& meanwhile = [] {})
    {
        const WhenShown user(manager(), [this, &meanwhile] {
            meanwhile();
            press(managerButton("template_reset_2"));
        });
        press(get<QAbstractButton>("template_setting"));
        EXPECT_FALSE(manager().isVisible());
    }

    /// Presses a button of the open manager and types a name into the dialog that it opens.
    void enter(const char* button, const QString& name)
    {
        const WhenShown user(nameDialog(), [this, &name] {
            child<QLineEdit>(nameDialog(), "lineEdit").setText(name);
            press(child<QPushButton>(nameDialog(), "pushButton"));
        });
        press(managerButton(button));
    }
    void add(const QString& name) { enter("template_add", name); }
    void rename(int index, const QString& name)
    {
        managed().setCurrentIndex(index);
        enter("template_rename", name);
    }
    void remove(int index)
    {
        managed().setCurrentIndex(index);
        press(managerButton("template_remove"));
    }

    FakeScanner m_scanner;
};

} // namespace kestrel::test
