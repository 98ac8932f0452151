#include "system/library_file.h"

#include <QFile>
#include <QFileInfo>

#include <cstring>
#include <link.h>

namespace kestrel {
namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);

constexpr unsigned char kOwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

template <typename Record>
bool read(QFile& file, Record& record)
{
    return file.read(reinterpret_cast<char*>(&record), sizeof record) == sizeof record;
}

bool isLibrary(const Header& header)
{
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
           header.e_ident[EI_CLASS] == kOwnClass && header.e_phentsize == sizeof(Segment);
}

/// The sum could overflow: both numbers are the file's own.
bool reachesBeyond(quint64 size, quint64 offset, quint64 length)
{
    return offset > size || length > size - offset;
}

} // namespace

bool isWholeLibrary(const QString& path)
{
    if (!QFileInfo(path).isFile()) {
        return false;
    }
    QFile file(path);
    Header header{};
    if (!file.open(QIODevice::ReadOnly) || !read(file, header) || !isLibrary(header)) {
        return false;
    }
    if (!file.seek(static_cast<qint64>(header.e_phoff))) {
        return false;
    }
    const auto size = static_cast<quint64>(file.size());
    for (int i = 0; i < header.e_phnum; ++i) {
        Segment segment{};
        if (!read(file, segment)) {
            return false;
        }
        if (segment.p_type == PT_LOAD && reachesBeyond(size, segment.p_offset, segment.p_filesz)) {
            return false;
        }
    }
    return true;
}

} // namespace kestrel
