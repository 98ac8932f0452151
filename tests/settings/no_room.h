/// @file
/// Disks without room, and files that may not grow.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <gtest/gtest.h>

#include <algorithm>

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace kestrel::test {

constexpr int pages = 16;
constexpr int pageSize = 4096;

inline void writeText(const char* path, const QByteArray& text)
{
    QFile file(QString::fromLatin1(path));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path;
    ASSERT_EQ(file.write(text), text.size());
}

/// Mounts a file system of sixteen pages on @p folder, visible to this process only.
inline void mountTinyDisk(const QString& folder)
{
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    if (user == 0) {
        ASSERT_EQ(::unshare(CLONE_NEWNS), 0) << "the test needs mount namespaces";
    } else {
        ASSERT_EQ(::unshare(CLONE_NEWUSER | CLONE_NEWNS), 0) << "the test needs user namespaces";
        writeText("/proc/self/setgroups", "deny");
        writeText("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1");
        writeText("/proc/self/gid_map", "0 " + QByteArray::number(group) + " 1");
    }
    ASSERT_EQ(::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
    ASSERT_EQ(::mount("tiny", QFile::encodeName(folder).constData(), "tmpfs", 0, "size=64k"), 0);
}

/// Fills the disk with a file "filler" until @p freePages are left.
inline void fill(const QString& folder, int freePages)
{
    QFile all(folder + QStringLiteral("/filler"));
    ASSERT_TRUE(all.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    const QByteArray page(pageSize, 'x');
    int written = 0;
    while (all.write(page) == page.size()) {
        ++written;
    }
    ASSERT_LE(written, pages);
    ASSERT_TRUE(all.resize(static_cast<qint64>(std::max(written - freePages, 0)) * pageSize));
}

/// No file of this process grows beyond @p bytes from now on.
inline void limitFiles(rlim_t bytes)
{
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    limit.rlim_cur = bytes;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
}

/// No file of this process may grow beyond this size while the object lives.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
        const rlimit during{bytes, before.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &during), 0);
    }
    ~FileSizeLimit() { EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0); }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit before{};
};

} // namespace kestrel::test
