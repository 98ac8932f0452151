/// @file
/// A dialog with its settings file, and the program's next start.
#pragma once

#include "support/dialog_probe.h"
#include "support/host.h"
#include "support/models.h"
#include "support/user.h"

#include "settings/settings_file.h"
#include "settings/settings_table.h"
#include "settings/template_list.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <utility>
#include <vector>

inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

namespace kestrel::test {

/// What a control holds, as text.
inline QString shown(const QWidget& control)
{
    if (const auto* const list = qobject_cast<const QComboBox*>(&control)) {
        return QString::number(list->currentIndex());
    }
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&control)) {
        return QString::number(button->isChecked() ? 1 : 0);
    }
    if (const auto* const bar = qobject_cast<const QAbstractSlider*>(&control)) {
        return QString::number(bar->value());
    }
    if (const auto* const spin = qobject_cast<const QSpinBox*>(&control)) {
        return QString::number(spin->value());
    }
    const auto* const real = qobject_cast<const QDoubleSpinBox*>(&control);
    if (real == nullptr) {
        ADD_FAILURE() << control.objectName().toStdString() << " holds no value";
        return {};
    }
    return QString::number(real->value());
}

/// Puts a text into a control, whatever its kind; rules that watch it run.
inline void put(QWidget& control, const QString& text)
{
    if (auto* const list = qobject_cast<QComboBox*>(&control)) {
        list->setCurrentIndex(text.toInt());
    } else if (auto* const button = qobject_cast<QAbstractButton*>(&control)) {
        button->setChecked(text.toInt() == 1);
    } else if (auto* const bar = qobject_cast<QAbstractSlider*>(&control)) {
        bar->setValue(text.toInt());
    } else if (auto* const spin = qobject_cast<QSpinBox*>(&control)) {
        spin->setValue(text.toInt());
    } else if (auto* const real = qobject_cast<QDoubleSpinBox*>(&control)) {
        real->setValue(text.toDouble());
    } else {
        ADD_FAILURE() << control.objectName().toStdString() << " takes no value";
    }
}

/// Key ("group/key") and text.
using Stored = std::pair<QString, QString>;
using StoredList = std::vector<Stored>;

class SettingsBench : public testing::Test
{
protected:
    SettingsBench()
        : m_folder(std::make_unique<TempConfigDir>()), m_dialog(std::make_unique<DialogProbe>())
    {
    }
    ~SettingsBench() override { leave(); }

    DialogProbe& dialog() { return *m_dialog; }
    const TempConfigDir& folder() const { return *m_folder; }

    /// Binds as a host does.
    void bind(FakeScanner& scanner, const char* name = "ScannerA")
    {
        bindIn(scanner, name, m_folder->path());
    }
    /// The same with another settings folder.
    void bindIn(FakeScanner& scanner, const char* name, const char* configDir)
    {
        ScannerIdentity record = identity(name);
        initKestrelSetUI(m_dialog->host(), scanner.handle(), &record, configDir);
        if (m_dialog->settings != nullptr) {
            m_left.emplace_back(m_dialog->settings);
        }
    }

    /// The dialog goes; what it leaves behind stays, as in a host.
    void deleteDialog() { m_dialog.reset(); }

    /// Ends the program: the dialog goes, and what it leaves behind.
    void leave()
    {
        m_dialog.reset();
        m_left.clear();
    }

    /// A program that has not bound yet.
    void beginAnew()
    {
        leave();
        m_dialog = std::make_unique<DialogProbe>();
    }

    /// Ends the program and starts it again. The files go to a folder where this process has not
    /// read them yet, so that only their bytes count.
    void restart(FakeScanner& scanner, const char* name = "ScannerA")
    {
        leave();
        auto next = std::make_unique<TempConfigDir>();
        const QDir from(QString::fromUtf8(m_folder->path()));
        for (const QString& file : from.entryList(QDir::Files)) {
            ASSERT_TRUE(QFile::copy(from.filePath(file), next->file(file))) << file.toStdString();
        }
        m_folder = std::move(next);
        m_dialog = std::make_unique<DialogProbe>();
        bind(scanner, name);
    }

    /// Lets the file hold these values before the program starts; one that runs is ended.
    void prepare(const StoredList& values, const char* name = "ScannerA")
    {
        beginAnew();
        const QTemporaryDir elsewhere;
        const QString path = elsewhere.filePath(QStringLiteral("made.ini"));
        {
            QSettings made(path, QSettings::IniFormat);
            for (const auto& [key, text] : values) {
                made.setValue(key, text);
            }
        }
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        m_folder->write(QString::fromUtf8(name) + QStringLiteral(".ini"), file.readAll());
    }

