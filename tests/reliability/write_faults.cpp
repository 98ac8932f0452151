#include "reliability/write_faults.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct Plan
{
    std::string folder;
    int n = 0;
    kestrel::test::WriteFault fault{};
    bool armed = false;
    int count = 0;
    bool failed = false;
};

Plan& plan()
{
    static Plan the;
    return the;
}

template <typename Function>
Function* real(Function* /*ours*/, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool isBelow(const char* path)
{
    const std::string& folder = plan().folder;
    return path != nullptr && std::strncmp(path, folder.c_str(), folder.size()) == 0;
}

bool isBelow(int descriptor)
{
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    return readlink(link.c_str(), path.data(), path.size() - 1) > 0 && isBelow(path.data());
}

/// Whether a change of @p place has to fail; sets errno then.
template <typename Place>
bool fails(Place place, const char* function)
{
    Plan& now = plan();
    const bool meant = now.fault.only == nullptr || std::strcmp(now.fault.only, function) == 0;
    if (!now.armed || !meant || !isBelow(place)) {
        return false;
    }
    const int number = ++now.count;
    const bool hit = now.n > 0 && (number == now.n || (now.fault.lasting && number > now.n));
    if (hit) {
        now.failed = true;
        errno = now.fault.error;
    }
    return hit;
}

bool writes(int flags)
{
    return (flags & O_ACCMODE) != O_RDONLY || (flags & (O_CREAT | O_TRUNC)) != 0;
}

mode_t modeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

#define OURS __attribute__((visibility("default")))

extern "C" {

OURS int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return writes(flags) && fails(path, __func__) ? -1 : real(&open, "open")(path, flags, mode);
}

OURS int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return writes(flags) && fails(path, __func__) ? -1 : real(&open64, "open64")(path, flags, mode);
}

OURS ssize_t write(int descriptor, const void* data, size_t size)
{
    const auto function = real(&write, "write");
    if (!fails(descriptor, __func__)) {
        return function(descriptor, data, size);
    }
    const bool first = plan().count == plan().n;
    return plan().fault.torn && first && size > 1 ? function(descriptor, data, size / 2) : -1;
}

OURS int ftruncate64(int descriptor, off64_t size) noexcept
{
    return fails(descriptor, __func__) ? -1 : real(&ftruncate64, "ftruncate64")(descriptor, size);
}

OURS int rename(const char* from, const char* to) noexcept
{
    return fails(to, __func__) ? -1 : real(&rename, "rename")(from, to);
}

OURS int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
                   unsigned int flags) noexcept
{
    return fails(to, __func__)
               ? -1
               : real(&renameat2, "renameat2")(fromFolder, from, toFolder, to, flags);
}

OURS int link(const char* from, const char* to) noexcept
{
    return fails(to, __func__) ? -1 : real(&link, "link")(from, to);
}

OURS int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept
{
    return fails(to, __func__) ? -1
                               : real(&linkat, "linkat")(fromFolder, from, toFolder, to, flags);
}

OURS int unlink(const char* path) noexcept
{
    return fails(path, __func__) ? -1 : real(&unlink, "unlink")(path);
}

OURS int chmod(const char* path, mode_t mode) noexcept
{
    return fails(path, __func__) ? -1 : real(&chmod, "chmod")(path, mode);
}

OURS int mkdir(const char* path, mode_t mode) noexcept
{
    return fails(path, __func__) ? -1 : real(&mkdir, "mkdir")(path, mode);
}

} // extern "C"

namespace kestrel::test {

WriteFaults::WriteFaults(const std::string& folder, int n, WriteFault fault)
{
    plan() = {folder, n, fault, true, 0, false};
}

WriteFaults::~WriteFaults()
{
    plan().armed = false;
}

int WriteFaults::count()
{
    return plan().count;
}

bool WriteFaults::hasFailed()
{
    return plan().failed;
}

} // namespace kestrel::test
