// A save of what was confirmed that failed is made up for as soon as the dialog has an occasion.
#include "config_manager.h"

#include <QDir>

using namespace kestrel;
using namespace kestrel::test;

namespace {

class LeftOver : public TemplatesBench
{
protected:
    static inline const QString confirmed = QStringLiteral("ScannerA/brightness");

    /// Confirms something while the file can't be written; it can be after that.
    void confirmInVain()
    {
        bind(m_scanner);
        const QString obstacle = folder().file(QStringLiteral("ScannerA.ini.lock"));
        ASSERT_TRUE(QDir().mkdir(obstacle));
        setBrightness(14);
        ok();
        ASSERT_TRUE(QDir().rmdir(obstacle));
        ASSERT_EQ(onDisk(confirmed), QStringLiteral("0"));
    }
};

} // namespace

TEST_F(LeftOver, IsSavedWhenTheDialogIsClosed)
{
    confirmInVain();
    dialog().show();
    setBrightness(15);
    cancel();
    EXPECT_EQ(brightness(), 14);
    EXPECT_EQ(onDisk(confirmed), QStringLiteral("14"));
}

TEST_F(LeftOver, IsSavedWhenAnotherScannerIsBound)
{
    confirmInVain();
    FakeScanner other = fullScanner();
    bind(other, "ScannerB");
    EXPECT_EQ(onDisk(confirmed), QStringLiteral("14"));
}

TEST_F(LeftOver, IsSavedWhenTheDialogIsDeleted)
{
    confirmInVain();
    deleteDialog();
    EXPECT_EQ(onDisk(confirmed), QStringLiteral("14"));
}

TEST_F(LeftOver, IsSavedThoughAnotherScannerHasBeenBoundMeanwhile)
{
    bind(m_scanner);
    setBrightness(14);
    const QString obstacle = folder().file(QStringLiteral("ScannerA.ini.lock"));
    ASSERT_TRUE(QDir().mkdir(obstacle));
    ok();
    FakeScanner other = fullScanner();
    bind(other, "ScannerB");
    ASSERT_TRUE(QDir().rmdir(obstacle));
    ASSERT_EQ(onDisk(confirmed), QStringLiteral("0"));
    dialog().show();
    cancel();
    EXPECT_EQ(onDisk(confirmed), QStringLiteral("14"));
}

TEST_F(LeftOver, OfTheManagerIsSavedWhenTheDialogIsClosed)
{
    start({QStringLiteral("Office"), QStringLiteral("Photo")});
    const QString obstacle = folder().file(QStringLiteral("ScannerA.ini.lock"));
    openManager([&] {
        ASSERT_TRUE(QDir().mkdir(obstacle));
        remove(1);
    });
    ASSERT_TRUE(QDir().rmdir(obstacle));
    ASSERT_EQ(onDisk(list), QStringLiteral("自订;Office;Photo"));
    dialog().show();
    cancel();
    EXPECT_EQ(onDisk(list), QStringLiteral("自订;Photo"));
    EXPECT_EQ(keysOnDisk(QStringLiteral("Office")), 0);
}

TEST_F(LeftOver, OfNothingLeavesTheFileAlone)
{
    bind(m_scanner);
    ok();
    folder().write(QStringLiteral("ScannerA.ini"), bytes() + "[Other]\nkey=1\n");
    const QByteArray written = bytes();
    dialog().show();
    cancel();
    deleteDialog();
    EXPECT_EQ(bytes(), written);
}
