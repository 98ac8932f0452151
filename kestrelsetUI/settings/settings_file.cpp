#include "settings/settings_file.h"

#include "settings/directory_lock.h"
#include "settings/file_size_signal.h"
#include "settings/held_file.h"
#include "settings/ini_scanner.h"
#include "settings/settings_inspection.h"

#include <QAtomicInt>
#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QLockFile>
#include <QSet>

#include <algorithm>
#include <chrono>

namespace kestrel {

namespace {

constexpr std::chrono::milliseconds lockPollTime{200};
constexpr std::chrono::milliseconds signingTime{500};

// No file can ever stand below a device, and none can be created there.
const char memoryPrefix[] = "/dev/null/";

/// Saves checked where the toolkit, on its own, would write unchecked.
class SettingsFile : public QSettings
{
public:
    explicit SettingsFile(const QString& path) : QSettings(path, QSettings::IniFormat) {}

    /// Whether there may be values that are not in the file.
    bool hasUnsaved()
    {
        // Without an application nothing delivers the toolkit's request for a save.
        isClosing = true;
        QCoreApplication::sendPostedEvents(this, QEvent::UpdateRequest);
        isClosing = false;
        return isUnsaved || QCoreApplication::instance() == nullptr;
    }

    void setUnsaved(bool unsaved) { isUnsaved = unsaved; }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::UpdateRequest) {
            isUnsaved = isClosing || !saveSettings(*this);
            return true;
        }
        return QSettings::event(event);
    }

private:
    bool isClosing = false;
    bool isUnsaved = false; ///< a save failed, and the toolkit does not request it again
};

bool isInMemory(const QSettings& settings)
{
    return settings.fileName().startsWith(QLatin1String(memoryPrefix));
}

SettingsHandle openInMemory(const QString& path)
{
    static QAtomicInt unnamed;
    const QString name =
        path.isEmpty() ? QString::number(unnamed.fetchAndAddRelaxed(1)) : path.mid(1);
    return SettingsHandle(new SettingsFile(QLatin1String(memoryPrefix) + name));
}

// Clears the way for the toolkit's reader.
bool isSafeToRead(const QString& path, QByteArray* content = nullptr)
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

// A lock file is signed as soon as it is made: one that nobody has signed for a while belongs to a
// process that was killed in between.
void removeUnsignedLock(const QString& lockPath)
{
    const QFileInfo lock(lockPath);
    if (lock.size() == 0 &&
        lock.lastModified().msecsTo(QDateTime::currentDateTime()) > signingTime.count()) {
        QFile::remove(lockPath);
    }
}

// The toolkit waits for its own lock file without limit, also for one that can never be its.
bool canLockFile(const QString& path)
{
    const QString lockPath = path + QLatin1String(".lock");
    const QFileInfo inTheWay(lockPath);
    if (inTheWay.isSymLink() || (inTheWay.exists() && !inTheWay.isFile())) {
        return false;
    }
    QLockFile probe(lockPath);
    const QDeadlineTimer deadline(savePatience);
    while (!probe.tryLock(static_cast<int>(lockPollTime.count()))) {
        if (probe.error() != QLockFile::LockFailedError || deadline.hasExpired()) {
            return false;
        }
        removeUnsignedLock(lockPath);
    }
    return true;
}

using Snapshot = QHash<QString, QVariant>;

Snapshot snapshotOf(const QSettings& settings)
{
    Snapshot snapshot;
    const QStringList keys = settings.allKeys();
    snapshot.reserve(keys.size());
    for (const QString& key : keys) {
        // A line without a key is kept by the toolkit, but can't be asked for.
        snapshot.insert(key, key.isEmpty() ? QVariant() : settings.value(key));
    }
    return snapshot;
}

