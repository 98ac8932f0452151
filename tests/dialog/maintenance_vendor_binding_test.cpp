// When a vendor library is loaded, and when it is not.
#include "vendor_at_its_path.h"

#include <kestrelsettingui.h>

#include <functional>

using namespace kestrel::test;

namespace {

// A message handler has no other way to them.
std::function<void()> atTheBackend;          // NOLINT
QtMessageHandler messagesAsBefore = nullptr; // NOLINT

void lookAtTheBackend(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (QByteArray(context.function).contains("lockFunctionByVid")) {
        atTheBackend();
    }
    messagesAsBefore(type, context, text);
}

/// Does something while the dialog looks at the backend, which it tells in the log.
class AtTheBackend
{
public:
    explicit AtTheBackend(std::function<void()> what)
    {
        atTheBackend = std::move(what);
        messagesAsBefore = qInstallMessageHandler(lookAtTheBackend);
    }
    ~AtTheBackend() { qInstallMessageHandler(messagesAsBefore); }
    Q_DISABLE_COPY_MOVE(AtTheBackend)
};

} // namespace

TEST_F(VendorAtItsPath, FirstTheBackendThenTheLibraryThenTheScanner)
{
    install(VENDOR_FULL_LIBRARY, "Ordered");
    FakeScanner last = fullScanner();
    bind(last, "Last");
    int looks = 0;
    int calls = 0;
    scanner.before(CallKind::Describe, [this, &calls](FakeScanner&) {
        ++calls;
        EXPECT_TRUE(dialog().vendor_driver.hasDriver());
        EXPECT_EQ(dialog().sane_handle, scanner.handle());
    });
    const AtTheBackend look([this, &looks, &last] {
        ++looks;
        EXPECT_FALSE(dialog().vendor_driver.hasDriver());
        EXPECT_EQ(dialog().sane_handle, last.handle());
    });
    bind(scanner, "Ordered");
    EXPECT_EQ(looks, 1);
    EXPECT_GT(calls, 0);
}

TEST_F(VendorAtItsPath, AnotherHandleAloneLoadsNothing)
{
    bind(scanner, "Later");
    install(VENDOR_FULL_LIBRARY, "Later");
    FakeScanner opened = fullScanner();
    setDevice(dialog().host(), opened.handle());
    EXPECT_EQ(dialog().sane_handle, opened.handle());
    EXPECT_FALSE(dialog().vendor_driver.hasDriver());
    dialog().setScannerInfo();
    expectCounters(1234, 5678, 0);
}

TEST_F(VendorAtItsPath, CountersAreReadWithoutAScanner)
{
    const VendorStub& stub = install(VENDOR_FULL_LIBRARY, "Unbound");
    dialog().vendor_driver.load(pathOf("Unbound"));
    dialog().setScannerInfo();
    EXPECT_STREQ(stub.calls, "IDR");
    expectCounters(102, 102, 105);
    EXPECT_EQ(information(), dialog().system_text);
}

TEST_F(VendorAtItsPath, AnExceptionOfTheVendorsLeavesTheInformation)
{
    VendorStub& stub = install(VENDOR_FULL_LIBRARY, "Throwing");
    stub.hook = [](char) { throw 1; };
    bind(scanner, "Throwing");
    EXPECT_NO_THROW(dialog().getScannerRollerCount());
    EXPECT_NO_THROW(dialog().setScannerInfo());
    EXPECT_STREQ(stub.calls, "II");
    expectCounters(1234, 5678, 0);
    EXPECT_TRUE(information().contains(QStringLiteral("自动分纸滚轮/垫片次数：1234\n")));
}
