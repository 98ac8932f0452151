#include "settings/guarded_save.h"

#include "settings/directory_lock.h"
#include "settings/files_aside.h"
#include "settings/held_file.h"
#include "settings/ini_line_reader.h"
#include "settings/ini_plain_text.h"
#include "settings/settings_inspection.h"
#include "settings/settings_snapshot.h"
#include "settings/toolkit_lock.h"
#include "settings/toolkit_memory.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>

namespace kestrel {

namespace {

// The toolkit believes that it has written: let it read the old file, then tell it the new values
// again.
void tellAgain(QSettings& settings, const Snapshot& snapshot)
{
    settings.sync();
    const Snapshot old = snapshotOf(settings);
    // A file with a byte-order mark has set it.
    settings.setIniCodec(static_cast<QTextCodec*>(nullptr));
    Snapshot changed;
    for (auto entry = snapshot.cbegin(); entry != snapshot.cend(); ++entry) {
        if (old.value(entry.key()) != entry.value()) {
            changed.insert(entry.key(), entry.value());
        }
    }
    for (auto entry = old.cbegin(); entry != old.cend(); ++entry) {
        if (!snapshot.contains(entry.key()) && !entry.key().isEmpty()) {
            settings.remove(entry.key());
        }
    }
    tellAll(settings, changed);
}

/// What is known of a file that is about to be written.
struct KnownFile
{
    QString path;
    QByteArray content; ///< the bytes before
    QStringList groups; ///< those that may differ from them; none, if that is not known
};

bool isWhole(const KnownFile& known, QSettings& settings)
{
    FileBytes content;
    const bool isHeld = inspectSettingsFile(known.path, &content) == FileState::Sound &&
                        (holdsGroups(content.bytes(), settings, known.groups, known.content) ||
                         holds(content.bytes(), settings));
    if (isHeld) {
        noteToolkitMemory(known.path, content.bytes());
    }
    return isHeld;
}

// The old file stands again: the toolkit has to read it, and to be told the new values once more.
SaveOutcome putBack(QSettings& settings, HeldFile& held, const KnownFile& known)
{
    if (held.isUnchanged()) {
        return SaveOutcome::Failed;
    }
    const Snapshot snapshot = snapshotOf(settings);
    const qint64 written = modificationTime(known.path);
    if (!held.restore()) {
        return SaveOutcome::Doubtful;
    }
    outdateToolkitMemory(known.path, written);
    tellAgain(settings, snapshot);
    noteToolkitMemory(known.path, known.content);
    return SaveOutcome::Failed;
}

// After the toolkit may have written: the new file is whole, or the old one comes back.
SaveOutcome keepWhole(QSettings& settings, HeldFile& held, const KnownFile& known)
{
    const bool isUnchanged = held.isUnchanged();
    if (settings.status() == QSettings::NoError && isUnchanged) {
        held.settle();
        noteToolkitMemory(known.path, known.content);
        return SaveOutcome::Complete;
    }
    if (isWhole(known, settings)) {
        held.settle();
        return isUnchanged ? SaveOutcome::InPlace : SaveOutcome::Complete;
    }
    return putBack(settings, held, known);
}

// The toolkit reads such a file as UTF-8, but writes its texts back without the mark.
bool writeWithoutMark(const QString& path, const QByteArray& content)
{
    const QByteArray plain = withoutByteOrderMark(content);
    QSaveFile file(path);
    FileBytes written;
    return file.open(QIODevice::WriteOnly) && file.write(plain) == plain.size() && file.commit() &&
           inspectSettingsFile(path, &written) == FileState::Sound && written.bytes() == plain;
}

SaveOutcome saveHeld(QSettings& settings, const KnownFile& known)
{
    refreshToolkitMemory(known.path, known.content);
    HeldFile held(known.path);
    if (!held.isSafe()) {
        return SaveOutcome::Failed;
    }
    if (known.content.startsWith(byteOrderMark) && !writeWithoutMark(known.path, known.content)) {
        held.restore();
        return SaveOutcome::Failed;
    }
    settings.sync();
    return keepWhole(settings, held, known);
}

} // namespace

SaveOutcome saveGuarded(QSettings& settings, SaveHistory history, QDeadlineTimer deadline,
                        const QStringList& groups)
{
    const QString path = settings.fileName();
    const QString directory = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(directory)) {
        return SaveOutcome::Failed;
    }
    const DirectoryLock lock = DirectoryLock::ofFile(path, deadline);
    if (!lock.isHeld()) {
        return SaveOutcome::Failed;
    }
    HeldFile::recover(path);
    FileBytes content;
    if (!makeSafeToRead(path, &content) || !canTakeToolkitLock(path, deadline)) {
        return SaveOutcome::Failed;
    }
    if (history.isDoubtful || (history.hadFile && !QFileInfo::exists(path))) {
        // A file that somebody removed takes what was read from it along. Told beforehand, it comes
        // back whole with the one write.
        tellAll(settings, snapshotOf(settings));
    }
    return saveHeld(settings, {path, content.bytes(), groups});
}

bool makeSafeToRead(const QString& path, FileBytes* content)
{
    switch (inspectSettingsFile(path, content)) {
    case FileState::Missing:
    case FileState::Sound:
        return true;
    case FileState::Refused:
        return moveAside(path);
    case FileState::Foreign:
        break;
    }
    return false;
}

} // namespace kestrel
