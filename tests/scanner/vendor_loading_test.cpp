// Opening, searching and closing vendor libraries, and what they lack.
#include "vendor_fixture.h"

#include <QTemporaryDir>

#include <vector>

using namespace kestrel::test;

namespace {

std::vector<void*> closed; // NOLINT: the wrapped function has no other way to it

/// A library as nobody else has opened it.
class VendorCopy : public VendorLibrary
{
protected:
    QString copyOf(const char* library) const
    {
        QString copy = m_dir.filePath(QStringLiteral("Scanner_x64.so.1.0"));
        EXPECT_TRUE(QFile::copy(path(library), copy)) << library;
        return copy;
    }

    static void* open(const QString& library, int how)
    {
        return dlopen(QFile::encodeName(library).constData(), how);
    }

    QTemporaryDir m_dir;
};

} // namespace

// The linker puts this one in front of the loader's own.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the linker's names
int __real_dlclose(void* library);
int __wrap_dlclose(void* library);

int __wrap_dlclose(void* library)
{
    closed.push_back(library);
    return __real_dlclose(library);
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST_F(VendorLibrary, LoadingCallsNothing)
{
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    EXPECT_STREQ(m_full.calls, "");
    EXPECT_STREQ(m_legacy.calls, "");
}

TEST_F(VendorLibrary, EachIsClosedOnceWhateverItHas)
{
    for (const char* file : {VENDOR_FULL_LIBRARY, VENDOR_LEGACY_LIBRARY, VENDOR_BOTH_LIBRARY,
                             VENDOR_BARE_LIBRARY, VENDOR_EMPTY_LIBRARY}) {
        void* const library = dlopen(file, RTLD_LAZY);
        ASSERT_NE(library, nullptr) << file;
        closed.clear();
        m_driver.load(path(file));
        EXPECT_EQ(closed, std::vector<void*>{library}) << file;
        dlclose(library);
    }
}

TEST_F(VendorCopy, WhatNobodyElseHoldsStaysMapped)
{
    const QString copy = copyOf(VENDOR_FULL_LIBRARY);
    ASSERT_EQ(open(copy, RTLD_LAZY | RTLD_NOLOAD), nullptr);
    m_driver.load(copy);
    void* const mapped = open(copy, RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_NE(mapped, nullptr);
    const VendorStub& stub = freshIn(mapped);
    dlclose(mapped);
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(stub.calls, "IDR");
    expectCounters(m_counters, 102, 102, 105);
}

TEST_F(VendorCopy, AFunctionThatIsMissingElsewhereIsMissedOnlyByWhoNeedsIt)
{
    const QString copy = copyOf(VENDOR_UNLINKED_LIBRARY);
    ASSERT_EQ(open(copy, RTLD_NOW), nullptr);
    m_driver.load(copy);
    ASSERT_TRUE(m_driver.hasDriver());
    void* const mapped = open(copy, RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_NE(mapped, nullptr);
    freshIn(mapped);
    dlclose(mapped);
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 102, 102, 105);
}

TEST_F(VendorLibrary, ALibraryWithBothGivesTheDriverAlone)
{
    const VendorStub& both = fresh(VENDOR_BOTH_LIBRARY);
    m_driver.load(path(VENDOR_BOTH_LIBRARY));
    EXPECT_TRUE(m_driver.hasDriver());
    EXPECT_FALSE(m_driver.hasLegacyReader());
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(both.calls, "IDR");
}

TEST_F(VendorLibrary, AFunctionThatIsMissingIsNotCalled)
{
    VendorStub& bare = fresh(VENDOR_BARE_LIBRARY);
    bare.initializeDriver = -1;
    m_driver.load(path(VENDOR_BARE_LIBRARY));
    EXPECT_TRUE(m_driver.hasDriver());
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(bare.calls, "I");
    expectCounters(m_counters, 1, 2, 3);
}

TEST_F(VendorLibrary, ADriverThatCanNotBeStoppedIsAskedAllTheSame)
{
    VendorStub& stub = fresh(VENDOR_STOPLESS_LIBRARY);
    stub.initializeDriver = -1;
    m_driver.load(path(VENDOR_STOPLESS_LIBRARY));
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(stub.calls, "IDR");
    expectCounters(m_counters, 102, 102, 105);
}

TEST_F(VendorLibrary, ADriverWithoutDevicesIsNotRead)
{
    VendorStub& stub = fresh(VENDOR_DEVICELESS_LIBRARY);
    m_driver.load(path(VENDOR_DEVICELESS_LIBRARY));
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(stub.calls, "I");
    stub.initializeDriver = 1;
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(stub.calls, "IIT");
    expectCounters(m_counters, 1, 2, 3);
}

TEST_F(VendorLibrary, ADriverThatCanNotReadGetsItsDeviceAndLeavesTheCounters)
{
    const VendorStub& stub = fresh(VENDOR_READLESS_LIBRARY);
    m_driver.load(path(VENDOR_READLESS_LIBRARY));
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(stub.calls, "ID");
    EXPECT_EQ(stub.driver, 292);
    EXPECT_EQ(stub.deviceIndex, 0);
    expectCounters(m_counters, 1, 2, 3);
}

TEST_F(VendorLibrary, ADriverThatLacksFunctionsDoesNotBorrowThoseOfTheLast)
{
    struct Row
    {
        const char* library;
        const char* calls;
        bool read;
    };
    for (const Row& row :
         {Row{VENDOR_BARE_LIBRARY, "I", false}, Row{VENDOR_STOPLESS_LIBRARY, "IDR", true},
          Row{VENDOR_DEVICELESS_LIBRARY, "IT", false},
          Row{VENDOR_READLESS_LIBRARY, "ITD", false}}) {
        VendorStub& stub = fresh(row.library);
        stub.initializeDriver = -1;
        m_driver.load(path(VENDOR_FULL_LIBRARY));
        m_driver.load(path(row.library));
        m_counters = {1, 2, 3};
        m_driver.readCounters(m_counters);
        SCOPED_TRACE(row.library);
        EXPECT_STREQ(stub.calls, row.calls);
        EXPECT_EQ(m_counters.flatbed_scan_count, row.read ? 105U : 3U);
    }
    EXPECT_STREQ(m_full.calls, "");
}

TEST_F(VendorLibrary, ALibraryWithNothingInItLeavesTheDriver)
{
    m_driver.load(path(VENDOR_FULL_LIBRARY));
    m_driver.load(path(VENDOR_EMPTY_LIBRARY));
    EXPECT_TRUE(m_driver.hasDriver());
    m_driver.readCounters(m_counters);
    expectCounters(m_counters, 102, 102, 105);
}

TEST_F(VendorLibrary, ALibraryWithNothingInItEndsTheLegacyReader)
{
    m_driver.load(path(VENDOR_LEGACY_LIBRARY));
    m_driver.load(path(VENDOR_EMPTY_LIBRARY));
    EXPECT_FALSE(m_driver.hasLegacyReader());
    m_driver.readCounters(m_counters);
    EXPECT_STREQ(m_legacy.calls, "");
    expectCounters(m_counters, 1, 2, 3);
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
