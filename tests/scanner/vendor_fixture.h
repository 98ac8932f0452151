/// @file
/// The class that loads vendor libraries, and libraries made for its tests.
#pragma once

#include "scanner/vendor_driver.h"
#include "vendor_stub.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cstdint>
#include <dlfcn.h>

namespace kestrel::test {

class VendorLibrary : public testing::Test
{
protected:
    static QString path(const char* file) { return QFile::decodeName(file); }

    /// @return what an open library is told and notes, as at first; its record is 100, 101, 102...
    static VendorStub& freshIn(void* library)
    {
        auto* const stub = static_cast<VendorStub*>(dlsym(library, "vendorStub"));
        EXPECT_NE(stub, nullptr);
        *stub = VendorStub();
        std::uint32_t next = 100;
        for (std::uint32_t& word : stub->words) {
            word = next++;
        }
        return *stub;
    }

    /// The same of a library that stays mapped from now on.
    static VendorStub& fresh(const char* file)
    {
        void* const library = dlopen(file, RTLD_LAZY | RTLD_NODELETE);
        EXPECT_NE(library, nullptr) << file;
        VendorStub& stub = freshIn(library);
        dlclose(library);
        return stub;
    }

    static void expectCounters(const RollerCounters& counters, std::uint32_t separation,
                               std::uint32_t feed, std::uint32_t flatbed)
    {
        EXPECT_EQ(counters.separation_roller_count, separation);
        EXPECT_EQ(counters.feed_roller_count, feed);
        EXPECT_EQ(counters.flatbed_scan_count, flatbed);
    }

    VendorStub& m_full = fresh(VENDOR_FULL_LIBRARY);
    VendorStub& m_legacy = fresh(VENDOR_LEGACY_LIBRARY);
    VendorDriver m_driver;
    RollerCounters m_counters{1, 2, 3};
};

} // namespace kestrel::test
