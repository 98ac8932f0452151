// The simulated models' driver library, read by the class that reads the vendor's.
#include <scanner/vendor_driver.h>

#include <gtest/gtest.h>

#include <cstdlib>

using namespace kestrel;

namespace {

class SimCounters : public testing::Test
{
protected:
    SimCounters() { forget(); }
    ~SimCounters() override { forget(); }

    void load(const char* library)
    {
        m_driver.load(QStringLiteral(KESTREL_SIM_VENDOR_DIR "/") + QLatin1String(library));
    }
    void expectRead(std::uint32_t rollers, std::uint32_t flatbed)
    {
        m_driver.readCounters(m_counters);
        EXPECT_EQ(m_counters.separation_roller_count, rollers);
        EXPECT_EQ(m_counters.feed_roller_count, rollers);
        EXPECT_EQ(m_counters.flatbed_scan_count, flatbed);
    }

    VendorDriver m_driver;
    RollerCounters m_counters;

private:
    static void forget()
    {
        unsetenv("KESTREL_SIM_NVM");
        unsetenv("KESTREL_SIM_VENDOR_FAULT");
    }
};

} // namespace

TEST_F(SimCounters, ComeThroughTheDriver)
{
    load("libkestrel-sim-vendor.so");
    EXPECT_TRUE(m_driver.hasDriver());
    EXPECT_FALSE(m_driver.hasLegacyReader());
    expectRead(12345, 678);
    setenv("KESTREL_SIM_NVM", "4294967295:4000000000", 1);
    expectRead(4294967295U, 4000000000U);
}

TEST_F(SimCounters, ComeThroughTheLegacyReader)
{
    load("libkestrel-sim-vendor-legacy.so");
    EXPECT_FALSE(m_driver.hasDriver());
    EXPECT_TRUE(m_driver.hasLegacyReader());
    expectRead(12345, 678);
    setenv("KESTREL_SIM_NVM", "4294967295:4000000000", 1);
    expectRead(4294967295U, 4000000000U);
}

// A device that was found once is still known when it can't be looked for again.
TEST_F(SimCounters, StayWhereACallFails)
{
    load("libkestrel-sim-vendor.so");
    for (const char* const fault : {"driver", "device", "read"}) {
        SCOPED_TRACE(fault);
        setenv("KESTREL_SIM_VENDOR_FAULT", fault, 1);
        expectRead(0, 0);
    }
    unsetenv("KESTREL_SIM_VENDOR_FAULT");
    expectRead(12345, 678);
    setenv("KESTREL_SIM_NVM", "1:2", 1);
    setenv("KESTREL_SIM_VENDOR_FAULT", "read", 1);
    expectRead(12345, 678);
    setenv("KESTREL_SIM_VENDOR_FAULT", "device", 1);
    expectRead(1, 2);
}
