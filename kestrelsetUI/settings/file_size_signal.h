/// @file
/// Writing under a limit on the size of files.
#pragma once

#include <QtGlobal>

#include <csignal>

namespace kestrel {

/// For its own lifetime, a write beyond the limit on the size of files fails in this thread instead
/// of ending the host. A signal that was already pending stays so.
class FileSizeSignalBlocker
{
public:
    FileSizeSignalBlocker();
    ~FileSizeSignalBlocker();
    Q_DISABLE_COPY_MOVE(FileSizeSignalBlocker)

private:
    sigset_t before{};
    bool blocked = false;
};

} // namespace kestrel
