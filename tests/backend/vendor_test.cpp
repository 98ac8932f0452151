// The vendor's driver library for the simulated models, called the way the dialog calls it.
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

struct Request
{
    void* data;
    std::uint32_t size;
};

constexpr std::int32_t driverId = 292;

class Library
{
public:
    explicit Library(const char* name)
        : handle_(dlopen((std::string(KESTREL_SIM_VENDOR_DIR "/") + name).c_str(), RTLD_LAZY))
    {
    }
    ~Library()
    {
        if (handle_ != nullptr) {
            dlclose(handle_);
        }
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    template <typename Function>
    Function* find(const char* symbol) const
    {
        return handle_ == nullptr ? nullptr : reinterpret_cast<Function*>(dlsym(handle_, symbol));
    }

private:
    void* handle_;
};

std::uint32_t wordAt(const std::array<std::uint8_t, 256>& record, std::size_t offset)
{
    std::uint32_t word = 0;
    std::memcpy(&word, record.data() + offset, sizeof word);
    return word;
}

class SimVendor : public testing::Test
{
protected:
    void SetUp() override
    {
        unsetenv("KESTREL_SIM_NVM");
        unsetenv("KESTREL_SIM_VENDOR_FAULT");
        initializeDriver = library.find<std::int32_t(std::int32_t)>("AVInitializeDriver");
        terminateDriver = library.find<std::int32_t(std::int32_t)>("AVTerminateDriver");
        initializeDevice = library.find<std::int32_t(std::int32_t, std::int32_t, std::int32_t*)>(
            "AVInitializeDevice");
        readMemory = library.find<std::int32_t(std::int32_t, std::int32_t*, Request*, std::int32_t,
                                               std::uint32_t*)>("AVReadNVMData");
        freeMemory = library.find<void(void*)>("AVMemFree");
        ASSERT_TRUE(initializeDriver && terminateDriver && initializeDevice && readMemory &&
                    freeMemory);
        terminateDriver(driverId);
    }
    void TearDown() override
    {
        unsetenv("KESTREL_SIM_NVM");
        unsetenv("KESTREL_SIM_VENDOR_FAULT");
    }

    std::int32_t read()
    {
        record.fill(0xaa);
        Request request{record.data(), 0};
        const std::int32_t status = readMemory(driverId, &device, &request, 0, &request.size);
        size = request.size;
        return status;
    }

    Library library{"libkestrel-sim-vendor.so"};
    std::int32_t (*initializeDriver)(std::int32_t) = nullptr;
    std::int32_t (*terminateDriver)(std::int32_t) = nullptr;
    std::int32_t (*initializeDevice)(std::int32_t, std::int32_t, std::int32_t*) = nullptr;
    std::int32_t (*readMemory)(std::int32_t, std::int32_t*, Request*, std::int32_t,
                               std::uint32_t*) = nullptr;
    void (*freeMemory)(void*) = nullptr;
    std::array<std::uint8_t, 256> record{};
    std::int32_t device = 0;
    std::uint32_t size = 0;
};

} // namespace

TEST_F(SimVendor, CountersStandAtTheirOffsets)
{
    ASSERT_EQ(initializeDriver(driverId), 0);
    ASSERT_EQ(initializeDevice(driverId, 0, &device), 0);
    EXPECT_NE(device, 0);
    ASSERT_EQ(read(), 0);
    EXPECT_EQ(size, 24U);
    EXPECT_EQ(wordAt(record, 8), 12345U);
    EXPECT_EQ(wordAt(record, 20), 678U);
    EXPECT_EQ(record[24], 0xaa) << "nothing is written past the record";
}

TEST_F(SimVendor, CountersCanBeGiven)
{
    setenv("KESTREL_SIM_NVM", "4294967295:7", 1);
    initializeDriver(driverId);
    initializeDevice(driverId, 0, &device);
    ASSERT_EQ(read(), 0);
    EXPECT_EQ(wordAt(record, 8), 4294967295U);
    EXPECT_EQ(wordAt(record, 20), 7U);
}

TEST_F(SimVendor, NothingWorksWithoutTheDriver)
{
    EXPECT_NE(initializeDevice(driverId, 0, &device), 0);
    EXPECT_EQ(device, 0);
    EXPECT_NE(read(), 0);
    EXPECT_EQ(record[8], 0xaa);
    EXPECT_NE(initializeDriver(1), 0) << "there is only driver 292";
}

TEST_F(SimVendor, TerminatingClosesTheDriver)
{
    initializeDriver(driverId);
    initializeDevice(driverId, 0, &device);
    EXPECT_EQ(terminateDriver(driverId), 0);
    EXPECT_NE(read(), 0);
}

TEST_F(SimVendor, EachCallCanFail)
{
    setenv("KESTREL_SIM_VENDOR_FAULT", "driver", 1);
    EXPECT_NE(initializeDriver(driverId), 0);
    setenv("KESTREL_SIM_VENDOR_FAULT", "device", 1);
    EXPECT_EQ(initializeDriver(driverId), 0);
    EXPECT_NE(initializeDevice(driverId, 0, &device), 0);
    setenv("KESTREL_SIM_VENDOR_FAULT", "read", 1);
    EXPECT_EQ(initializeDevice(driverId, 0, &device), 0);
    EXPECT_NE(read(), 0);
    EXPECT_EQ(record[8], 0xaa);
}

TEST_F(SimVendor, MemoryIsReleasedWithFree)
{
    void* const memory = std::malloc(16);
    freeMemory(memory);
    freeMemory(nullptr);
    EXPECT_EQ(initializeDriver(driverId), 0);
}

TEST_F(SimVendor, TheOldLibraryHasOneCall)
{
    const Library old("libkestrel-sim-vendor-legacy.so");
    EXPECT_EQ(old.find<void()>("AVInitializeDriver"), nullptr);
    auto* const readOld = old.find<bool(void*)>("ReadNVMData");
    ASSERT_NE(readOld, nullptr);
    EXPECT_FALSE(readOld(nullptr));
    record.fill(0xaa);
    ASSERT_TRUE(readOld(record.data()));
    EXPECT_EQ(wordAt(record, 0), 12345U);
    EXPECT_EQ(wordAt(record, 12), 678U);
    EXPECT_EQ(record[16], 0xaa);
}
