/// @file
/// What stands where a settings file is expected, found out before the toolkit touches it.
#pragma once

#include <QByteArray>
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
FileState inspectSettingsFile(const QString& path, QByteArray* content = nullptr);

/// Renames what stands at @p path to the first free one of "PATH.bad-1", "PATH.bad-2", ...
/// @return false if that failed; everything is then where it was.
bool moveAside(const QString& path);

/// Gives the file at @p path the first free one of these names as a second name, so that the first
/// is never without a file; moves it on a file system without second names.
/// @return false if neither could be done.
bool keepAside(const QString& path);

} // namespace kestrel
