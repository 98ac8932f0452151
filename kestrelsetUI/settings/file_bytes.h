/// @file
/// Memory for the bytes of a whole file.
#pragma once

#include <QByteArray>

#include <cstddef>
#include <memory>

namespace kestrel {

/// Comes straight from the system. A block of this size out of the heap would have the allocator
/// first put together all the small ones that the toolkit has just given back and is about to take
/// again, which takes longer than all that a save looks at.
class FileBytes
{
public:
    FileBytes() = default;
    /// @param size how many zeros to begin with
    /// @throws std::bad_alloc
    explicit FileBytes(int size);

    char* data() { return memory.get(); }
    int size() const { return view.size(); }
    /// Keeps the first @p size bytes.
    void truncate(int size);

    /// @return a look at the bytes, which ends with this object.
    const QByteArray& bytes() const { return view; }

private:
    struct Unmap
    {
        std::size_t size;
        void operator()(char* pages) const;
    };

    std::unique_ptr<char, Unmap> memory;
    QByteArray view;
};

} // namespace kestrel
