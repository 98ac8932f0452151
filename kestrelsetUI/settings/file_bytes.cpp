#include "settings/file_bytes.h"

#include <new>

#include <sys/mman.h>

namespace kestrel {

namespace {

char* newPages(std::size_t size)
{
    void* const pages =
        ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) {
        throw std::bad_alloc();
    }
    return static_cast<char*>(pages);
}

} // namespace

FileBytes::FileBytes(int size)
{
    // One more, as behind every QByteArray; a mapping can't be empty either.
    const std::size_t length = static_cast<std::size_t>(size) + 1;
    memory = {newPages(length), Unmap{length}};
    view = QByteArray::fromRawData(memory.get(), size);
}

void FileBytes::truncate(int size)
{
    view = QByteArray::fromRawData(memory.get(), size);
}

void FileBytes::Unmap::operator()(char* pages) const
{
    ::munmap(pages, size);
}

} // namespace kestrel
