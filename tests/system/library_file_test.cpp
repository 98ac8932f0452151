// Which files are shared libraries with nothing cut off.
#include <system/library_file.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstring>
#include <fcntl.h>
#include <link.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace kestrel;

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using Offset = decltype(Segment::p_offset);

constexpr Offset highest = ~Offset{0};

/// A file of 1000 bytes whose table of two segments stands behind its header.
class LibraryFile : public testing::Test
{
protected:
    LibraryFile()
    {
        std::memcpy(m_header.e_ident, ELFMAG, SELFMAG);
        m_header.e_ident[EI_CLASS] = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
        m_header.e_phoff = sizeof(Header);
        m_header.e_phentsize = sizeof(Segment);
        m_header.e_phnum = 2;
        m_segments[0].p_type = PT_LOAD;
        m_segments[0].p_filesz = 500;
        m_segments[1].p_type = PT_LOAD;
        m_segments[1].p_offset = 500;
        m_segments[1].p_filesz = 400;
    }

    QString path() const { return m_dir.filePath(QStringLiteral("library.so")); }

    bool isWhole(std::size_t size = 1000) const
    {
        std::vector<char> bytes(size + sizeof m_segments + sizeof m_header);
        std::memcpy(bytes.data(), &m_header, sizeof m_header);
        std::memcpy(bytes.data() + sizeof m_header, m_segments, sizeof m_segments);
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes.data(), static_cast<qint64>(size)), static_cast<qint64>(size));
        file.close();
        return isWholeLibrary(path());
    }

    QTemporaryDir m_dir;
    Header m_header{};
    Segment m_segments[2]{};
};

} // namespace

TEST_F(LibraryFile, IsWholeDownToTheEndOfItsLastSegment)
{
    for (std::size_t size = 0; size <= 1000; size += 10) {
        EXPECT_EQ(isWhole(size), size >= 900) << size;
    }
    EXPECT_FALSE(isWhole(899));
}

TEST_F(LibraryFile, HasItsSegmentsInAnyOrder)
{
    std::swap(m_segments[0], m_segments[1]);
    EXPECT_TRUE(isWhole(900));
    EXPECT_FALSE(isWhole(899));
}

TEST_F(LibraryFile, MayLackWhatIsNotMapped)
{
    m_segments[1].p_type = PT_NOTE;
    EXPECT_TRUE(isWhole(500));
    EXPECT_FALSE(isWhole(499));
}

TEST_F(LibraryFile, MayTakeMoreMemoryThanFile)
{
    m_segments[1].p_memsz = highest;
    EXPECT_TRUE(isWhole());
}

TEST_F(LibraryFile, WithASegmentBehindItsEndIsCut)
{
    for (const Offset offset : {Offset{601}, Offset{1000}, Offset{1001}, highest - 399,
                                highest - 400, highest / 2 + 1, highest}) {
        m_segments[1].p_offset = offset;
        EXPECT_FALSE(isWhole()) << offset;
    }
}

TEST_F(LibraryFile, WithAnEndlessSegmentIsCut)
{
    for (const Offset size :
         {Offset{501}, highest - 500, highest - 499, highest / 2 + 1, highest}) {
        m_segments[1].p_filesz = size;
        EXPECT_FALSE(isWhole()) << size;
    }
}

TEST_F(LibraryFile, WithATableThatItDoesNotHoldIsCut)
{
    const Offset table = sizeof m_segments;
    for (const Offset offset : {1000 - table + 1, Offset{1000}, Offset{1001}, highest - table,
                                highest - table + 1, highest / 2 + 1, highest}) {
        m_header.e_phoff = offset;
        EXPECT_FALSE(isWhole()) << offset;
    }
    m_header.e_phoff = sizeof(Header);
    m_header.e_phnum = 0xffff;
    EXPECT_FALSE(isWhole());
}

TEST_F(LibraryFile, OfAnotherKindIsNone)
{
    const Header good = m_header;
    m_header.e_ident[EI_CLASS] = sizeof(void*) == 8 ? ELFCLASS32 : ELFCLASS64;
    EXPECT_FALSE(isWhole());
    m_header = good;
    m_header.e_ident[EI_MAG3] = 'f';
    EXPECT_FALSE(isWhole());
    m_header = good;
    m_header.e_phentsize = sizeof(Segment) - 1;
    EXPECT_FALSE(isWhole());
    m_header = good;
    EXPECT_TRUE(isWhole());
}

TEST_F(LibraryFile, IsNoFolderAndNotMissing)
{
    EXPECT_FALSE(isWholeLibrary(m_dir.path()));
    EXPECT_FALSE(isWholeLibrary(m_dir.filePath(QStringLiteral("missing.so"))));
    EXPECT_FALSE(isWholeLibrary(QString()));
}

TEST_F(LibraryFile, IsFoundBehindALink)
{
    ASSERT_TRUE(isWhole());
    const QString link = m_dir.filePath(QStringLiteral("link.so"));
    ASSERT_TRUE(QFile::link(path(), link));
    EXPECT_TRUE(isWholeLibrary(link));
}

// This very program is loaded the same way.
TEST_F(LibraryFile, IsWholeWhenItIsARealOne)
{
    EXPECT_TRUE(isWholeLibrary(QStringLiteral("/proc/self/exe")));
}

// Somebody else's pipe is not read, nor waited for: what stands in it stays there.
TEST_F(LibraryFile, IsNoPipe)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    const int pipe = ::open(QFile::encodeName(path()).constData(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(pipe, 0);
    const std::vector<char> bytes(32768);
    ASSERT_EQ(::write(pipe, bytes.data(), bytes.size()), 32768);
    EXPECT_FALSE(isWholeLibrary(path()));
    int left = 0;
    EXPECT_EQ(::ioctl(pipe, FIONREAD, &left), 0);
    EXPECT_EQ(left, 32768);
    ::close(pipe);
}
