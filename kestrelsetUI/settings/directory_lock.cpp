#include "settings/directory_lock.h"

#include <QFile>

#include <cerrno>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace kestrel {

namespace {

constexpr std::chrono::milliseconds pollInterval{5};

} // namespace

DirectoryLock::DirectoryLock(const QString& directory, std::chrono::milliseconds patience)
    : descriptor(
          ::open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (descriptor < 0) {
        return;
    }
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            break;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return;
        }
        std::this_thread::sleep_for(pollInterval);
    }
    held = true;
}

DirectoryLock::~DirectoryLock()
{
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

} // namespace kestrel
