#include "settings/settings_file.h"

#include "settings/directory_lock.h"
#include "settings/guarded_save.h"
#include "settings/held_file.h"
#include "settings/ini_line_reader.h"
#include "settings/toolkit_memory.h"
#include "system/signal_blocker.h"

#include <QAtomicInt>
#include <QCoreApplication>
#include <QEvent>
#include <QFileInfo>
#include <QVector>

#include <algorithm>
#include <csignal>
#include <new>

namespace kestrel {

namespace {

// No file can ever stand below a device, and none can be created there.
const char memoryPrefix[] = "/dev/null/";

class SettingsFile;

Q_GLOBAL_STATIC(QVector<SettingsFile*>, openFiles)

/// @return all that are open, in a list that shares its memory; none while the program ends.
QVector<SettingsFile*> allOpenFiles()
{
    return openFiles.isDestroyed() ? QVector<SettingsFile*>() : *openFiles;
}

/// Saves checked where the toolkit, on its own, would write unchecked.
class SettingsFile : public QSettings
{
public:
    explicit SettingsFile(const QString& path)
        : QSettings(path, QSettings::IniFormat), history{QFileInfo::exists(path), false}
    {
        if (const auto* const application = QCoreApplication::instance(); application != nullptr) {
            connect(application, &QCoreApplication::aboutToQuit, this, [this] { saveAtTheEnd(); });
        }
        // Last of all: an object that was not made whole leaves the list by no destructor.
        if (!openFiles.isDestroyed()) {
            openFiles->append(this);
        }
    }

    ~SettingsFile() override
    {
        if (!openFiles.isDestroyed()) {
            openFiles->removeOne(this);
        }
    }
    Q_DISABLE_COPY_MOVE(SettingsFile)

    void addOwner()
    {
        setParent(nullptr);
        ++owners;
    }

    /// @return whether that was the last one.
    bool dropOwner() { return --owners == 0; }

    bool isInMemory() const { return fileName().startsWith(QLatin1String(memoryPrefix)); }

    /// Whether there may be values that the toolkit has not written.
    bool hasUnsaved()
    {
        // Without an application nothing delivers the toolkit's request for a save.
        isAsked = true;
        QCoreApplication::sendPostedEvents(this, QEvent::UpdateRequest);
        isAsked = false;
        return isUnsaved || QCoreApplication::instance() == nullptr;
    }

    bool isLastSaveComplete() const { return !isUnsaved; }

    void saveLeftOver(std::chrono::milliseconds patience)
    {
        if (isUnsaved) {
            save(patience);
        }
    }

    bool save(std::chrono::milliseconds patience, const QStringList& groups = {})
    {
        if (isInMemory()) {
            return false;
        }
        if (!group().isEmpty()) {
            isUnsaved = true; // the toolkit does not ask again
            return false;
        }
        const SignalBlocker blocker(SIGXFSZ);
        SaveOutcome outcome = SaveOutcome::Doubtful;
        try {
            const bool isKnown = knowsAll();
            outcome = saveGuarded(*this, history, patience, isKnown ? groups : QStringList());
        } catch (const std::bad_alloc&) { // as good as no room on the disk
        }
        // One try for each call: what could not be written is not tried again with every turn of
        // the event loop.
        QCoreApplication::removePostedEvents(this, QEvent::UpdateRequest);
        return noteOutcome(outcome);
    }

    void saveLater() { QCoreApplication::postEvent(this, new QEvent(QEvent::UpdateRequest)); }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::UpdateRequest) {
            return QSettings::event(event);
        }
        if (isAsked) {
            isUnsaved = true;
        } else {
            save(savePatience);
        }
        return true;
    }

private:
    // The event loop, which would deliver what is still requested, is over.
    void saveAtTheEnd()
    {
        if (hasUnsaved()) {
            save(std::chrono::milliseconds::zero());
        }
    }

    // Objects on the same path share what is read and written.
    bool isOtherOnFile(const SettingsFile* file) const
    {
        return file != this && file->fileName() == fileName();
    }

    // What a failed save has left over, or another object has not saved yet, may be in any group.
    bool knowsAll() const
    {
        const QVector<SettingsFile*> files = allOpenFiles();
        return !isUnsaved && std::none_of(files.cbegin(), files.cend(), [this](SettingsFile* file) {
            return isOtherOnFile(file) && file->isStillUnsaved();
        });
    }

