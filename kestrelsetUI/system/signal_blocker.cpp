#include "system/signal_blocker.h"

#include <ctime>

namespace kestrel {

SignalBlocker::SignalBlocker(int signal)
{
    sigemptyset(&mask);
    sigaddset(&mask, signal);
    blocked = !isPending() && ::pthread_sigmask(SIG_BLOCK, &mask, &before) == 0;
}

SignalBlocker::~SignalBlocker()
{
    if (!blocked) {
        return;
    }
    if (isPending()) {
        const timespec noWait{};
        ::sigtimedwait(&mask, nullptr, &noWait);
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

bool SignalBlocker::isPending() const
{
    sigset_t pending{};
    sigset_t both{};
    return ::sigpending(&pending) == 0 && ::sigandset(&both, &pending, &mask) == 0 &&
           ::sigisemptyset(&both) == 0;
}

} // namespace kestrel
