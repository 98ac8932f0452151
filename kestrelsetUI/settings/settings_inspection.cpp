#include "settings/settings_inspection.h"

#include "settings/ini_measures.h"
#include "settings/ini_scanner.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrel {

namespace {

// More than the largest file of ours has: its lines are about twenty bytes long. The toolkit reads
// so many in one or two seconds.
constexpr qint64 mostLines = 1'500'000;
constexpr qint64 longestName = 4096;
constexpr qint64 mostNameWork = 64LL * 1024 * 1024;

// The toolkit's reader takes minutes for some files of a megabyte.
bool isQuicklyRead(const QByteArray& data)
{
    const IniMeasures measures = measureIni(data);
    return measures.lines <= mostLines && measures.longestName <= longestName &&
           measures.nameWork <= mostNameWork;
}

FileState stateWithoutFile(const QByteArray& name)
{
    struct stat link
    {
    };
    const bool isDanglingLink = ::lstat(name.constData(), &link) == 0;
    return isDanglingLink ? FileState::Foreign : FileState::Missing;
}

// At most so many bytes as the file has now.
bool readAll(int descriptor, FileBytes& content)
{
    struct stat status
    {
    };
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        return false;
    }
    content =
        FileBytes(static_cast<int>(std::min<qint64>(status.st_size, largestSettingsFile + 1)));
    int filled = 0;
    while (filled < content.size()) {
        const ssize_t count = ::read(descriptor, content.data() + filled,
                                     static_cast<std::size_t>(content.size() - filled));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return false;
        }
        if (count == 0) {
            content.truncate(filled);
            break;
        }
        filled += static_cast<int>(count);
    }
    return true;
}

bool readAll(const QByteArray& name, FileBytes& content)
{
    // Between the look and the opening a pipe may have taken the place: do not wait for its writer.
    const int descriptor = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    const bool isRead = readAll(descriptor, content);
    ::close(descriptor);
    return isRead;
}

} // namespace

FileState inspectSettingsFile(const QString& path, FileBytes* content)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status
    {
    };
    if (::stat(name.constData(), &status) != 0) {
        return errno == ENOENT || errno == ENOTDIR ? stateWithoutFile(name) : FileState::Foreign;
    }
    if (!S_ISREG(status.st_mode)) {
        return FileState::Foreign;
    }
    if (status.st_size > largestSettingsFile) {
        return FileState::Refused;
    }
    FileBytes read;
    if (!readAll(name, read)) {
        return FileState::Foreign;
    }
    if (read.size() > largestSettingsFile || !isQuicklyRead(read.bytes()) ||
        holdsSerializedObject(read.bytes())) {
        return FileState::Refused;
    }
    if (content != nullptr) {
        *content = std::move(read);
    }
    return FileState::Sound;
}

} // namespace kestrel
