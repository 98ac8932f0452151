/// @file
/// One save of a settings file that ends with the new file or with the old one.
#pragma once

#include "settings/file_bytes.h"

#include <QDeadlineTimer>
#include <QString>
#include <QStringList>

class QSettings;

namespace kestrel {

enum class SaveOutcome
{
    Doubtful, ///< neither new nor old: the toolkit may take for written what is not
    Failed,   ///< the old file stands
    InPlace,  ///< the file holds everything, but the toolkit may want to write it once more
    Complete, ///< the file holds everything
};

/// How the saves before this one have ended.
struct SaveHistory
{
    /// The toolkit may take something for written: it comes back when somebody has removed the
    /// file.
    bool hadFile = false;
    bool isDoubtful = false; ///< the last one was SaveOutcome::Doubtful
};

/// Writes what @p settings holds to its file and looks at the bytes on the disk afterwards.
/// @param settings an object with no group open, on a file.
/// @param deadline until when to wait, in all, for others that save in the same folder.
/// @param groups those that have been written to since the file was whole; none, if not known.
/// @throws std::bad_alloc, which leaves the file whole and the outcome in doubt.
SaveOutcome saveGuarded(QSettings& settings, SaveHistory history, QDeadlineTimer deadline,
                        const QStringList& groups = {});

/// Clears the way for the toolkit's reader: a refused file is moved aside.
/// @param content receives the bytes of the file, if there is one to read; may be null.
/// @return false if what stands at @p path must not be read.
bool makeSafeToRead(const QString& path, FileBytes* content);

} // namespace kestrel
