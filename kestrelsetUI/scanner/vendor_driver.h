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
    std::uint32_t separation_roller_count = 0;
    std::uint32_t feed_roller_count = 0;
    std::uint32_t flatbed_scan_count = 0;
};

/// The functions of a vendor library. Everything is synchronous and on the caller's thread.
///
/// A library is opened, searched and closed again at once; it is told to stay mapped, so that what
/// was found stays callable. A library with a driver replaces all functions of the last driver, any
/// other one the legacy reader, with none if it has none; what is not replaced stays.
class VendorDriver
{
public:
    /// Takes the functions of the library at @p path; a file that is missing, cut off or no library
    /// changes nothing.
    void load(const QString& path);

    /// Reads the counters; whatever can't be read stays as it is in @p counters, also when a
    /// function throws.
    void readCounters(RollerCounters& counters);

    bool hasLegacyReader() const noexcept { return vendor_read_nvm_legacy != nullptr; }
    bool hasDriver() const noexcept { return vendor_initialize_driver != nullptr; }

private:
    /// What AVReadNVMData fills.
    struct Request
    {
        void* data;
        std::uint32_t size;
        std::uint32_t beyondSize; ///< padding, but set: a driver may read the size as 64 bits
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

    static constexpr std::int32_t vendor_driver_id = 292;

    DriverCall vendor_initialize_driver = nullptr;
    DriverCall vendor_terminate_driver = nullptr;
    InitializeDevice vendor_initialize_device = nullptr;
    ReadNvm vendor_read_nvm = nullptr;
    MemFree vendor_mem_free = nullptr; // found, never called: nothing here is the driver's to free
    ReadNvmLegacy vendor_read_nvm_legacy = nullptr;
    // The first word is the device; the second is room for a driver that writes a pointer.
    alignas(std::uint64_t) std::array<std::uint32_t, 2> vendor_device{};
};

} // namespace kestrel
