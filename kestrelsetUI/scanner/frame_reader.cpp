#include "scanner/frame_reader.h"

#include <algorithm>

namespace kestrel {
namespace {

constexpr std::size_t kGrowthStep = std::size_t{1} << 20U;
constexpr std::size_t kMaxRead = std::size_t{1} << 30U;

/// Bytes of the whole frame; 0 while the number of lines is unknown.
std::size_t announcedBytes(const SANE_Parameters& parameters)
{
    return parameters.lines > 0 ? static_cast<std::size_t>(parameters.bytes_per_line) *
                                      static_cast<std::size_t>(parameters.lines)
                                : 0;
}

} // namespace

int Frame::lines() const
{
    if (parameters.lines > 0) {
        return parameters.lines;
    }
    return parameters.bytes_per_line > 0
               ? static_cast<int>(received / static_cast<std::size_t>(parameters.bytes_per_line))
               : 0;
}

Frame readFrame(SANE_Handle handle)
{
    Frame frame;
    if (sane_get_parameters(handle, &frame.parameters) != SANE_STATUS_GOOD ||
        frame.parameters.bytes_per_line <= 0 || frame.parameters.pixels_per_line <= 0) {
        return frame;
    }
    const std::size_t announced = announcedBytes(frame.parameters);
    if (announced > kMaxFrameBytes) {
        return frame;
    }
    const std::size_t limit = announced > 0 ? announced : kMaxFrameBytes;
    frame.bytes.resize(announced);
    while (frame.received < limit) {
        if (frame.bytes.size() == frame.received) {
            frame.bytes.resize(std::min(limit, frame.bytes.size() + kGrowthStep));
        }
        const auto room = std::min(frame.bytes.size() - frame.received, kMaxRead);
        SANE_Int length = 0;
        const auto status = sane_read(handle, frame.bytes.data() + frame.received,
                                      static_cast<SANE_Int>(room), &length);
        if (length <= 0 || static_cast<std::size_t>(length) > room) {
            break;
        }
        frame.received += static_cast<std::size_t>(length);
        if (status != SANE_STATUS_GOOD && status != SANE_STATUS_EOF) {
            break;
        }
    }
    return frame;
}

} // namespace kestrel
