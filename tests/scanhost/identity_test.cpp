#include <identity.h>

#include <gtest/gtest.h>

using kestrel::backendOf;
using kestrel::fileNameFor;
using kestrel::makeIdentity;

TEST(Identity, BackendIsTheTextBeforeTheColon)
{
    EXPECT_EQ(backendOf("kestrel_adv:duplex"), "kestrel_adv");
    EXPECT_EQ(backendOf("avision_adv:libusb:001:004"), "avision_adv");
    EXPECT_EQ(backendOf("plain"), "plain");
    EXPECT_EQ(backendOf(""), "");
    EXPECT_EQ(backendOf(":odd"), "");
}

TEST(Identity, BackendOfARemoteScannerIsTheOneOnItsComputer)
{
    EXPECT_EQ(backendOf("net:127.0.0.1:kestrel_adv:duplex"), "kestrel_adv");
    EXPECT_EQ(backendOf("net:scan.example.org:avision_adv:x:y"), "avision_adv");
    EXPECT_EQ(backendOf("net:[::1]:kestrel_adv:duplex"), "kestrel_adv");
    EXPECT_EQ(backendOf("net:host"), "net");
    EXPECT_EQ(backendOf("net:host:"), "net");
    EXPECT_EQ(backendOf("net:[::1"), "net");
    EXPECT_EQ(backendOf("network:1"), "network");
}

TEST(Identity, ModelBecomesASafeFileName)
{
    EXPECT_EQ(fileNameFor("Q2380F"), "Q2380F");
    EXPECT_EQ(fileNameFor("  Q 2380/F  "), "Q_2380_F");
    EXPECT_EQ(fileNameFor("../etc/passwd"), "_._etc_passwd");
    EXPECT_EQ(fileNameFor(".hidden"), "_hidden");
    EXPECT_EQ(fileNameFor("a%1b[c]\\d"), "a_1b_c__d");
    EXPECT_EQ(fileNameFor(QStringLiteral("扫描仪-9")), QStringLiteral("扫描仪-9"));
    EXPECT_EQ(fileNameFor(""), "scanner");
    EXPECT_EQ(fileNameFor("   "), "scanner");
}

TEST(Identity, LongModelFitsTheRecordInWholeCharacters)
{
    EXPECT_EQ(fileNameFor(QString(200, 'x')), QString(127, 'x'));
    // Three bytes each: 42 of them fit.
    EXPECT_EQ(fileNameFor(QString(200, QChar(0x626b))), QString(42, QChar(0x626b)));
    const ScannerIdentity identity = makeIdentity("b:d", QString(200, 'x'), "");
    EXPECT_EQ(QByteArray(identity.name), QByteArray(127, 'x'));
}

TEST(Identity, IdsAreReadAsHexadecimal)
{
    struct Row
    {
        const char* info;
        std::uint32_t vid;
        std::uint32_t pid;
    };
    const Row rows[] = {
        {"0638:2e7f", 0x638, 0x2e7f},
        {"638:c141:rev2", 0x638, 0xc141},
        {"0x638:0xC141", 0x638, 0xc141},
        {" 638 : c141 ", 0x638, 0xc141},
        {"638", 0, 0},
        {"", 0, 0},
        {"xyz:c141", 0, 0xc141},
        {"638:", 0x638, 0},
        {"123456789:1", 0, 1},
    };
    for (const Row& row : rows) {
        const ScannerIdentity identity = makeIdentity("b:d", "Unknown", row.info);
        EXPECT_EQ(identity.vid, row.vid) << row.info;
        EXPECT_EQ(identity.pid, row.pid) << row.info;
    }
}

TEST(Identity, AKnownModelHasItsProductIdWithoutTheScannersHelp)
{
    EXPECT_EQ(makeIdentity("b:d", "Q1410A", "").pid, 0xc141u);
    EXPECT_EQ(makeIdentity("b:d", "q2380f", "").pid, 0xc238u);
    EXPECT_EQ(makeIdentity("b:d", "Q150A", "nonsense").pid, 0xc150u);
    EXPECT_EQ(makeIdentity("b:d", "Q150A", "1:2").pid, 2u) << "the scanner knows better";
    EXPECT_EQ(makeIdentity("b:d", "Q150", "").pid, 0u);
}

TEST(Identity, RecordHoldsNameAndBackend)
{
    const ScannerIdentity identity = makeIdentity("kestrel_adv:duplex", "Q2380F", "638:c238");
    EXPECT_STREQ(identity.name, "Q2380F");
    EXPECT_STREQ(identity.backend, "kestrel_adv");
    EXPECT_STREQ(makeIdentity("kestrel_adv:duplex", "", "").name, "kestrel_adv_duplex");
    EXPECT_EQ(QByteArray(makeIdentity(QString(500, 'b'), "m", "").backend).size(), 127);
}
