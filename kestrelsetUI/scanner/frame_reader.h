/// @file
/// Reads one frame of a scan that has been started.
#pragma once

#include <sane/sane.h>

#include <cstddef>
#include <vector>

namespace kestrel {

/// The largest frame that is read: 256 MiB.
constexpr std::size_t kMaxFrameBytes = std::size_t{256} << 20U;

/// A frame as it came.
struct Frame
{
    SANE_Parameters parameters{}; ///< as the scanner said before the first byte
    std::vector<unsigned char> bytes;
    std::size_t received = 0; ///< how much of `bytes` came from the scanner, the rest is 0
    int lines() const;        ///< the lines announced or, where none were, those that arrived
};

/// Reads until the frame is full, the scanner fails or nothing more comes. What arrived counts,
/// whatever the reason that no more did.
/// @param handle open device after a successful sane_start(); its own thread only
/// @return the frame; without bytes when the scanner gave no usable parameters or announces more
/// than
///         kMaxFrameBytes
Frame readFrame(SANE_Handle handle);

} // namespace kestrel