    /// Changes values behind the dialog's controls, as another holder of the file would.
    void store(const QString& key, const QString& text) { m_dialog->settings->setValue(key, text); }
    /// What the dialog's settings object holds.
    QString held(const QString& key) { return m_dialog->settings->value(key).toString(); }

    /// The bytes of the device's file.
    QByteArray bytes(const char* name = "ScannerA") const
    {
        return m_folder->read(QString::fromUtf8(name) + QStringLiteral(".ini"));
    }
    /// What a program that starts now reads, in no particular order of groups.
    StoredList onDisk(const char* name = "ScannerA") const
    {
        const QTemporaryDir elsewhere;
        const QString copy = elsewhere.filePath(QStringLiteral("copy.ini"));
        QFile file(copy);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes(name));
        file.close();
        const QSettings settings(copy, QSettings::IniFormat);
        StoredList entries;
        for (const QString& key : settings.allKeys()) {
            entries.emplace_back(key, settings.value(key).toString());
        }
        return entries;
    }
    /// One value of that; "(none)" when there is no such key.
    QString onDisk(const QString& key, const char* name = "ScannerA") const
    {
        const StoredList entries = onDisk(name);
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [&key](const Stored& entry) { return entry.first == key; });
        return found != entries.end() ? found->second : QStringLiteral("(none)");
    }
    /// The groups of that, sorted.
    QStringList groupsOnDisk(const char* name = "ScannerA") const
    {
        QStringList groups;
        for (const auto& entry : onDisk(name)) {
            groups << entry.first.section(QLatin1Char('/'), 0, 0);
        }
        groups.removeDuplicates();
        groups.sort();
        return groups;
    }

    template <typename T>
    T& get(const char* name)
    {
        return child<T>(*m_dialog, name);
    }
    QComboBox& templates() { return child<QComboBox>(tabs(), "usertemplate"); }
    QComboBox& resolutions() { return get<QComboBox>("resolution_gengel_slide"); }
    /// The tabs hold every control of a setting; the manager has widgets of the same names.
    QWidget& tabs() { return get<QWidget>("tabWidget"); }
    QWidget& controlOf(const Setting& setting) { return child<QWidget>(tabs(), setting.control); }
    bool checked(const char* name) { return get<QAbstractButton>(name).isChecked(); }
    int brightness() { return get<QAbstractSlider>("brightness_set").value(); }
    void setBrightness(int value) { get<QAbstractSlider>("brightness_set").setValue(value); }

    /// Everything that a configuration brings back, one line each, as the dialog shows it.
    QStringList state()
    {
        QStringList lines;
        const auto add = [&lines](const QString& name, const QString& text) {
            lines << name + QLatin1Char('=') + text;
        };
        add(QStringLiteral("mask"), QString::number(m_dialog->mask()));
        for (const Setting& setting : settingsTable()) {
            if (setting.control != nullptr && setting.inWorkingGroup()) {
                add(QLatin1String(setting.control), shown(controlOf(setting)));
            }
        }
        for (const char* const name :
             {"front_bw", "front_gray", "front_color", "rear_bw", "rear_gray", "rear_color",
              "color_detection_image_front", "color_detection_image_back", "horizontal_range",
              "rotation_fanfold"}) {
            add(QLatin1String(name), shown(get<QWidget>(name)));
        }
        for (const char* const name : {"groupBox_front_autodetection",
                                       "groupBox_back_autodetection", "tl_x", "tl_x_label"}) {
            add(QLatin1String(name) + QStringLiteral(" enabled"),
                QString::number(get<QWidget>(name).isEnabledTo(&tabs()) ? 1 : 0));
        }
        add(QStringLiteral("resolutions"), items(resolutions()).join(QLatin1Char(',')));
        add(QStringLiteral("portrait"), QString::number(m_dialog->portrait ? 1 : 0));
        QStringList gamma;
        for (const int entry : m_dialog->gamma_table) {
            gamma << QString::number(entry);
        }
        add(QStringLiteral("gamma table"), gamma.join(QLatin1Char(',')));
        return lines;
    }

    /// Fails the test unless the dialog shows this state.
    void expectState(const QStringList& expected, const std::string& what = {})
    {
        const QStringList now = state();
        EXPECT_TRUE(now == expected) << what << '\n' << difference(expected, now);
    }

private:
    static std::string difference(const QStringList& expected, const QStringList& now)
    {
        std::string text;
        for (int i = 0; i < std::max(expected.size(), now.size()); ++i) {
            if (expected.value(i) != now.value(i)) {
                text += expected.value(i).left(80).toStdString() + "  became  " +
                        now.value(i).left(80).toStdString() + '\n';
            }
        }
        return text;
    }

    std::unique_ptr<TempConfigDir> m_folder;
    std::unique_ptr<DialogProbe> m_dialog;
    std::vector<SettingsHandle> m_left;
};

} // namespace kestrel::test
