/// @file
/// The scanner vendor's driver library, as far as wear counters need it.
#pragma once

#include <QString>

#include <array>
#include <cstdint>

namespace kestrel {

/// Wear counters as the scanner's memory has them.
struct RollerCounters
{
    std::uint32_t separationRoller = 0;
    std::uint32_t feedRoller = 0;
    std::uint32_t flatbedScans = 0;
};

/// The functions of a vendor library. Everything is synchronous and on the caller's thread.
///
/// A library is opened, searched and closed again at once; it is told to stay mapped, so that what
/// was found stays callable. What a later library lacks keeps what an earlier one gave.
class VendorDriver
{
public:
    /// Takes the functions of the library at @p path; a file that is missing or no library changes
    /// nothing.
    void load(const QString& path);

    /// Reads the counters; whatever can't be read stays as it is in @p counters.
    void readCounters(RollerCounters& counters);

    bool hasLegacyReader() const noexcept { return readNvmLegacy_ != nullptr; }
    bool hasDriver() const noexcept { return initializeDriver_ != nullptr; }

private:
    /// What AVReadNVMData fills.
    struct Request
    {
        void* data;
        std::uint32_t size;
    };

    // The vendor's prototypes, as far as they are relied on; 0 is success.
    using DriverCall = int (*)(std::int32_t driver);
    using InitializeDevice = int (*)(std::int32_t driver, int index, std::uint32_t* device);
    using ReadNvm = int (*)(std::int32_t driver, std::uint32_t* device, Request* request, int zero,
                            std::uint32_t* size);
    using MemFree = int (*)(void* memory);
    using ReadNvmLegacy = int (*)(void* record); // only the low byte of the answer counts

    void readLegacy(RollerCounters& counters) const;
    void readDriver(RollerCounters& counters);

    static constexpr std::int32_t kDriverId = 292;

    DriverCall initializeDriver_ = nullptr;
    DriverCall terminateDriver_ = nullptr;
    InitializeDevice initializeDevice_ = nullptr;
    ReadNvm readNvm_ = nullptr;
    MemFree memFree_ = nullptr; // found, never called: nothing here is the driver's to free
    ReadNvmLegacy readNvmLegacy_ = nullptr;
    // The first word is the device; the second is room for a driver that writes a pointer.
    alignas(std::uint64_t) std::array<std::uint32_t, 2> device_{};
};

} // namespace kestrel
