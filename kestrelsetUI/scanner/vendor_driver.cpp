#include "scanner/vendor_driver.h"

#include "system/library_file.h"
#include "system/signal_blocker.h"

#include <QFile>

#include <csignal>
#include <cstring>
#include <cxxabi.h>
#include <dlfcn.h>
#include <memory>

namespace kestrel {
namespace {

// Records are read at offsets below 32; drivers copy what they have.
using Record = std::array<std::uint8_t, 256>;

struct CloseLibrary
{
    void operator()(void* library) const { dlclose(library); }
};

template <typename Function>
Function find(void* library, const char* name)
{
    return reinterpret_cast<Function>(dlsym(library, name));
}

std::uint32_t word(const Record& record, std::size_t offset)
{
    std::uint32_t value = 0;
    std::memcpy(&value, record.data() + offset, sizeof value);
    return value;
}

RollerCounters counters(const Record& record, std::size_t rollers, std::size_t flatbed)
{
    return {word(record, rollers), word(record, rollers), word(record, flatbed)};
}

/// Calls into a vendor library; an exception of its own does not get to the host. What ends a
/// thread is caught as a reference to nothing, which a sanitizer would report.
template <typename Call>
__attribute__((no_sanitize("null"))) void guarded(Call call)
{
    try {
        call();
    } catch (const abi::__forced_unwind&) { // the thread is being ended, which nobody may stop
        throw;
    } catch (...) { // the read has failed
    }
}

} // namespace

void VendorDriver::load(const QString& path)
{
    if (!isWholeLibrary(path)) {
        return;
    }
    const SignalBlocker noBrokenPipe(SIGPIPE);
    const std::unique_ptr<void, CloseLibrary> library(
        dlopen(QFile::encodeName(path).constData(), RTLD_LAZY | RTLD_NODELETE));
    if (!library) {
        return;
    }
    if (const auto initialize = find<DriverCall>(library.get(), "AVInitializeDriver")) {
        vendor_initialize_driver = initialize;
        vendor_terminate_driver = find<DriverCall>(library.get(), "AVTerminateDriver");
        vendor_initialize_device = find<InitializeDevice>(library.get(), "AVInitializeDevice");
        vendor_read_nvm = find<ReadNvm>(library.get(), "AVReadNVMData");
        vendor_mem_free = find<MemFree>(library.get(), "AVMemFree");
    } else {
        vendor_read_nvm_legacy = find<ReadNvmLegacy>(library.get(), "ReadNVMData");
    }
}

void VendorDriver::readCounters(RollerCounters& counters)
{
    const SignalBlocker noBrokenPipe(SIGPIPE);
    if (vendor_read_nvm_legacy != nullptr) {
        guarded([&] { readLegacy(counters); });
    }
    if (vendor_initialize_driver != nullptr) {
        guarded([&] { readDriver(counters); });
    }
}

void VendorDriver::readLegacy(RollerCounters& result) const
{
    Record record{};
    if ((vendor_read_nvm_legacy(record.data()) & 0xff) != 0) {
        result = counters(record, 0, 12);
    }
}

void VendorDriver::readDriver(RollerCounters& result)
{
    Record record{};
    Request request{record.data(), 0, 0};
    // A driver that fails to start is told to stop and asked all the same: it may be up already.
    if (vendor_initialize_driver(vendor_driver_id) != 0 && vendor_terminate_driver != nullptr) {
        vendor_terminate_driver(vendor_driver_id);
    }
    if (vendor_initialize_device == nullptr) {
        return; // there is no device to read from
    }
    vendor_initialize_device(vendor_driver_id, 0, vendor_device.data());
    if (vendor_read_nvm != nullptr &&
        vendor_read_nvm(vendor_driver_id, vendor_device.data(), &request, 0, &request.size) == 0) {
        result = counters(record, 8, 20);
    }
}

} // namespace kestrel
