/// @file
/// Lets writes to the disk fail. The file functions of the C library are defined once more in this
/// program, in front of everything that calls them, the toolkit included.
#pragma once

#include <QtGlobal>

#include <string>

namespace kestrel::test {

/// How a write fails.
struct WriteFault
{
    int error;                  ///< errno
    bool lasting;               ///< every later one fails as well
    bool torn;                  ///< half of the data is written before
    const char* only = nullptr; ///< the one function that fails and is counted; null: all of them
};

/// While it lives, number @p n of what changes something below a folder fails: opening for writing,
/// writing, truncating, linking, renaming, removing, changing the mode, making a folder. From 1;
/// with 0 all is well and is counted.
class WriteFaults
{
public:
    WriteFaults(const std::string& folder, int n, WriteFault fault);
    ~WriteFaults();
    Q_DISABLE_COPY_MOVE(WriteFaults)

    /// @return how many changes were tried so far
    static int count();
    /// @return whether one has failed
    static bool hasFailed();
};

} // namespace kestrel::test
