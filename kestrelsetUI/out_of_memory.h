/// @file
/// What a slot does when there is no memory for it.
#pragma once

#include <new>

namespace kestrel {

/// Runs the body of a slot; it ends where memory runs out. The toolkit that has called the slot is
/// not made for exceptions: none may pass through it.
template <typename Body>
void unlessOutOfMemory(Body body)
{
    try {
        body();
    } catch (const std::bad_alloc&) { // the controls stay as far as they have come
    }
}

} // namespace kestrel
