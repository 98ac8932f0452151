#include "settings/held_file.h"

#include "settings/files_aside.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <unistd.h>

namespace kestrel {

namespace {

QByteArray realName(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return QFile::encodeName(canonical.isEmpty() ? path : canonical);
}

constexpr int mostHoldNames = 16;

// What stands at such a name is taken for ours: nobody gives it to a copy made by hand.
QByteArray holdName(const QByteArray& file, int number)
{
    const QByteArray name = file + ".kestrel-hold";
    return number == 0 ? name : name + '-' + QByteArray::number(number);
}

bool sameFile(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool holdByName(const QByteArray& file, const QByteArray& hold)
{
    if (::link(file.constData(), hold.constData()) == 0) {
        return true;
    }
    // A file system without hard links, or somebody else's file: a whole copy serves as well.
    const bool canCopy =
        errno == EPERM || errno == EOPNOTSUPP || errno == EMLINK || errno == ENOSYS;
    return canCopy && copyWhole(QFile::decodeName(file), QFile::decodeName(hold));
}

// What stands at a name still after recovery is somebody else's, a directory perhaps.
// Returns the name, or nothing if the file could not be held.
QByteArray holdByFirstFreeName(const QByteArray& file)
{
    for (int number = 0; number < mostHoldNames; ++number) {
        const QByteArray hold = holdName(file, number);
        struct stat taken
        {
        };
        if (::lstat(hold.constData(), &taken) != 0) {
            return holdByName(file, hold) ? hold : QByteArray();
        }
    }
    return {};
}

bool isCut(const QByteArray& name)
{
    QFile file(QFile::decodeName(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    return file.size() == 0 || !file.seek(file.size() - 1) || file.read(1) != "\n";
}

void recoverFrom(const QByteArray& file, const QByteArray& hold)
{
    struct stat held
    {
    };
    if (::lstat(hold.constData(), &held) != 0 || !S_ISREG(held.st_mode)) {
        return;
    }
    struct stat now
    {
    };
    const bool isThere = ::stat(file.constData(), &now) == 0;
    const bool isAnother = isThere && S_ISREG(now.st_mode) && !sameFile(now, held);
    if (isAnother && held.st_size > 0 && isCut(file)) {
        // The end that is missing may be missing because somebody edited the file by hand.
        if (now.st_size == 0 || keepAside(QFile::decodeName(file))) {
            ::rename(hold.constData(), file.constData());
        }
    } else if ((!isThere && held.st_size > 0) || (isAnother && now.st_size < held.st_size)) {
        // Nothing tells a file that was removed on purpose, or lost lines, from one that somebody
        // was about to replace, or that was cut between two lines.
        moveAside(QFile::decodeName(hold));
    } else {
        ::unlink(hold.constData());
    }
}

} // namespace

HeldFile::HeldFile(const QString& path) : file(realName(path))
{
    existed = ::stat(file.constData(), &before) == 0;
    hold = existed ? holdByFirstFreeName(file) : QByteArray();
    safe = !existed || !hold.isEmpty();
    if (existed && safe) {
        // The second name has changed the file's times and count.
        safe = ::stat(file.constData(), &before) == 0;
    }
}

HeldFile::~HeldFile()
{
    const bool isOver = safe && (settled || isUnchanged() || restore());
    if (isOver && existed) {
        ::unlink(hold.constData());
    }
}

bool HeldFile::isUnchanged() const
{
    struct stat now
    {
    };
    if (::stat(file.constData(), &now) != 0) {
        return !existed;
    }
    return existed && sameFile(before, now) && before.st_size == now.st_size &&
           before.st_mtim.tv_sec == now.st_mtim.tv_sec &&
           before.st_mtim.tv_nsec == now.st_mtim.tv_nsec;
}

bool HeldFile::restore()
{
    if (isUnchanged()) {
        return false;
    }
    settled = existed ? ::rename(hold.constData(), file.constData()) == 0
                      : ::unlink(file.constData()) == 0;
    return settled;
}

void HeldFile::recover(const QString& path)
{
    const QByteArray file = realName(path);
    for (int number = 0; number < mostHoldNames; ++number) {
        recoverFrom(file, holdName(file, number));
    }
}

} // namespace kestrel
