#include "settings/toolkit_memory.h"

#include <QFile>
#include <QHash>

#include <functional>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>

namespace kestrel {

namespace {

constexpr qint64 perSecond = 1000;
constexpr qint64 nanoseconds = 1'000'000; // of a millisecond

struct Memory
{
    int size;
    std::size_t hash;
    qint64 modified;
};

using Memories = QHash<QString, Memory>;
Q_GLOBAL_STATIC(Memories, memories)

std::size_t hashOf(const QByteArray& content)
{
    const std::string_view bytes(content.constData(), static_cast<std::size_t>(content.size()));
    return std::hash<std::string_view>()(bytes);
}

void moveOn(const QString& path, qint64 modified)
{
    const qint64 next = modified + 1;
    const timespec keep{0, UTIME_OMIT};
    const timespec moved{static_cast<time_t>(next / perSecond),
                         static_cast<long>(next % perSecond * nanoseconds)};
    const timespec times[] = {keep, moved};
    const QByteArray name = QFile::encodeName(path);
    if (::utimensat(AT_FDCWD, name.constData(), times, 0) != 0) {
        // Only the owner may choose a time; whoever may write the file may still set the present.
        ::utimensat(AT_FDCWD, name.constData(), nullptr, 0);
    }
}

} // namespace

qint64 modificationTime(const QString& path)
{
    struct stat status
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return -1;
    }
    return status.st_mtim.tv_sec * perSecond + status.st_mtim.tv_nsec / nanoseconds;
}

void noteToolkitMemory(const QString& path, const QByteArray& content)
{
    if (!memories.isDestroyed()) {
        memories->insert(path, {content.size(), hashOf(content), modificationTime(path)});
    }
}

void refreshToolkitMemory(const QString& path, const QByteArray& content)
{
    if (memories.isDestroyed()) {
        return;
    }
    const auto known = memories->constFind(path);
    if (known == memories->constEnd() || known->size != content.size() ||
        known->modified != modificationTime(path)) {
        return;
    }
    if (known->hash != hashOf(content)) {
        moveOn(path, known->modified);
    }
}

void outdateToolkitMemory(const QString& path, qint64 modified)
{
    if (modified >= 0 && modificationTime(path) == modified) {
        moveOn(path, modified);
    }
}

} // namespace kestrel
