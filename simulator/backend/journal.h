#pragma once

#include <string>
#include <string_view>

namespace kestrel::sim {

/// A text file with one line for each thing a host did to the scanner. Lines are appended whole, so
/// that several processes may write to one file.
class Journal
{
public:
    /// @param path the file; empty for a journal that keeps nothing
    explicit Journal(const std::string& path);
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;
    Journal(Journal&&) = delete;
    Journal& operator=(Journal&&) = delete;

    /// Appends @p line. May be called from a signal handler, as sane_cancel may.
    void write(std::string_view line) noexcept;

private:
    int file_ = -1;
};

} // namespace kestrel::sim
