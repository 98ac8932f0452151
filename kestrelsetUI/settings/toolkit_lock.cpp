#include "settings/toolkit_lock.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

#include <algorithm>
#include <chrono>

namespace kestrel {

namespace {

constexpr std::chrono::milliseconds pollTime{200};
constexpr std::chrono::milliseconds signingTime{500};

// A lock file is signed as soon as it is made: one that nobody has signed for a while belongs to a
// process that was killed in between.
void removeUnsignedLock(const QString& lockPath)
{
    const QFileInfo lock(lockPath);
    const qint64 age = lock.lastModified().msecsTo(QDateTime::currentDateTime());
    if (lock.exists() && lock.size() == 0 &&
        qAbs(age) > signingTime.count()) { // a clock may have been set back since
        QFile::remove(lockPath);
    }
}

// The toolkit removes an ended process's lock under a second one, which can be left over as well.
void removeUnsignedLocks(const QString& lockPath)
{
    removeUnsignedLock(lockPath);
    removeUnsignedLock(lockPath + QLatin1String(".rmlock"));
}

bool isSignedByThisProcess(const QString& lockPath)
{
    qint64 process = 0;
    QString host;
    QString program;
    return QFileInfo::exists(lockPath) &&
           QLockFile(lockPath).getLockInfo(&process, &host, &program) &&
           process == QCoreApplication::applicationPid();
}

} // namespace

bool canTakeToolkitLock(const QString& path, QDeadlineTimer deadline)
{
    const QString lockPath = path + QLatin1String(".lock");
    const QFileInfo inTheWay(lockPath);
    if (inTheWay.isSymLink() || (inTheWay.exists() && !inTheWay.isFile())) {
        return false;
    }
    removeUnsignedLocks(lockPath);
    QLockFile probe(lockPath);
    while (!probe.tryLock(
        static_cast<int>(std::min<qint64>(pollTime.count(), deadline.remainingTime())))) {
        if (probe.error() != QLockFile::LockFailedError || deadline.hasExpired()) {
            return false;
        }
        removeUnsignedLocks(lockPath);
    }
    probe.unlock();
    // A disk that has just become read-only keeps what was to be removed.
    return !isSignedByThisProcess(lockPath);
}

} // namespace kestrel
