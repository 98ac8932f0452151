// The vendor's driver library for the simulated models: the way to the scanner's memory record.
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "counters.h"

namespace {

constexpr std::int32_t knownDriver = 292;
constexpr std::int32_t deviceHandle = 0x4b53;
constexpr std::int32_t failed = 1;

constexpr std::size_t recordSize = 24; ///< all that a caller has to have room for
constexpr std::size_t rollersAt = 8;
constexpr std::size_t flatbedAt = 20;

bool driverIsOpen = false;

/// KESTREL_SIM_VENDOR_FAULT names the call that fails: driver, device or read.
bool isBroken(const char* call)
{
    const char* const fault = std::getenv("KESTREL_SIM_VENDOR_FAULT");
    return fault != nullptr && std::strcmp(fault, call) == 0;
}

} // namespace

extern "C" {

/// What AVReadNVMData fills: the caller's buffer, and how much was written there.
struct AVRequest
{
    void* data;
    std::uint32_t size;
};

/// @return 0, or another number when the driver does not exist
__attribute__((visibility("default"))) std::int32_t AVInitializeDriver(std::int32_t driver)
{
    driverIsOpen = driver == knownDriver && !isBroken("driver");
    return driverIsOpen ? 0 : failed;
}

/// @return 0, also when the driver was not open
__attribute__((visibility("default"))) std::int32_t AVTerminateDriver(std::int32_t)
{
    driverIsOpen = false;
    return 0;
}

/// Writes the handle of the device with number @p index to @p device. There is one, number 0.
__attribute__((visibility("default"))) std::int32_t
AVInitializeDevice(std::int32_t driver, std::int32_t index, std::int32_t* device)
{
    if (!driverIsOpen || driver != knownDriver || index != 0 || device == nullptr ||
        isBroken("device")) {
        return failed;
    }
    *device = deviceHandle;
    return 0;
}

/// Copies the memory record of 24 bytes to @p request's buffer and its length to @p size.
__attribute__((visibility("default"))) std::int32_t AVReadNVMData(std::int32_t driver,
                                                                  const std::int32_t* device,
                                                                  AVRequest* request, std::int32_t,
                                                                  std::uint32_t* size)
{
    const bool ready = driverIsOpen && driver == knownDriver && device != nullptr &&
                       *device == deviceHandle && request != nullptr && request->data != nullptr;
    if (!ready || isBroken("read")) {
        return failed;
    }
    const kestrel::sim::Counters counters = kestrel::sim::readCounters();
    std::array<std::uint8_t, recordSize> record{'K', 'N', 'V', 'M', 1};
    std::memcpy(record.data() + rollersAt, &counters.rollers, sizeof counters.rollers);
    std::memcpy(record.data() + flatbedAt, &counters.flatbedScans, sizeof counters.flatbedScans);
    std::memcpy(request->data, record.data(), record.size());
    if (size != nullptr) {
        *size = recordSize;
    }
    return 0;
}

/// Releases memory that the driver allocated.
__attribute__((visibility("default"))) void AVMemFree(void* memory)
{
    std::free(memory);
}

} // extern "C"
