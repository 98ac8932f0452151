#include "settings/files_aside.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrel {

namespace {

constexpr int mostFilesAside = 1000;

QByteArray asideName(const QByteArray& name, int number)
{
    return name + ".bad-" + QByteArray::number(number);
}

bool isTaken(const QByteArray& name)
{
    struct stat taken
    {
    };
    return ::lstat(name.constData(), &taken) == 0;
}

} // namespace

bool moveAside(const QString& path)
{
    const QByteArray from = QFile::encodeName(path);
    for (int number = 1; number <= mostFilesAside; ++number) {
        const QByteArray to = asideName(from, number);
        if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) ==
            0) {
            return true;
        }
        // Some file systems can't promise not to replace.
        if (errno == EINVAL && !isTaken(to)) {
            return ::rename(from.constData(), to.constData()) == 0;
        }
        if (errno != EEXIST && errno != EINVAL) {
            return false;
        }
    }
    return false;
}

bool keepAside(const QString& path)
{
    const QByteArray file = QFile::encodeName(path);
    for (int number = 1; number <= mostFilesAside; ++number) {
        const QByteArray aside = asideName(file, number);
        if (isTaken(aside)) {
            continue;
        }
        return ::link(file.constData(), aside.constData()) == 0 ||
               copyWhole(path, QFile::decodeName(aside));
    }
    return false;
}

bool copyWhole(const QString& from, const QString& to)
{
    if (!QFile::copy(from, to)) {
        return false;
    }
    const bool isWhole = QFileInfo(from).size() == QFileInfo(to).size();
    if (!isWhole) {
        QFile::remove(to);
    }
    return isWhole;
}

} // namespace kestrel
