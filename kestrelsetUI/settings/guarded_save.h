/// @file
/// One save of a settings file that ends with the new file or with the old one.
#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <QStringList>

class QSettings;

namespace kestrel {

enum class SaveOutcome
{
    Failed,   ///< the old file stands
    InPlace,  ///< the file holds everything, but the toolkit may want to write it once more
    Complete, ///< the file holds everything
};

/// Writes what @p settings holds to its file and looks at the bytes on the disk afterwards.
/// @param settings an object with no group open, on a file.
/// @param hadFile whether the toolkit may take something for written: it comes back when somebody
/// has removed the file.
/// @param deadline until when to wait, in all, for others that save in the same folder.
/// @param groups those that have been written to since the file was whole; none, if not known.
SaveOutcome saveGuarded(QSettings& settings, bool hadFile, QDeadlineTimer deadline,
                        const QStringList& groups = {});

/// Clears the way for the toolkit's reader: a refused file is moved aside.
/// @param content receives the bytes of the file, if there is one to read; may be null.
/// @return false if what stands at @p path must not be read.
bool makeSafeToRead(const QString& path, QByteArray* content);

} // namespace kestrel
