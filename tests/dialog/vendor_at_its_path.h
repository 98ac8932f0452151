/// @file
/// Vendor libraries at their fixed path. The path is the program's own: it leaves the mounts of
/// everybody else and puts an empty disk over /usr/local.
#pragma once

#include "dialog_fixture.h"
#include "scanner/vendor_stub.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>

namespace kestrel::test {

inline void writeText(const char* path, const std::string& text)
{
    const int file = ::open(path, O_WRONLY | O_CLOEXEC);
    if (file >= 0) {
        const auto written = ::write(file, text.data(), text.size());
        static_cast<void>(written); // the mount fails where this did
        ::close(file);
    }
}

/// @return 0, or the reason why this process has no folder of its own for vendor libraries
inline int leaveTheSystemsFolders()
{
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    const int what = user == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS;
    if (::unshare(what) != 0) {
        return errno;
    }
    if (user != 0) {
        writeText("/proc/self/setgroups", "deny");
        writeText("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
        writeText("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
    }
    if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount("vendor", "/usr/local", "tmpfs", 0, "size=64m") != 0) {
        return errno;
    }
    return 0;
}

// Before main(), because a process with threads may not do it.
inline const int privateFolders = leaveTheSystemsFolders();

class VendorAtItsPath : public DialogTest
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(privateFolders, 0) << std::strerror(privateFolders);
        ASSERT_TRUE(QDir().mkpath(QStringLiteral("/usr/local/lib64/sane")));
    }
    void TearDown() override { destroy(); } // before the scanner

    static QString pathOf(const char* device)
    {
        return QStringLiteral("/usr/local/lib64/sane/%1_x64.so.1.0").arg(QLatin1String(device));
    }

    /// Installs a library for devices of this name. Names are not used twice: what was opened once
    /// stays mapped.
    /// @return what the library is told and notes; it counts 100, 101, 102... in its record
    VendorStub& install(const char* library, const char* device)
    {
        EXPECT_TRUE(QFile::copy(QFile::decodeName(library), pathOf(device))) << device;
        void* const opened = ::dlopen(QFile::encodeName(pathOf(device)).constData(), RTLD_LAZY);
        EXPECT_NE(opened, nullptr) << ::dlerror();
        auto* const stub = static_cast<VendorStub*>(::dlsym(opened, "vendorStub"));
        for (std::uint32_t i = 0; i < 8; ++i) {
            stub->words[i] = 100 + i;
        }
        return *stub; // stays: the library was not closed
    }

    void expectCounters(std::uint32_t separation, std::uint32_t feed, std::uint32_t flatbed)
    {
        EXPECT_EQ(dialog().counters.separation_roller_count, separation);
        EXPECT_EQ(dialog().counters.feed_roller_count, feed);
        EXPECT_EQ(dialog().counters.flatbed_scan_count, flatbed);
    }
    /// Expects the information tab of a feeder with a flatbed to end so.
    void expectShown(std::uint32_t rollers, std::uint32_t flatbed)
    {
        dialog().setScannerInfo();
        expectCounters(rollers, rollers, flatbed);
        const QString lines = QStringLiteral("自动分纸滚轮/垫片次数：%1\n"
                                             "自动进纸滚轮次数：%1\n平台扫描次数：%2\n")
                                  .arg(rollers)
                                  .arg(flatbed);
        EXPECT_EQ(information(),
                  dialog().system_text + QStringLiteral("序列号:  KS-2024-0042\n") + lines);
    }

    FakeScanner scanner = fullScanner();
};

} // namespace kestrel::test
