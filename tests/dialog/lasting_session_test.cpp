// What a session could not save, and a file that goes while it runs.
#include "config_obstacles.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

class Session : public TemplatesBench
{
protected:
    QString path() const { return folder().file(QStringLiteral("ScannerA.ini")); }
};

} // namespace

TEST_F(Session, BindingAgainOnAFullDiskKeepsTheOldFile)
{
    bind(m_scanner);
    setBrightness(-9);
    ok();
    const QByteArray before = bytes();
    for (const rlim_t room : {1UL, 1000UL, static_cast<unsigned long>(before.size()) - 1}) {
        const FileSizeLimit limit(room);
        setBrightness(44);
        ok();
        bind(m_scanner);
        EXPECT_EQ(bytes(), before) << room;
        EXPECT_EQ(brightness(), 44);
        bind(m_scanner);
        EXPECT_EQ(bytes(), before) << room;
    }
    bind(m_scanner);
    ok();
    restart(m_scanner);
    EXPECT_EQ(brightness(), 44);
}

TEST_F(Session, BindingAgainWithALockThatCanNotBeTakenGoesOn)
{
    bind(m_scanner);
    setBrightness(-9);
    ok();
    const QByteArray before = bytes();
    const QString obstacle = path() + QStringLiteral(".lock");
    ASSERT_TRUE(QDir().mkdir(obstacle));
    setBrightness(44);
    ok();
    for (int round = 0; round < 2; ++round) {
        bind(m_scanner);
        EXPECT_EQ(brightness(), 44);
        openManager([this] { add(QStringLiteral("Office")); });
        EXPECT_EQ(templates().count(), 2);
        openManager([this] { remove(1); });
        EXPECT_EQ(templates().count(), 1);
    }
    EXPECT_EQ(bytes(), before);
    beginAnew();
    bind(m_scanner);
    EXPECT_EQ(brightness(), 44);
    setBrightness(45);
    ok();
    ASSERT_TRUE(QDir().rmdir(obstacle));
    leave();
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("45"));
}

TEST_F(Session, AnotherDialogOnAFullDiskLeavesNoTornFile)
{
    for (const rlim_t room : {1UL, 1000UL, 2000UL}) {
        const FileSizeLimit limit(room);
        for (int start = 0; start < 3; ++start) {
            beginAnew();
            bind(m_scanner);
            EXPECT_EQ(bytes(), QByteArray()) << room;
            setBrightness(44);
            ok();
        }
    }
    // With room again everything is saved at the end.
    leave();
    EXPECT_EQ(groupsOnDisk().size(), 4);
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("44"));
}

TEST_F(Session, ARemovedFileComesBackWhole)
{
    start({QStringLiteral("A")});
    ok();
    const QByteArray before = bytes();
    ASSERT_TRUE(QFile::remove(path()));
    ok();
    EXPECT_EQ(bytes(), before);
    setBrightness(17);
    ASSERT_TRUE(QFile::remove(path()));
    ok();
    restart(m_scanner);
    EXPECT_EQ(brightness(), 17);
    templates().setCurrentIndex(1);
    EXPECT_EQ(brightness(), 1);
}
