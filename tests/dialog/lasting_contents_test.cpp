// Files that are no settings file, or only a part of one.
#include "config_obstacles.h"

#include <QFileInfo>

#include <random>

using namespace kestrel;
using namespace kestrel::test;

namespace {

using Contents = Obstacles;

} // namespace

TEST_F(Contents, FiftyMegabytesAreMovedAside)
{
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QByteArray megabyte(1024 * 1024, 'x');
    for (int i = 0; i < 50; ++i) {
        ASSERT_EQ(file.write(megabyte), megabyte.size());
    }
    file.close();
    expectToWork();
    EXPECT_EQ(files(),
              (QStringList{QStringLiteral("ScannerA.ini"), QStringLiteral("ScannerA.ini.bad-1")}));
    EXPECT_EQ(QFileInfo(path() + QStringLiteral(".bad-1")).size(), 50 * megabyte.size());
    EXPECT_EQ(onDisk(QStringLiteral("ScannerA/brightness")), QStringLiteral("12"));
}

TEST_F(Contents, SerializedObjectsAreMovedAside)
{
    const QByteArray hostile =
        "[ScannerA]\nbrightness=@Variant(\\0\\0\\0\\t\\xff\\xff\\xff\\xff)\n";
    folder().write(QStringLiteral("ScannerA.ini.bad-1"), "an older one");
    folder().write(QStringLiteral("ScannerA.ini"), hostile);
    expectToWork();
    EXPECT_EQ(folder().read(QStringLiteral("ScannerA.ini.bad-1")), "an older one");
    EXPECT_EQ(folder().read(QStringLiteral("ScannerA.ini.bad-2")), hostile);
}

TEST_F(Contents, BinaryFiles)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int round = 0; round < 5; ++round) {
        QByteArray noise(20000, '\0');
        for (char& c : noise) {
            c = static_cast<char>(byte(random));
        }
        beginAnew();
        folder().write(QStringLiteral("ScannerA.ini"), noise);
        expectToWork();
        setBrightness(21);
        ok();
        restart(m_scanner);
        EXPECT_EQ(brightness(), 21);
    }
}

TEST_F(Contents, TextInOtherEncodings)
{
    const QString text =
        QStringLiteral("[ScannerAconfig_version]\nconfig_version=101\n[备注]\n字=文\n");
    QByteArray utf16("\xff\xfe", 2);
    utf16.append(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    for (const QByteArray& content :
         {utf16, QByteArray("\xef\xbb\xbf") + text.toUtf8(), text.toUtf8(),
          QByteArray("[\xb1\xb8\xd7\xa2]\n\xd7\xd6=\xce\xc4\n"),
          text.toUtf8().replace("\n", "\r\n"), text.toUtf8().replace("\n", "\r")}) {
        beginAnew();
        folder().write(QStringLiteral("ScannerA.ini"), content);
        expectToWork();
        setBrightness(22);
        ok();
        restart(m_scanner);
        EXPECT_EQ(brightness(), 22) << content.constData();
    }
}

TEST_F(Contents, AFileThatEndsAnywhere)
{
    start({QStringLiteral("A")});
    setBrightness(-1);
    ok();
    const QByteArray whole = bytes();
    for (int size = 0; size < whole.size(); size += 61) {
        beginAnew();
        const QByteArray cut = whole.left(size);
        folder().write(QStringLiteral("ScannerA.ini"), cut);
        const MessageBoxes none;
        bind(m_scanner);
        // What is left of it counts: the template stands first in the file.
        if (cut.contains("[A]\nbrightness=1\n")) {
            EXPECT_EQ(onDisk(QStringLiteral("A/brightness")), QStringLiteral("1")) << size;
        }
        if (cut.contains("config_version=102\n")) {
            EXPECT_EQ(brightness(), -1) << size;
        } else {
            EXPECT_EQ(brightness(), 33) << size;
        }
        setBrightness(5);
        ok();
        restart(m_scanner);
        EXPECT_EQ(brightness(), 5) << size;
    }
}
