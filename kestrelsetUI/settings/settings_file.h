/// @file
/// Opening and saving the settings file so that nothing in its place hurts the host and nothing
/// saved is lost.
#pragma once

#include <QSettings>
#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>

namespace kestrel {

/// Closes an object from openSettings() once all that it was handed to have closed it. A file that
/// has become unsafe or can't be written is not touched: such an object is kept, because the
/// toolkit's destructor would read or write once more.
struct SettingsCloser
{
    void operator()(QSettings* settings) const;
};

using SettingsHandle = std::unique_ptr<QSettings, SettingsCloser>;

/// Opens a settings file in INI format. Objects on the same path share what they hold; one that
/// holds something unsaved is handed out itself, so call it with no group open.
///
/// Opening never waits, and writes only what is unsaved, as saveSettings() does.
/// A regular file that is refused (see settings_inspection.h) is moved aside and the object starts
/// empty. With anything else in the way, or an empty path, the object works in memory and never
/// touches a file.
/// @return never null; release() it where the object has to outlive its owner. What is written to
/// it is saved by saveSettings(), at the latest when the event loop is reached.
SettingsHandle openSettings(const QString& path);

/// How long a save waits for another process that saves in the same folder: the interface stands
/// still meanwhile.
constexpr std::chrono::milliseconds savePatience{1000};

/// Writes what @p settings holds to its file now, and looks at the bytes on the disk afterwards:
/// the file is then complete, or it is as it was before. Call it with no group open.
///
/// Blocks while another process saves, for savePatience at most.
/// @param settings an object from openSettings().
/// @param groups all those that have been written to since the last save; none, if that is not
/// known. It makes the look at the bytes quick where the file is large.
/// @return true if the file holds everything; false if the old file stands, or there is no file to
/// write. The object keeps its values either way, so that a later call can succeed.
bool saveSettings(QSettings& settings, const QStringList& groups = {});

/// Tries once more what saves could not write, of every object from openSettings(); does nothing
/// where nothing is left over. An application that is about to quit tries the same, without
/// waiting, and saves what has not been saved yet.
/// @param own the caller's object, or null; it need not live any more.
/// @param patience how long to wait for another process that saves in the folder of @p own; the
/// others wait for nobody.
void saveLeftOvers(const QSettings* own, std::chrono::milliseconds patience);

} // namespace kestrel
