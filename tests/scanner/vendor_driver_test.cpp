// Reading the counters from vendor libraries made for it.
#include "vendor_fixture.h"

#include <climits>

using namespace kestrel::test;

TEST_F(VendorLibrary, WithoutOneTheCountersStay)
{
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 1, 2, 3);
    EXPECT_FALSE(m_driver.hasDriver());
    EXPECT_FALSE(m_driver.hasLegacyReader());
}

TEST_F(VendorLibrary, TheDriverIsAskedInOrderWithItsNumber)
{
    m_full.device = 0xabcd;
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    EXPECT_TRUE(m_driver.hasDriver());
    EXPECT_FALSE(m_driver.hasLegacyReader());
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(m_full.calls, "IDR");
    EXPECT_EQ(m_full.driver, 292);
    EXPECT_EQ(m_full.deviceIndex, 0);
    EXPECT_EQ(m_full.deviceSeen, 0xabcdU);
    EXPECT_EQ(m_full.sizeSeen, 0U);
    EXPECT_TRUE(m_full.sizePointerFits);
    EXPECT_EQ(m_full.zeroSeen, 0);
    EXPECT_NE(m_full.deviceGiven, nullptr);
    EXPECT_EQ(m_full.deviceRead, m_full.deviceGiven);
}

TEST_F(VendorLibrary, ADeviceThatIsNotWrittenAnewStaysTheLast)
{
    m_full.device = 0xabcd;
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.readCounters(m_counters);
    m_full.writesDevice = false;
    m_full.deviceSeen = 0;
    m_driver.readCounters(m_counters);
    EXPECT_EQ(m_full.deviceSeen, 0xabcdU);
}

TEST_F(VendorLibrary, TheDriversRecordHasTheRollersAtEightAndTheFlatbedAtTwenty)
{
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 102, 102, 105);
}

TEST_F(VendorLibrary, CountersAreUnsigned)
{
    m_full.words[2] = 0xffffffffU;
    m_full.words[5] = 0x80000000U;
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 4294967295U, 4294967295U, 2147483648U);
}

TEST_F(VendorLibrary, AFailedReadLeavesTheCounters)
{
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    for (const int status : {5, 1, 0x100, INT_MAX, -1, -256, INT_MIN}) {
        m_full.readNvm = status;
        m_driver.readCounters(m_counters);
        SCOPED_TRACE(status);
        expectCounters(m_counters, 1, 2, 3);
    }
    EXPECT_STREQ(m_full.calls, "IDRIDRIDRIDRIDRIDRIDR");
}

TEST_F(VendorLibrary, ADriverThatDoesNotStartIsStoppedAndAskedAllTheSame)
{
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    for (const int status : {-1, -256, INT_MIN, 1, 5, 0x100, INT_MAX}) {
        VendorStub& stub = fresh(VENDOR_FULL_LIBRARY);
        stub.initializeDriver = status;
        m_counters = {1, 2, 3};
        m_driver.readCounters(m_counters);
        SCOPED_TRACE(status);
        EXPECT_STREQ(stub.calls, "ITDR");
        EXPECT_EQ(stub.driver, 292);
        expectCounters(m_counters, 102, 102, 105);
    }
}

TEST_F(VendorLibrary, ReadingAgainAsksAgain)
{
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.readCounters(m_counters);
    m_full.words[2] = 7;
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(m_full.calls, "IDRIDR");
    EXPECT_EQ(m_counters.feed_roller_count, 7U);
}

TEST_F(VendorLibrary, TheLegacyRecordHasTheRollersAtZeroAndTheFlatbedAtTwelve)
{
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    EXPECT_TRUE(m_driver.hasLegacyReader());
    EXPECT_FALSE(m_driver.hasDriver());
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(m_legacy.calls, "L");
    expectCounters(m_counters, 100, 100, 103);
}

TEST_F(VendorLibrary, OnlyTheLowByteOfTheLegacyAnswerCounts)
{
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    m_legacy.readLegacy = 0;
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 1, 2, 3);
    m_legacy.readLegacy = 0x1200;
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 1, 2, 3);
    m_legacy.readLegacy = 0x1280;
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 100, 100, 103);
}

TEST_F(VendorLibrary, WithBothKindsLoadedTheLegacyOneIsAskedFirstAndTheDriverWins)
{
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    EXPECT_TRUE(m_driver.hasLegacyReader());
    EXPECT_TRUE(m_driver.hasDriver());
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(m_legacy.calls, "L");
    EXPECT_STREQ(m_full.calls, "IDR");
    expectCounters(m_counters, 102, 102, 105);
}

TEST_F(VendorLibrary, WhenTheDriversReadFailsTheLegacyCountersStand)
{
    m_full.readNvm = 1;
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 100, 100, 103);
}

// Nobody tells a driver how much room there is; some copy the whole page of the memory.
TEST_F(VendorLibrary, ARecordMayHave256Bytes)
{
    m_full.bytes = 256;
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 102, 102, 105);
}

TEST_F(VendorLibrary, ALegacyRecordMayHave256Bytes)
{
    m_legacy.bytes = 256;
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 100, 100, 103);
}

// The first read leaves its record on the stack, about where the second has its own.
TEST_F(VendorLibrary, WhatADriverDoesNotWriteIsZero)
{
    m_full.bytes = 256;
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.readCounters(m_counters);
    m_full.bytes = 0;
    m_driver.readCounters(m_counters);
    EXPECT_TRUE(m_full.recordWasZero);
    expectCounters(m_counters, 0, 0, 0);
}

TEST_F(VendorLibrary, WhatALegacyReaderDoesNotWriteIsZero)
{
    m_legacy.bytes = 256;
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    m_driver.readCounters(m_counters);
    m_legacy.bytes = 0;
    m_driver.readCounters(m_counters);
    EXPECT_TRUE(m_legacy.recordWasZero);
    expectCounters(m_counters, 0, 0, 0);
}

TEST_F(VendorLibrary, TheRecordIsReadFromWhereItWasAskedFor)
{
    std::uint32_t other[64] = {};
    m_full.dataLeft = other;
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 102, 102, 105);
}
