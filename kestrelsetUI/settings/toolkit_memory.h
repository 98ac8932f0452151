/// @file
/// What the toolkit believes to be in a settings file.
#pragma once

#include <QByteArray>
#include <QString>

namespace kestrel {

/// Notes what the toolkit has read from a file, or written to it. Only the GUI thread may.
/// @param path as the toolkit knows the file.
/// @param content what it holds of it.
void noteToolkitMemory(const QString& path, const QByteArray& content);

/// The toolkit reads a file anew when its size or its time, in milliseconds, has changed. Two
/// programs that save within one tick of the file system's clock leave files that look the same to
/// it, and the next save would bring old values back. For such a file the time is moved on.
/// @param content what the file holds now.
void refreshToolkitMemory(const QString& path, const QByteArray& content);

/// Makes the toolkit read the file anew although it may look as it did.
/// @param modified the time of the file that the toolkit knows, as modificationTime() gave it.
void outdateToolkitMemory(const QString& path, qint64 modified);

/// @return milliseconds since 1970, UTC; -1 if there is no file.
qint64 modificationTime(const QString& path);

} // namespace kestrel
