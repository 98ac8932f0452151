#include "journal.h"

#include <array>

#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

namespace kestrel::sim {

Journal::Journal(const std::string& path)
{
    if (!path.empty()) {
        file_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    }
}

Journal::~Journal()
{
    if (file_ >= 0) {
        ::close(file_);
    }
}

void Journal::write(std::string_view line) noexcept
{
    if (file_ < 0) {
        return;
    }
    char newline = '\n';
    const std::array<iovec, 2> parts{
        {{const_cast<char*>(line.data()), line.size()}, {&newline, 1}}};
    // A full disk costs the journal a line, never the scan.
    static_cast<void>(::writev(file_, parts.data(), parts.size()) < 0);
}

} // namespace kestrel::sim