bool isWrittenAsText(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.type())) {
    case QMetaType::QString:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Bool:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

QString withoutEscape(const QString& text)
{
    if (text.startsWith(QLatin1String("@@"))) {
        return text.mid(1);
    }
    const QLatin1String opening("@String(");
    if (text.startsWith(opening) && text.endsWith(QLatin1Char(')'))) {
        return text.mid(opening.size(), text.size() - opening.size() - 1);
    }
    return text;
}

// Names that the toolkit reads from files made by others, and then writes to one and the same line:
// "/x" and "x".
QSet<QString> sharedLines(const Snapshot& snapshot)
{
    QSet<QString> shared;
    for (auto entry = snapshot.keyBegin(); entry != snapshot.keyEnd(); ++entry) {
        const QString plain = entry->startsWith(QLatin1Char('/')) ? entry->mid(1) : QString();
        const bool isWrittenPlain = !plain.isNull() && !plain.startsWith(QLatin1Char('/'));
        if (isWrittenPlain && snapshot.contains(plain)) {
            shared.insert(plain);
        }
    }
    return shared;
}

// A cut file lacks lines at its end or the end of its last line; a file with holes has other
// values. Lines are counted because the toolkit can't read back every name that it takes over from
// a file made by others.
bool holds(const QByteArray& content, const Snapshot& snapshot)
{
    const QMultiHash<QString, QStringList> entries = readIniEntries(content);
    const QSet<QString> shared = sharedLines(snapshot);
    if (entries.size() != snapshot.size() - shared.size() ||
        (!content.isEmpty() && !content.endsWith('\n'))) {
        return false;
    }
    for (auto wanted = snapshot.cbegin(); wanted != snapshot.cend(); ++wanted) {
        if (!isWrittenAsText(wanted.value()) || shared.contains(wanted.key())) {
            continue;
        }
        const QList<QStringList> found = entries.values(wanted.key());
        const auto isWanted = [&wanted](const QStringList& elements) {
            return elements.size() == 1 && withoutEscape(elements.first()) == wanted->toString();
        };
        if (!found.isEmpty() && std::none_of(found.cbegin(), found.cend(), isWanted)) {
            return false;
        }
    }
    return true;
}

// The toolkit believes that it has written: let it read the old file, then tell it the new values
// again.
void putBack(QSettings& settings, const Snapshot& snapshot)
{
    settings.sync();
    const Snapshot old = snapshotOf(settings);
    for (auto entry = old.cbegin(); entry != old.cend(); ++entry) {
        if (!snapshot.contains(entry.key()) && !entry.key().isEmpty()) {
            settings.remove(entry.key());
        }
    }
    for (auto entry = snapshot.cbegin(); entry != snapshot.cend(); ++entry) {
        if (old.value(entry.key()) != entry.value() && !entry.key().isEmpty()) {
            settings.setValue(entry.key(), entry.value());
        }
    }
}

// After the toolkit may have written: the new file is whole, or the old one comes back.
bool keepWhole(QSettings& settings, HeldFile& held, const QString& path)
{
    if (settings.status() == QSettings::NoError && held.isUnchanged()) {
        return true;
    }
    const Snapshot snapshot = snapshotOf(settings);
    QByteArray content;
    if (inspectSettingsFile(path, &content) == FileState::Sound && holds(content, snapshot)) {
        return true;
    }
    if (held.restore()) {
        putBack(settings, snapshot);
    }
    return false;
}

// A file that somebody removed takes what was read from it along: everything is told again.
void syncWithoutLoss(QSettings& settings, bool fileExists)
{
    const Snapshot before = fileExists ? Snapshot() : snapshotOf(settings);
    settings.sync();
    bool lost = false;
    for (auto entry = before.cbegin(); entry != before.cend(); ++entry) {
        if (!entry.key().isEmpty() && !settings.contains(entry.key())) {
            settings.setValue(entry.key(), entry.value());
            lost = true;
        }
    }
    if (lost) {
        settings.sync();
    }
}

bool saveHeld(QSettings& settings, const QString& path)
{
    HeldFile held(path);
    if (!held.isSafe()) {
        return false;
    }
    syncWithoutLoss(settings, QFileInfo::exists(path));
    return keepWhole(settings, held, path);
}

bool saveLocked(QSettings& settings)
{
    const QString path = settings.fileName();
    const QString directory = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(directory)) {
        return false;
    }
    const DirectoryLock lock(directory, savePatience);
    if (!lock.isHeld()) {
        return false;
    }
    HeldFile::recover(path);
    return isSafeToRead(path) && canLockFile(path) && saveHeld(settings, path);
}

} // namespace

void SettingsCloser::operator()(QSettings* settings) const
{
    auto* const file = dynamic_cast<SettingsFile*>(settings);
    // A folder that was removed meanwhile does not come back for nothing.
    const bool isSaved = file != nullptr && !file->hasUnsaved();
    if (isInMemory(*settings) || isSaved || saveSettings(*settings)) {
        delete settings;
        return;
    }
    // The attic is never cleared: see the header.
    static QObject* const attic = new QObject;
    settings->setParent(attic);
}

SettingsHandle openSettings(const QString& path)
{
    if (path.isEmpty()) {
        return openInMemory(path);
    }
    const QFileInfo file(path);
    const QString absolutePath = file.absoluteFilePath();
    const DirectoryLock lock(file.absolutePath(), std::chrono::milliseconds::zero());
    if (lock.isHeld()) {
        HeldFile::recover(absolutePath);
    }
    QByteArray content;
    if (!isSafeToRead(absolutePath, &content)) {
        return openInMemory(absolutePath);
    }
    SettingsHandle settings;
    if (lock.isHeld() || !QFileInfo::exists(file.absolutePath())) {
        // The toolkit's constructor writes what another object on this path could not save.
        HeldFile held(absolutePath);
        settings.reset(new SettingsFile(absolutePath));
        keepWhole(*settings, held, absolutePath);
    } else {
        settings.reset(new SettingsFile(absolutePath));
    }
    if (content.startsWith("\xEF\xBB\xBF")) {
        // Read everything as the UTF-8 it is, but write plain escapes: the mark would not be
        // written, and without it the next start would read other characters.
        settings->allKeys();
        settings->setIniCodec(static_cast<QTextCodec*>(nullptr));
    }
    return settings;
}

bool saveSettings(QSettings& settings)
{
    if (isInMemory(settings) || !settings.group().isEmpty()) {
        return false;
    }
    const FileSizeSignalBlocker blocker;
    const bool saved = saveLocked(settings);
    // One try for each call: what could not be written is not tried again with every turn of the
    // event loop.
    QCoreApplication::removePostedEvents(&settings, QEvent::UpdateRequest);
    if (auto* const file = dynamic_cast<SettingsFile*>(&settings)) {
        file->setUnsaved(!saved);
    }
    return saved;
}

} // namespace kestrel
