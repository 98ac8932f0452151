// A vendor library that does what the test tells it and notes what it is asked.
#include "vendor_stub.h"

#include <cstddef>
#include <cstring>

#if defined(VENDOR_FULL) || defined(VENDOR_BOTH)
#define HAS_DRIVER
#define HAS_DEVICE
#endif
#if defined(VENDOR_BARE)
#define HAS_DRIVER
#endif
#if defined(VENDOR_LEGACY) || defined(VENDOR_BOTH)
#define HAS_LEGACY
#endif

#define VENDOR_EXPORT extern "C" __attribute__((visibility("default")))

VENDOR_EXPORT VendorStub vendorStub;
VendorStub vendorStub;

namespace {

[[maybe_unused]] void note(char letter)
{
    const std::size_t length = std::strlen(vendorStub.calls);
    if (length + 1 < sizeof vendorStub.calls) {
        vendorStub.calls[length] = letter;
    }
}

} // namespace

#ifdef HAS_DRIVER
VENDOR_EXPORT int AVInitializeDriver(std::int32_t driver)
{
    note('I');
    vendorStub.driver = driver;
    return vendorStub.initializeDriver;
}
#endif

#ifdef HAS_DEVICE
struct Request
{
    void* data;
    std::uint32_t size;
};

VENDOR_EXPORT int AVTerminateDriver(std::int32_t driver)
{
    note('T');
    vendorStub.driver = driver;
    return 0;
}

VENDOR_EXPORT int AVInitializeDevice(std::int32_t driver, int index, std::uint32_t* device)
{
    note('D');
    vendorStub.driver = driver;
    vendorStub.deviceIndex = index;
    *device = vendorStub.device;
    return 17; // not looked at
}

VENDOR_EXPORT int AVReadNVMData(std::int32_t driver, std::uint32_t* device, Request* request,
                                int zero, std::uint32_t* size)
{
    note('R');
    vendorStub.driver = driver;
    vendorStub.deviceSeen = *device;
    vendorStub.sizeSeen = request->size;
    vendorStub.sizePointerFits = size == &request->size;
    vendorStub.zeroSeen = zero;
    std::memcpy(request->data, vendorStub.words, sizeof vendorStub.words);
    *size = sizeof vendorStub.words;
    return vendorStub.readNvm;
}

VENDOR_EXPORT int AVMemFree(void* /*memory*/)
{
    note('F');
    return 0;
}
#endif

#ifdef HAS_LEGACY
VENDOR_EXPORT int ReadNVMData(void* record)
{
    note('L');
    std::memcpy(record, vendorStub.words, 16);
    return vendorStub.readLegacy;
}
#endif
