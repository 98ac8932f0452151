// The counters of a vendor library at its fixed path, on the information tab. The path is the
// program's own: it leaves the mounts of everybody else and puts an empty disk over /usr/local.
#include "dialog_fixture.h"
#include "scanner/vendor_stub.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>

using namespace kestrel::test;

namespace {

void writeText(const char* path, const std::string& text)
{
    const int file = ::open(path, O_WRONLY | O_CLOEXEC);
    if (file >= 0) {
        const auto written = ::write(file, text.data(), text.size());
        static_cast<void>(written); // the mount fails where this did
        ::close(file);
    }
}

/// @return 0, or the reason why this process has no folder of its own for vendor libraries
int leaveTheSystemsFolders()
{
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    const int what = user == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS;
    if (::unshare(what) != 0) {
        return errno;
    }
    if (user != 0) {
        writeText("/proc/self/setgroups", "deny");
        writeText("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
        writeText("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
    }
    if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount("vendor", "/usr/local", "tmpfs", 0, "size=64m") != 0) {
        return errno;
    }
    return 0;
}

// Before main(), because a process with threads may not do it.
const int privateFolders = leaveTheSystemsFolders();

class VendorAtItsPath : public DialogTest
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(privateFolders, 0) << std::strerror(privateFolders);
        ASSERT_TRUE(QDir().mkpath(QStringLiteral("/usr/local/lib64/sane")));
    }
    void TearDown() override { destroy(); } // before the scanner

    static QString pathOf(const char* device)
    {
        return QStringLiteral("/usr/local/lib64/sane/%1_x64.so.1.0").arg(QLatin1String(device));
    }

    /// Installs a library for devices of this name. Names are not used twice: what was opened once
    /// stays mapped.
    /// @return what the library is told and notes; it counts 100, 101, 102... in its record
    VendorStub& install(const char* library, const char* device)
    {
        EXPECT_TRUE(QFile::copy(QFile::decodeName(library), pathOf(device))) << device;
        void* const opened = ::dlopen(QFile::encodeName(pathOf(device)).constData(), RTLD_LAZY);
        EXPECT_NE(opened, nullptr) << ::dlerror();
        auto* const stub = static_cast<VendorStub*>(::dlsym(opened, "vendorStub"));
        for (std::uint32_t i = 0; i < 8; ++i) {
            stub->words[i] = 100 + i;
        }
        return *stub; // stays: the library was not closed
    }

    void expectCounters(std::uint32_t separation, std::uint32_t feed, std::uint32_t flatbed)
    {
        EXPECT_EQ(dialog().counters.separation_roller_count, separation);
        EXPECT_EQ(dialog().counters.feed_roller_count, feed);
        EXPECT_EQ(dialog().counters.flatbed_scan_count, flatbed);
    }
    /// Expects the information tab of a feeder with a flatbed to end so.
    void expectShown(std::uint32_t rollers, std::uint32_t flatbed)
    {
        dialog().setScannerInfo();
        expectCounters(rollers, rollers, flatbed);
        const QString lines = QStringLiteral("自动分纸滚轮/垫片次数：%1\n"
                                             "自动进纸滚轮次数：%1\n平台扫描次数：%2\n")
                                  .arg(rollers)
                                  .arg(flatbed);
        EXPECT_EQ(information(),
                  dialog().system_text + QStringLiteral("序列号:  KS-2024-0042\n") + lines);
    }

    FakeScanner scanner = fullScanner();
};

} // namespace

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
