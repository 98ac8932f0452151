#include "scanner/vendor_driver.h"

#include <QFile>
#include <QFileInfo>

#include <cstring>
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

} // namespace

void VendorDriver::load(const QString& path)
{
    if (!QFileInfo(path).isFile()) {
        return;
    }
    const std::unique_ptr<void, CloseLibrary> library(
        dlopen(QFile::encodeName(path).constData(), RTLD_LAZY | RTLD_NODELETE));
    if (!library) {
        return;
    }
    if (const auto initialize = find<DriverCall>(library.get(), "AVInitializeDriver")) {
        initializeDriver_ = initialize;
        terminateDriver_ = find<DriverCall>(library.get(), "AVTerminateDriver");
        initializeDevice_ = find<InitializeDevice>(library.get(), "AVInitializeDevice");
        readNvm_ = find<ReadNvm>(library.get(), "AVReadNVMData");
        memFree_ = find<MemFree>(library.get(), "AVMemFree");
    } else if (const auto read = find<ReadNvmLegacy>(library.get(), "ReadNVMData")) {
        readNvmLegacy_ = read;
    }
}

void VendorDriver::readCounters(RollerCounters& counters)
{
    if (readNvmLegacy_ != nullptr) {
        readLegacy(counters);
    }
    if (initializeDriver_ != nullptr) {
        readDriver(counters);
    }
}

void VendorDriver::readLegacy(RollerCounters& result) const
{
    Record record{};
    if ((readNvmLegacy_(record.data()) & 0xff) != 0) {
        result = counters(record, 0, 12);
    }
}

void VendorDriver::readDriver(RollerCounters& result)
{
    Record record{};
    Request request{record.data(), 0};
    // A driver that fails to start is told to stop and asked all the same: it may be up already.
    if (initializeDriver_(kDriverId) != 0 && terminateDriver_ != nullptr) {
        terminateDriver_(kDriverId);
    }
    if (initializeDevice_ == nullptr || readNvm_ == nullptr) {
        return;
    }
    initializeDevice_(kDriverId, 0, device_.data());
    if (readNvm_(kDriverId, device_.data(), &request, 0, &request.size) == 0) {
        result = counters(record, 8, 20);
    }
}

} // namespace kestrel
