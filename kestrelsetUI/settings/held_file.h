/// @file
/// The old settings file, kept while the new one is written.
#pragma once

#include <QByteArray>
#include <QString>

#include <sys/stat.h>

namespace kestrel {

/// Holds a file by a second name, the first free one of "FILE.kestrel-hold",
/// "FILE.kestrel-hold-1", ..., for its own lifetime. At its end the old file comes back, unless the
/// new one was found good; what could not be put back stays held for recover().
/// To be used by one process at a time (see DirectoryLock).
class HeldFile
{
public:
    /// @param path the file; may be missing, and may be a link to the file.
    explicit HeldFile(const QString& path);
    ~HeldFile();
    Q_DISABLE_COPY_MOVE(HeldFile)

    /// @return false if the file could not be held: then it must not be written, either.
    bool isSafe() const noexcept { return safe; }

    /// @return whether the file is still the one that is held, untouched.
    bool isUnchanged() const;

    /// Puts the held file back; a file that was missing at first is removed.
    /// @return false if nothing had to be put back.
    bool restore();

    /// The new file is good: it stays.
    void settle() noexcept { settled = true; }

    /// Settles what a process left behind that was killed while it held @p path: the held file
    /// comes back if the other is empty or cut. A cut one is kept aside (see keepAside()), and so
    /// is a held one that is larger than a file which looks whole.
    static void recover(const QString& path);

private:
    QByteArray file;
    QByteArray hold;
    struct stat before
    {
    };
    bool existed = false;
    bool safe = false;
    bool settled = false;
};

} // namespace kestrel