    bool isStillUnsaved()
    {
        const bool wasUnsaved = isUnsaved;
        const bool stays = hasUnsaved();
        if (stays && !wasUnsaved) {
            saveLater(); // its own save is still to come
        }
        return stays;
    }

    // Without memory for anything: a save that had none ends here, too. What the others had left
    // over has been written along, but the toolkit does not know that of them: they stay unsaved.
    // @return whether the file holds everything.
    bool noteOutcome(SaveOutcome outcome)
    {
        const bool isDone = outcome == SaveOutcome::InPlace || outcome == SaveOutcome::Complete;
        history.isDoubtful = outcome == SaveOutcome::Doubtful;
        isUnsaved = outcome != SaveOutcome::Complete;
        history.hadFile = history.hadFile || isDone;
        const QVector<SettingsFile*> files = allOpenFiles();
        for (SettingsFile* const file : files) {
            if (isOtherOnFile(file)) {
                file->history.hadFile = file->history.hadFile || isDone;
            }
        }
        return isDone;
    }

    int owners = 1;
    SaveHistory history;
    bool isAsked = false;
    bool isUnsaved = false; ///< a save failed, and the toolkit does not request it again
};

SettingsHandle openInMemory(const QString& path)
{
    static QAtomicInt unnamed;
    const QString name =
        path.isEmpty() ? QString::number(unnamed.fetchAndAddRelaxed(1)) : path.mid(1);
    return SettingsHandle(new SettingsFile(QLatin1String(memoryPrefix) + name));
}

// The toolkit's constructor writes what another object on the same path has not saved: without a
// check, and after waiting for the lock file without limit. So no second object is made then.
SettingsFile* unsavedFile(const QString& path)
{
    const QVector<SettingsFile*> files = allOpenFiles();
    const auto found = std::find_if(files.cbegin(), files.cend(), [&](SettingsFile* file) {
        return file->fileName() == path && file->hasUnsaved();
    });
    return found != files.cend() ? *found : nullptr;
}

SettingsHandle openOnce(const QString& path)
{
    const DirectoryLock lock = DirectoryLock::ofFile(path, std::chrono::milliseconds::zero());
    if (lock.isHeld()) {
        HeldFile::recover(path);
    }
    FileBytes read;
    if (!makeSafeToRead(path, &read)) {
        return openInMemory(path);
    }
    const QByteArray& content = read.bytes();
    refreshToolkitMemory(path, content);
    SettingsHandle settings(new SettingsFile(path));
    noteToolkitMemory(path, content);
    if (content.startsWith(byteOrderMark)) {
        // Read everything as the UTF-8 it is, but write plain escapes: the mark would not be
        // written, and without it the next start would read other characters.
        settings->allKeys();
        settings->setIniCodec(static_cast<QTextCodec*>(nullptr));
    }
    return settings;
}

} // namespace

void SettingsCloser::operator()(QSettings* settings) const
{
    auto* const file = dynamic_cast<SettingsFile*>(settings);
    if (file == nullptr || !file->dropOwner()) {
        return;
    }
    // A folder that was removed meanwhile does not come back for nothing.
    if (file->hasUnsaved()) {
        file->save(savePatience);
    }
    if (file->isInMemory() || file->isLastSaveComplete()) {
        delete file;
        return;
    }
    // The attic is never cleared: see the header.
    static QObject* const attic = new QObject;
    file->setParent(attic);
}

SettingsHandle openSettings(const QString& path)
{
    if (path.isEmpty()) {
        return openInMemory(path);
    }
    const SignalBlocker blocker(SIGXFSZ);
    const QString absolutePath = QFileInfo(path).absoluteFilePath();
    SettingsFile* const shared = unsavedFile(absolutePath);
    if (shared == nullptr) {
        return openOnce(absolutePath);
    }
    shared->addOwner();
    // Also reads what others have written meanwhile.
    if (!shared->save(std::chrono::milliseconds::zero())) {
        shared->saveLater();
    }
    return SettingsHandle(shared);
}

bool saveSettings(QSettings& settings, const QStringList& groups)
{
    auto* const file = dynamic_cast<SettingsFile*>(&settings);
    return file != nullptr && file->save(savePatience, groups);
}

void saveLeftOvers(const QSettings* own, std::chrono::milliseconds patience)
{
    const QVector<SettingsFile*> files = allOpenFiles();
    for (SettingsFile* const file : files) {
        file->saveLeftOver(file == own ? patience : std::chrono::milliseconds::zero());
    }
}

} // namespace kestrel
