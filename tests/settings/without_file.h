/// @file
/// What a dialog without a usable file can still rely on.
#pragma once

#include "settings/settings_file.h"

#include "settings_folder.h"

namespace kestrel::test {

/// Checks that the dialog and the manager share what the user does, and that nothing on the disk
/// changes.
inline void expectWorkingInMemory(const SettingsFolder& folder)
{
    const QString brightness = QStringLiteral("ScannerA/brightness");
    const QStringList before = folder.files();
    {
        const SettingsHandle dialog = openSettings(folder.filePath());
        const SettingsHandle manager = openSettings(folder.filePath());
        EXPECT_TRUE(dialog->allKeys().isEmpty());
        dialog->setValue(brightness, QStringLiteral("12"));
        EXPECT_FALSE(saveSettings(*dialog));
        EXPECT_EQ(manager->value(brightness).toString(), QStringLiteral("12"));
        dialog->remove(brightness);
    }
    EXPECT_EQ(folder.files(), before);
}

} // namespace kestrel::test
