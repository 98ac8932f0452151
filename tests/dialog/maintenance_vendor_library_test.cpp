// The counters of a vendor library at its fixed path, on the information tab.
#include "vendor_at_its_path.h"

using namespace kestrel::test;

TEST_F(VendorAtItsPath, ADriverIsFoundAtBindingAndAskedForTheInformation)
{
    const VendorStub& stub = install(VENDOR_FULL_LIBRARY, "Full");
    bind(scanner, "Full");
    EXPECT_EQ(dialog().vendor_lib_path, pathOf("Full"));
    EXPECT_TRUE(dialog().vendor_driver.hasDriver());
    EXPECT_FALSE(dialog().vendor_driver.hasLegacyReader());
    EXPECT_STREQ(stub.calls, "");
    expectCounters(1234, 5678, 0); // so far the scanner's options
    expectShown(102, 105);
    EXPECT_STREQ(stub.calls, "IDR");
    EXPECT_EQ(stub.driver, 292);
}

TEST_F(VendorAtItsPath, ADriverThatFailsLeavesTheCounters)
{
    VendorStub& stub = install(VENDOR_FULL_LIBRARY, "Failing");
    stub.initializeDriver = -1;
    stub.readNvm = 3;
    bind(scanner, "Failing");
    dialog().setScannerInfo();
    EXPECT_STREQ(stub.calls, "ITDR");
    expectCounters(1234, 5678, 0);
}

TEST_F(VendorAtItsPath, ALegacyLibraryIsAskedItsOwnWay)
{
    VendorStub& stub = install(VENDOR_LEGACY_LIBRARY, "Legacy");
    bind(scanner, "Legacy");
    EXPECT_FALSE(dialog().vendor_driver.hasDriver());
    EXPECT_TRUE(dialog().vendor_driver.hasLegacyReader());
    EXPECT_STREQ(stub.calls, "");
    expectShown(100, 103);
    EXPECT_STREQ(stub.calls, "L");
    stub.readLegacy = 0;
    stub.words[0] = 7;
    expectShown(100, 103);
}

TEST_F(VendorAtItsPath, ALibraryWithBothIsADriver)
{
    const VendorStub& stub = install(VENDOR_BOTH_LIBRARY, "Both");
    bind(scanner, "Both");
    expectShown(102, 105);
    EXPECT_STREQ(stub.calls, "IDR");
}

TEST_F(VendorAtItsPath, ABareDriverLeavesTheCounters)
{
    VendorStub& stub = install(VENDOR_BARE_LIBRARY, "Bare");
    stub.initializeDriver = -1; // it has nothing to be stopped with
    bind(scanner, "Bare");
    dialog().setScannerInfo();
    EXPECT_STREQ(stub.calls, "I");
    expectCounters(1234, 5678, 0);
}

