// Folders and files that can not be made, read or written, and disks without room: the dialog
// works with what it has, and says nothing.
#include "config_first_file.h"
#include "config_obstacles.h"

#include <QFileInfo>

using namespace kestrel;
using namespace kestrel::test;

namespace {

using Permissions = Obstacles;

} // namespace

TEST_F(Permissions, AMissingFolderIsMade)
{
    const QByteArray deep = QByteArray(folder().path()) + "/not/there/yet";
    bindIn(m_scanner, "ScannerA", deep.constData());
    expectToWorkBound();
    EXPECT_TRUE(QFileInfo::exists(QString::fromUtf8(deep) + QStringLiteral("/ScannerA.ini")));
}

TEST_F(Permissions, AFolderThatCantBeMade)
{
    folder().write(QStringLiteral("file"), "no folder");
    for (const char* const below : {"/file", "/file/deeper", "/file/../file/x"}) {
        const QByteArray impossible = QByteArray(folder().path()) + below;
        bindIn(m_scanner, "ScannerA", impossible.constData());
        expectToWorkBound();
    }
    EXPECT_EQ(folder().read(QStringLiteral("file")), "no folder");
    for (const char* const impossible : {"/dev/null", "/proc/nowhere"}) {
        bindIn(m_scanner, "ScannerA", impossible);
        expectToWorkBound();
    }
}

TEST_F(Permissions, AFolderThatCantBeWritten)
{
    ASSERT_EQ(::chmod(folder().path(), 0555), 0);
    {
        const OrdinaryUser user;
        expectToWork();
    }
    ASSERT_EQ(::chmod(folder().path(), 0755), 0);
    EXPECT_TRUE(files().isEmpty()) << files().join(QLatin1Char(' ')).toStdString();
}

TEST_F(Permissions, AFileThatCantBeReplacedIsStillRead)
{
    bind(m_scanner);
    setBrightness(-9);
    ok();
    const QByteArray before = bytes();
    restart(m_scanner);
    leave();
    ASSERT_EQ(::chmod(folder().path(), 0555), 0);
    ASSERT_EQ(::chmod(name().constData(), 0444), 0);
    {
        const OrdinaryUser user;
        beginAnew();
        const MessageBoxes none;
        bind(m_scanner);
        EXPECT_EQ(brightness(), -9);
        setBrightness(44);
        dialog().show();
        ok();
        EXPECT_FALSE(dialog().isVisible());
        setBrightness(45);
        cancel();
        // Kept as long as the program runs.
        EXPECT_EQ(brightness(), 44);
        leave();
    }
    ASSERT_EQ(::chmod(folder().path(), 0755), 0);
    EXPECT_EQ(bytes(), before);
}

TEST_F(Permissions, AFileThatCantBeRead)
{
    folder().write(QStringLiteral("ScannerA.ini"), firstFile());
    ASSERT_EQ(::chmod(name().constData(), 0000), 0);
    ASSERT_EQ(::chmod(folder().path(), 0777), 0);
    {
        const OrdinaryUser user;
        expectToWork();
    }
    ASSERT_EQ(::chmod(name().constData(), 0644), 0);
    EXPECT_EQ(bytes(), firstFile());
}

TEST_F(Permissions, ADiskWithoutRoomKeepsTheOldFile)
{
    bind(m_scanner);
    setBrightness(-9);
    ok();
    const auto size = static_cast<unsigned long>(bytes().size());
    int confirmed = 44;
    for (const rlim_t room : {0UL, 1UL, 100UL, size - 1}) {
        const MessageBoxes none;
        const QByteArray before = bytes();
        dialog().show();
        setBrightness(++confirmed);
        {
            const FileSizeLimit limit(room);
            ok();
            EXPECT_FALSE(dialog().isVisible());
            EXPECT_EQ(bytes(), before) << room;
            setBrightness(99);
            cancel();
            EXPECT_EQ(brightness(), confirmed);
            EXPECT_EQ(bytes(), before) << room;
        }
        // With room again closing saves it, too.
        cancel();
        EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QString::number(confirmed));
    }
    restart(m_scanner);
    EXPECT_EQ(brightness(), confirmed);
}

TEST_F(Permissions, AFirstBindingOnADiskWithoutRoom)
{
    for (const rlim_t room : {0UL, 1UL, 1000UL}) {
        const QByteArray place =
            QByteArray(folder().path()) + '/' + QByteArray::number(qulonglong(room));
        {
            const FileSizeLimit limit(room);
            const MessageBoxes none;
            bindIn(m_scanner, "ScannerA", place.constData());
            expectToWorkBound();
        }
        // Nothing torn: what did not fit is not there at all.
        EXPECT_TRUE(QDir(QString::fromUtf8(place)).isEmpty()) << room;
        setBrightness(14);
        ok();
        EXPECT_TRUE(QFileInfo::exists(QString::fromUtf8(place) + QStringLiteral("/ScannerA.ini")));
    }
}
