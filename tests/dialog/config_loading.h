/// @file
/// Loading one key of the settings file into the dialog.
#pragma once

#include "config_bench.h"

namespace kestrel::test {

class LoadingValues : public SettingsBench
{
protected:
    LoadingValues() : m_scanner(fullScanner()) { bind(m_scanner); }

    /// Loads a group that holds this key alone.
    void load(const char* key, const QString& text)
    {
        dialog().settings->remove(QStringLiteral("L"));
        store(QStringLiteral("L/") + QLatin1String(key), text);
        dialog().loadConfig(QStringLiteral("L"));
    }
    void load(const char* key, const char* text) { load(key, QString::fromUtf8(text)); }

    void loadDefaults() { dialog().loadConfig(QStringLiteral("ScannerAdefault")); }

    QString controlText(const Setting& setting) { return shown(controlOf(setting)); }

    /// A state in which no control is where a text that is no number would put it.
    void moveAwayFromZero()
    {
        loadDefaults();
        for (const Setting& setting : settingsTable()) {
            if (setting.encoding == Encoding::Index) {
                put(controlOf(setting), QStringLiteral("1"));
            } else if (setting.encoding == Encoding::Bool ||
                       setting.encoding == Encoding::EnableWord) {
                put(controlOf(setting), QStringLiteral("1"));
            }
        }
    }

    FakeScanner m_scanner;
};

} // namespace kestrel::test
