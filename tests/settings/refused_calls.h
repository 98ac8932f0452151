/// @file
/// System calls that are refused to a process, or end it.
#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

namespace kestrel::test {

/// Has the kernel look at each call of this process from now on.
template <std::size_t size>
void filterCalls(sock_filter (&program)[size])
{
    const sock_fprog filter{static_cast<unsigned short>(size), program};
    ASSERT_EQ(::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
    ASSERT_EQ(::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter), 0);
}

/// From now on this process finds no second names on any file system, and no files without a name.
/// @param diesOnRename whether putting a file in the place of another one ends the process.
inline void refuseSecondNames(bool diesOnRename)
{
    constexpr std::uint32_t temporary = O_TMPFILE & ~O_DIRECTORY;
    const std::uint32_t onRename = diesOnRename ? SECCOMP_RET_KILL_PROCESS : SECCOMP_RET_ALLOW;
    const auto jumpIf = [](std::uint32_t number, std::uint8_t yes) {
        return sock_filter{BPF_JMP | BPF_JEQ | BPF_K, yes, 0, number};
    };
    sock_filter program[] = {
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
#ifdef SYS_link
        jumpIf(SYS_link, 8),
#else
        jumpIf(SYS_linkat, 8),
#endif
        jumpIf(SYS_linkat, 7),
#ifdef SYS_rename
        jumpIf(SYS_rename, 5),
#else
        jumpIf(SYS_renameat, 5),
#endif
        jumpIf(SYS_openat, 1),
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, args[2])},
        {BPF_JMP | BPF_JSET | BPF_K, 2, 0, temporary},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
        {BPF_RET | BPF_K, 0, 0, onRename},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | EOPNOTSUPP},
    };
    filterCalls(program);
}

/// From now on this process can remove no file, as on a disk that is read-only.
inline void refuseRemovals()
{
    sock_filter program[] = {
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
#ifdef SYS_unlink
        {BPF_JMP | BPF_JEQ | BPF_K, 2, 0, SYS_unlink},
#endif
        {BPF_JMP | BPF_JEQ | BPF_K, 1, 0, SYS_unlinkat},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | EROFS},
    };
    filterCalls(program);
}

/// From now on this process finds no file system that can promise not to replace a file.
inline void refuseRenamingWithoutReplacing()
{
    sock_filter program[] = {
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
        {BPF_JMP | BPF_JEQ | BPF_K, 1, 0, SYS_renameat2},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, args[4])},
        {BPF_JMP | BPF_JSET | BPF_K, 1, 0, RENAME_NOREPLACE},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | EINVAL},
    };
    filterCalls(program);
}

} // namespace kestrel::test
