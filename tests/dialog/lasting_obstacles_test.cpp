// What may stand where the settings file belongs: the dialog works with the device's values, and
// says nothing.
#include "config_obstacles.h"

#include <QFileInfo>

using namespace kestrel;
using namespace kestrel::test;

TEST_F(Obstacles, NoneAtAll)
{
    expectToWork();
    EXPECT_EQ(files(), QStringList{QStringLiteral("ScannerA.ini")});
}

TEST_F(Obstacles, APipe)
{
    ASSERT_EQ(::mkfifo(name().constData(), 0666), 0);
    expectToWork();
    struct stat status
    {
    };
    ASSERT_EQ(::lstat(name().constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(Obstacles, ADirectory)
{
    ASSERT_TRUE(QDir().mkdir(path()));
    expectToWork();
    EXPECT_TRUE(QFileInfo(path()).isDir());
    EXPECT_EQ(files(), QStringList{QStringLiteral("ScannerA.ini")});
}

TEST_F(Obstacles, ADanglingLink)
{
    ASSERT_EQ(::symlink("nowhere", name().constData()), 0);
    expectToWork();
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(files().size(), 1);
}

TEST_F(Obstacles, ADevice)
{
    ASSERT_EQ(::symlink("/dev/zero", name().constData()), 0);
    expectToWork();
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
}

TEST_F(Obstacles, SomethingThatComesInTheWayLater)
{
    bind(m_scanner);
    const QByteArray before = bytes();
    const QString away = path() + QStringLiteral(".away");
    ASSERT_TRUE(QFile::rename(path(), away));
    ASSERT_EQ(::mkfifo(name().constData(), 0666), 0);
    expectToWorkBound();
    setBrightness(14);
    ok();
    ASSERT_EQ(::unlink(name().constData()), 0);
    ASSERT_TRUE(QFile::rename(away, path()));
    EXPECT_EQ(bytes(), before);
    // The way is clear again: leaving saves what the session confirmed.
    restart(m_scanner);
    EXPECT_EQ(brightness(), 14);
}
