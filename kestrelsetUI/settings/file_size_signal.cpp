#include "settings/file_size_signal.h"

#include <ctime>

namespace kestrel {

namespace {

sigset_t fileSizeSignal()
{
    sigset_t mask{};
    sigemptyset(&mask);
    sigaddset(&mask, SIGXFSZ);
    return mask;
}

bool isPending()
{
    sigset_t pending{};
    return ::sigpending(&pending) == 0 && sigismember(&pending, SIGXFSZ) == 1;
}

} // namespace

FileSizeSignalBlocker::FileSizeSignalBlocker()
{
    const sigset_t mask = fileSizeSignal();
    blocked = !isPending() && ::pthread_sigmask(SIG_BLOCK, &mask, &before) == 0;
}

FileSizeSignalBlocker::~FileSizeSignalBlocker()
{
    if (!blocked) {
        return;
    }
    if (isPending()) {
        const sigset_t mask = fileSizeSignal();
        const timespec noWait{};
        ::sigtimedwait(&mask, nullptr, &noWait);
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

} // namespace kestrel
