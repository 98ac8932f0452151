/// @file
/// What stands where a settings file is expected, found out before the toolkit touches it.
#pragma once

#include "settings/file_bytes.h"

#include <QString>

namespace kestrel {

enum class FileState
{
    Missing, ///< nothing there: it can be created
    Sound,   ///< a regular file that can be read safely
    Refused, ///< a regular file that is too large, would make the reader build objects, or
             ///< would keep it busy for minutes
    Foreign, ///< a pipe, device, directory, dangling link, or something that can't be read
};

/// The largest settings file that is read, in bytes: some thousand templates fit.
constexpr qint64 largestSettingsFile = 16LL * 1024 * 1024;

/// Never blocks, whatever stands at @p path, and changes nothing.
/// @param content receives the bytes of a sound file; may be null.
FileState inspectSettingsFile(const QString& path, FileBytes* content = nullptr);

} // namespace kestrel
