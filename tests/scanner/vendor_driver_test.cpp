// Loading a vendor library and reading the counters, with libraries made for it.
#include "scanner/vendor_driver.h"
#include "vendor_stub.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <dlfcn.h>

using kestrel::RollerCounters;
using kestrel::VendorDriver;

namespace {

/// The object of a library; the library stays mapped from the first call on.
VendorStub& stubOf(const char* path)
{
    void* const library = dlopen(path, RTLD_LAZY | RTLD_NODELETE);
    EXPECT_NE(library, nullptr) << path;
    auto* const stub = static_cast<VendorStub*>(dlsym(library, "vendorStub"));
    EXPECT_NE(stub, nullptr) << path;
    dlclose(library);
    return *stub;
}

class VendorLibrary : public testing::Test
{
protected:
    VendorLibrary()
    {
        for (VendorStub* stub : {&m_full, &m_legacy, &m_both, &m_bare}) {
            *stub = VendorStub();
            for (std::uint32_t i = 0; i < 8; ++i) {
                stub->words[i] = 100 + i;
            }
        }
    }

    static void expectCounters(const RollerCounters& counters, std::uint32_t separation,
                               std::uint32_t feed, std::uint32_t flatbed)
    {
        EXPECT_EQ(counters.separation_roller_count, separation);
        EXPECT_EQ(counters.feed_roller_count, feed);
        EXPECT_EQ(counters.flatbed_scan_count, flatbed);
    }

    VendorStub& m_full = stubOf(VENDOR_FULL_LIBRARY);
    VendorStub& m_legacy = stubOf(VENDOR_LEGACY_LIBRARY);
    VendorStub& m_both = stubOf(VENDOR_BOTH_LIBRARY);
    VendorStub& m_bare = stubOf(VENDOR_BARE_LIBRARY);
    VendorDriver m_driver;
    RollerCounters m_counters{1, 2, 3};
};

QString path(const char* file)
{
    return QFile::decodeName(file);
}

} // namespace

TEST_F(VendorLibrary, WithoutOneTheCountersStay)
{
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 1, 2, 3);
    EXPECT_FALSE(m_driver.hasDriver());
    EXPECT_FALSE(m_driver.hasLegacyReader());
}

TEST_F(VendorLibrary, LoadingCallsNothing)
{
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    EXPECT_STREQ(m_full.calls, "");
    EXPECT_STREQ(m_legacy.calls, "");
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
    m_full.readNvm = 5;
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 1, 2, 3);
}

TEST_F(VendorLibrary, ADriverThatDoesNotStartIsStoppedAndAskedAllTheSame)
{
    m_full.initializeDriver = -1;
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(m_full.calls, "ITDR");
    expectCounters(m_counters, 102, 102, 105);
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

TEST_F(VendorLibrary, ALibraryWithBothGivesTheDriverAlone)
{
    m_driver.load(path(VENDOR_BOTH_LIBRARY));
    EXPECT_TRUE(m_driver.hasDriver());
    EXPECT_FALSE(m_driver.hasLegacyReader());
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(m_both.calls, "IDR");
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

TEST_F(VendorLibrary, AFunctionThatIsMissingIsNotCalled)
{
    m_bare.initializeDriver = -1;
    m_driver.load(path(VENDOR_BARE_LIBRARY));
    EXPECT_TRUE(m_driver.hasDriver());
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(m_bare.calls, "I");
    expectCounters(m_counters, 1, 2, 3);
}

TEST_F(VendorLibrary, ALibraryWithNothingInItChangesNothing)
{
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.load(path(VENDOR_EMPTY_LIBRARY));
    EXPECT_TRUE(m_driver.hasDriver());
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 102, 102, 105);
}

TEST_F(VendorLibrary, AMissingFileChangesNothing)
{
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.load(QStringLiteral("/nowhere/Scanner_x64.so.1.0"));
    m_driver.load(QString());
    EXPECT_TRUE(m_driver.hasDriver());
}

TEST_F(VendorLibrary, WhatIsNoLibraryChangesNothing)
{
    const QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("text_x64.so.1.0")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no library at all");
    file.close();
    m_driver.load(file.fileName());
    m_driver.load(dir.path());
    EXPECT_FALSE(m_driver.hasDriver());
    EXPECT_FALSE(m_driver.hasLegacyReader());
}
