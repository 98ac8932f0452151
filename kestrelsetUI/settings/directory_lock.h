/// @file
/// One writer at a time in a directory of settings files.
#pragma once

#include <QDeadlineTimer>
#include <QString>

namespace kestrel {

/// Holds the advisory lock of a directory for its own lifetime. The lock lies on the directory
/// itself: it leaves no file behind, and it ends with the process however that ends.
class DirectoryLock
{
public:
    /// Locks the directory that a file lies in, or would lie in. Links to the file are
    /// followed: whoever uses one and whoever uses the file's own name exclude each other.
    /// @param path of the file.
    /// @param deadline how long to wait for another holder; an expired one tries once.
    static DirectoryLock ofFile(const QString& path, QDeadlineTimer deadline);

    /// @param directory path of an existing directory.
    /// @param deadline how long to wait for another holder; an expired one tries once.
    DirectoryLock(const QString& directory, QDeadlineTimer deadline);
    ~DirectoryLock();
    Q_DISABLE_COPY_MOVE(DirectoryLock)

    /// @return false if somebody else kept the lock until the deadline, or there is no such
    /// directory. A file system without such locks counts as locked: its single user is not to be
    /// kept from saving.
    bool isHeld() const noexcept { return held; }

private:
    int descriptor = -1;
    bool held = false;
};

} // namespace kestrel