TEST_F(VendorAtItsPath, WhatIsNoLibraryIsPassedOver)
{
    QFile broken(pathOf("Broken"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("\177ELF and nothing more");
    broken.close();
    ASSERT_TRUE(QFile(pathOf("Empty")).open(QIODevice::WriteOnly));
    ASSERT_TRUE(QDir().mkpath(pathOf("Folder")));
    ASSERT_TRUE(QFile::link(QStringLiteral("/nowhere"), pathOf("Dangling")));
    for (const char* device : {"Broken", "Empty", "Folder", "Dangling", "Missing"}) {
        bind(scanner, device);
        EXPECT_EQ(dialog().vendor_lib_path, pathOf(device));
        EXPECT_FALSE(dialog().vendor_driver.hasDriver()) << device;
        EXPECT_FALSE(dialog().vendor_driver.hasLegacyReader()) << device;
        dialog().setScannerInfo();
        expectCounters(1234, 5678, 0);
    }
}

TEST_F(VendorAtItsPath, AScannerWithoutALibraryKeepsTheFunctionsOfTheLast)
{
    VendorStub& stub = install(VENDOR_FULL_LIBRARY, "Kept");
    bind(scanner, "Kept");
    expectShown(102, 105);
    bind(scanner, "WithoutOne");
    EXPECT_TRUE(dialog().vendor_driver.hasDriver());
    stub.words[2] = 55;
    expectShown(55, 105);
}

TEST_F(VendorAtItsPath, ALegacyLibraryAfterADriverLeavesTheDriver)
{
    const VendorStub& driver = install(VENDOR_FULL_LIBRARY, "FirstDriver");
    VendorStub& legacy = install(VENDOR_LEGACY_LIBRARY, "ThenLegacy");
    legacy.words[0] = 1;
    bind(scanner, "FirstDriver");
    bind(scanner, "ThenLegacy");
    EXPECT_TRUE(dialog().vendor_driver.hasDriver());
    EXPECT_TRUE(dialog().vendor_driver.hasLegacyReader());
    expectShown(102, 105); // asked last, the driver has the last word
    EXPECT_STREQ(driver.calls, "IDR");
    EXPECT_STREQ(legacy.calls, "L");
}

TEST_F(VendorAtItsPath, ADriverAfterALegacyLibraryLeavesTheLegacyReader)
{
    VendorStub& legacy = install(VENDOR_LEGACY_LIBRARY, "FirstLegacy");
    VendorStub& driver = install(VENDOR_FULL_LIBRARY, "ThenDriver");
    bind(scanner, "FirstLegacy");
    bind(scanner, "ThenDriver");
    EXPECT_TRUE(dialog().vendor_driver.hasDriver());
    EXPECT_TRUE(dialog().vendor_driver.hasLegacyReader());
    driver.readNvm = 1;
    expectShown(100, 103); // what the legacy reader has said stands
    EXPECT_STREQ(driver.calls, "IDR");
    EXPECT_STREQ(legacy.calls, "L");
}

TEST_F(VendorAtItsPath, AnotherDriverTakesOver)
{
    const VendorStub& first = install(VENDOR_FULL_LIBRARY, "OneDriver");
    VendorStub& second = install(VENDOR_BOTH_LIBRARY, "AnotherDriver");
    second.words[2] = 77;
    bind(scanner, "OneDriver");
    bind(scanner, "AnotherDriver");
    expectShown(77, 105);
    EXPECT_STREQ(first.calls, "");
    EXPECT_STREQ(second.calls, "IDR");
}

TEST_F(VendorAtItsPath, ALibraryWithNeitherLeavesADriver)
{
    install(VENDOR_FULL_LIBRARY, "BeforeNothing");
    ASSERT_TRUE(QFile::copy(QStringLiteral(VENDOR_EMPTY_LIBRARY), pathOf("Nothing")));
    bind(scanner, "BeforeNothing");
    bind(scanner, "Nothing");
    EXPECT_TRUE(dialog().vendor_driver.hasDriver());
    expectShown(102, 105);
}

TEST_F(VendorAtItsPath, WhatWasFoundStaysCallableWhenTheFileGoes)
{
    const VendorStub& stub = install(VENDOR_FULL_LIBRARY, "Removed");
    bind(scanner, "Removed");
    ASSERT_TRUE(QFile::remove(pathOf("Removed")));
    expectShown(102, 105);
    EXPECT_STREQ(stub.calls, "IDR");
}

TEST_F(VendorAtItsPath, WhatNobodyElseHoldsStaysMapped)
{
    ASSERT_TRUE(QFile::copy(QStringLiteral(VENDOR_FULL_LIBRARY), pathOf("Alone")));
    bind(scanner, "Alone");
    dialog().setScannerInfo(); // its record is all zeroes
    expectCounters(0, 0, 0);
    void* const mapped =
        ::dlopen(QFile::encodeName(pathOf("Alone")).constData(), RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_NE(mapped, nullptr);
    EXPECT_STREQ(static_cast<VendorStub*>(::dlsym(mapped, "vendorStub"))->calls, "IDR");
    ::dlclose(mapped);
}
