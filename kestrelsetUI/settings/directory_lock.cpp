#include "settings/directory_lock.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace kestrel {

namespace {

constexpr std::chrono::milliseconds pollInterval{5};

} // namespace

DirectoryLock DirectoryLock::ofFile(const QString& path, QDeadlineTimer deadline)
{
    const QString real = QFileInfo(path).canonicalFilePath();
    return {QFileInfo(real.isEmpty() ? path : real).absolutePath(), deadline};
}

DirectoryLock::DirectoryLock(const QString& directory, QDeadlineTimer deadline)
    : descriptor(
          ::open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (descriptor < 0) {
        return;
    }
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            break;
        }
        if (deadline.hasExpired()) {
            return;
        }
        std::this_thread::sleep_for(pollInterval);
    }
    held = true;
}

DirectoryLock::~DirectoryLock()
{
    if (descriptor >= 0) {
        ::flock(descriptor, LOCK_UN); // a child that another thread has forked holds it as well
        ::close(descriptor);
    }
}

} // namespace kestrel
