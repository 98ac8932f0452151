// A vendor library that does what the test tells it and notes what it is asked.
#include "vendor_stub.h"

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstring>

#if defined(VENDOR_FULL) || defined(VENDOR_BOTH) || defined(VENDOR_UNLINKED) ||                    \
    defined(VENDOR_PIPING)
#define HAS_DRIVER
#define HAS_STOP
#define HAS_DEVICE
#define HAS_READ
#elif defined(VENDOR_BARE)
#define HAS_DRIVER
#elif defined(VENDOR_STOPLESS)
#define HAS_DRIVER
#define HAS_DEVICE
#define HAS_READ
#elif defined(VENDOR_DEVICELESS)
#define HAS_DRIVER
#define HAS_STOP
#define HAS_READ
#elif defined(VENDOR_READLESS)
#define HAS_DRIVER
#define HAS_STOP
#define HAS_DEVICE
#endif
#if defined(VENDOR_LEGACY) || defined(VENDOR_BOTH)
#define HAS_LEGACY
#endif

#define VENDOR_EXPORT extern "C" __attribute__((visibility("default")))

VENDOR_EXPORT VendorStub vendorStub;
VendorStub vendorStub;

namespace {

#ifdef VENDOR_PIPING
// Whoever loads it has a pipe that breaks.
[[maybe_unused]] const int broken = std::raise(SIGPIPE);
#endif

[[maybe_unused]] void note(char letter)
{
    const std::size_t length = std::strlen(vendorStub.calls);
    if (length + 1 < sizeof vendorStub.calls) {
        vendorStub.calls[length] = letter;
    }
    if (vendorStub.hook != nullptr) {
        vendorStub.hook(letter);
    }
}

[[maybe_unused]] void note(char letter, std::int32_t driver)
{
    const bool first = vendorStub.calls[0] == '\0';
    vendorStub.driver = first || vendorStub.driver == driver ? driver : -1;
    note(letter);
}

[[maybe_unused]] void fill(void* record)
{
    const auto* const bytes = static_cast<const unsigned char*>(record);
    vendorStub.recordWasZero =
        std::all_of(bytes, bytes + 256, [](unsigned char byte) { return byte == 0; });
    std::memcpy(record, vendorStub.words, vendorStub.bytes);
}

} // namespace

#ifdef HAS_DRIVER
VENDOR_EXPORT int AVInitializeDriver(std::int32_t driver)
{
    note('I', driver);
    return vendorStub.initializeDriver;
}
#endif

#ifdef HAS_STOP
VENDOR_EXPORT int AVTerminateDriver(std::int32_t driver)
{
    note('T', driver);
    return 0;
}

VENDOR_EXPORT int AVMemFree(void* /*memory*/)
{
    note('F');
    return 0;
}
#endif

#ifdef HAS_DEVICE
VENDOR_EXPORT int AVInitializeDevice(std::int32_t driver, int index, std::uint32_t* device)
{
    note('D', driver);
    vendorStub.deviceIndex = index;
    vendorStub.deviceGiven = device;
    if (vendorStub.writesDevice) {
        *device = vendorStub.device;
    }
    return 17; // not looked at
}
#endif

#ifdef HAS_READ
struct Request
{
    void* data;
    std::uint32_t size;
};

VENDOR_EXPORT int AVReadNVMData(std::int32_t driver, std::uint32_t* device, Request* request,
                                int zero, std::uint32_t* size)
{
    note('R', driver);
    vendorStub.deviceRead = device;
    vendorStub.deviceSeen = *device;
    // As a driver does whose size has 64 bits.
    std::memcpy(&vendorStub.sizeSeen, &request->size, sizeof vendorStub.sizeSeen);
    vendorStub.sizePointerFits = size == &request->size;
    vendorStub.zeroSeen = zero;
    fill(request->data);
    if (vendorStub.dataLeft != nullptr) {
        request->data = vendorStub.dataLeft;
    }
    *size = static_cast<std::uint32_t>(vendorStub.bytes);
    return vendorStub.readNvm;
}
#endif

#ifdef HAS_LEGACY
VENDOR_EXPORT int ReadNVMData(void* record)
{
    note('L');
    fill(record);
    return vendorStub.readLegacy;
}
#endif

#ifdef VENDOR_UNLINKED
// Of a library that this one was not linked with; who does not call it does not need it.
extern "C" int functionOfAnotherLibrary(int value);

VENDOR_EXPORT int AVCalibrate(int value)
{
    return functionOfAnotherLibrary(value);
}
#endif
