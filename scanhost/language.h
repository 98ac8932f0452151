/// @file
/// The language of the window and of the settings dialog.
#pragma once

#include <QString>
#include <QStringList>

namespace kestrel {

/// @param wished the user's languages as QLocale::uiLanguages() gives them, the dearest first
/// @return the suffix of the catalogues to load, "en"; empty for Chinese, which needs none
QString catalogueFor(const QStringList& wished);

/// Loads the texts of Qt, of this program and of the settings dialog. What is not found stays in
/// Chinese. Has to be called before the first window is made.
/// @param wished the user's languages, the dearest first
/// @param programDir the folder of the running program; the catalogues are looked for from there
void speak(const QStringList& wished, const QString& programDir);

} // namespace kestrel
