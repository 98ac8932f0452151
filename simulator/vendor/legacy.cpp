// The driver library of older models: one call gives the memory record.
#include <array>
#include <cstdint>
#include <cstring>

#include "counters.h"

/// Copies the record of 16 bytes, rollers first and flatbed scans last, to @p record.
/// @return whether it was read
extern "C" __attribute__((visibility("default"))) bool ReadNVMData(void* record)
{
    if (record == nullptr) {
        return false;
    }
    const kestrel::sim::Counters counters = kestrel::sim::readCounters();
    std::array<std::uint32_t, 4> words{counters.rollers, 0, 0, counters.flatbedScans};
    std::memcpy(record, words.data(), sizeof words);
    return true;
}
