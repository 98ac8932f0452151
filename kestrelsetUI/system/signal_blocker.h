/// @file
/// Signals that would end the host because of what happens on a disk or in a network.
#pragma once

#include <QtGlobal>

#include <csignal>

namespace kestrel {

/// For its own lifetime a signal does not reach this thread; one that came meanwhile is dropped. A
/// signal that was already pending stays so.
///
/// With SIGPIPE: a call to a network scanner whose server has died fails, instead of ending the
/// host.
class SignalBlocker
{
public:
    explicit SignalBlocker(int signal);
    ~SignalBlocker();
    Q_DISABLE_COPY_MOVE(SignalBlocker)

private:
    bool isPending() const;

    sigset_t mask{};
    sigset_t before{};
    bool blocked = false;
};

} // namespace kestrel
