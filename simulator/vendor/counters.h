#pragma once

#include <cstdint>
#include <cstdlib>

namespace kestrel::sim {

/// How much the simulated scanner has worked, as its memory tells.
struct Counters
{
    std::uint32_t rollers = 12345;
    std::uint32_t flatbedScans = 678;
};

/// The counters; KESTREL_SIM_NVM replaces them by "<rollers>:<flatbed scans>".
inline Counters readCounters()
{
    Counters counters;
    const char* const text = std::getenv("KESTREL_SIM_NVM");
    if (text != nullptr) {
        char* rest = nullptr;
        counters.rollers = static_cast<std::uint32_t>(std::strtoul(text, &rest, 10));
        if (*rest == ':') {
            counters.flatbedScans = static_cast<std::uint32_t>(std::strtoul(rest + 1, nullptr, 10));
        }
    }
    return counters;
}

} // namespace kestrel::sim
