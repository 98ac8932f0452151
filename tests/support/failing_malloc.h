/// @file
/// A program linked with this has an allocation fail, its own or any library's. Not under a
/// sanitizer, which has a malloc of its own.
#pragma once

namespace kestrel::test {

/// The allocations of the program, all libraries' included.
struct Allocations
{
    static inline bool isCounting = false;
    static inline long counted = 0; ///< while that was so
    static inline long failing = 0; ///< the number of the one that fails; 0: none

    static bool fails();
};

} // namespace kestrel::test
