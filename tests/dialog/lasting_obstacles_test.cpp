// What may stand where the settings file belongs: the dialog works with the device's values, and
// says nothing.
#include "config_first_file.h"
#include "config_manager.h"

#include <QFileInfo>

#include <csignal>
#include <random>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

/// Gives up a superuser's rights for a while, so that permissions mean something.
class OrdinaryUser
{
public:
    OrdinaryUser()
    {
        if (m_user == 0) {
            EXPECT_EQ(::setegid(kNobody), 0);
            EXPECT_EQ(::seteuid(kNobody), 0);
        }
    }
    ~OrdinaryUser()
    {
        EXPECT_EQ(::seteuid(m_user), 0);
        EXPECT_EQ(::setegid(m_group), 0);
    }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

private:
    static constexpr uid_t kNobody = 65534;
    uid_t m_user = ::geteuid();
    gid_t m_group = ::getegid();
};

/// No file may grow beyond this size while the object lives.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &m_before), 0);
        const rlimit limit{bytes, m_before.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit()
    {
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &m_before), 0);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};

class Obstacles : public TemplatesBench
{
protected:
    Obstacles() { m_scanner.option("brightness").word(33); }

    QString path() const { return folder().file(QStringLiteral("ScannerA.ini")); }
    QByteArray name() const { return QFile::encodeName(path()); }
    QStringList files() const
    {
        return QDir(QString::fromUtf8(folder().path()))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    /// Binds; the dialog shows the device's values, and while it lives everything works with it.
    void expectToWork()
    {
        const MessageBoxes none;
        bind(m_scanner);
        expectToWorkBound();
        EXPECT_TRUE(none.shown().empty());
    }

    void expectToWorkBound()
    {
        EXPECT_EQ(brightness(), 33);
        EXPECT_EQ(items(templates()), QStringList(working));
        EXPECT_EQ(get<QComboBox>("source").count(), 3);
        setBrightness(12);
        dialog().show();
        ok();
        EXPECT_FALSE(dialog().isVisible());
        setBrightness(70);
        cancel();
        EXPECT_EQ(brightness(), 12);
        press(get<QAbstractButton>("default_setting"));
        EXPECT_EQ(brightness(), 33);
        setBrightness(20);
        openManager([this] { add(QStringLiteral("Office")); });
        EXPECT_EQ(templates().count(), 2);
        templates().setCurrentIndex(1);
        EXPECT_EQ(brightness(), 20);
        openManager([this] { remove(1); });
        EXPECT_EQ(templates().count(), 1);
        m_scanner.clearJournal();
        setAllParamBySettingUI(dialog().host());
        EXPECT_EQ(m_scanner.journal().setsOf("brightness"), std::vector<std::string>{"12"});
        m_scanner.option("brightness").word(33);
        settle();
    }
};

} // namespace

TEST_F(Obstacles, NoneAtAll)
{
    expectToWork();
    EXPECT_EQ(files(), QStringList{QStringLiteral("ScannerA.ini")});
}

TEST_F(Obstacles, AMissingFolderIsMade)
{
    const QByteArray deep = QByteArray(folder().path()) + "/not/there/yet";
    bindIn(m_scanner, "ScannerA", deep.constData());
    expectToWorkBound();
    EXPECT_TRUE(QFileInfo::exists(QString::fromUtf8(deep) + QStringLiteral("/ScannerA.ini")));
}

TEST_F(Obstacles, AFolderThatCantBeMade)
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

TEST_F(Obstacles, AFolderThatCantBeWritten)
{
    ASSERT_EQ(::chmod(folder().path(), 0555), 0);
    {
        const OrdinaryUser user;
        expectToWork();
    }
    ASSERT_EQ(::chmod(folder().path(), 0755), 0);
    EXPECT_TRUE(files().isEmpty()) << files().join(QLatin1Char(' ')).toStdString();
}

TEST_F(Obstacles, AFileThatCantBeReplacedIsStillRead)
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

TEST_F(Obstacles, AFileThatCantBeRead)
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

TEST_F(Obstacles, FiftyMegabytesAreMovedAside)
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

TEST_F(Obstacles, SerializedObjectsAreMovedAside)
{
    const QByteArray hostile =
        "[ScannerA]\nbrightness=@Variant(\\0\\0\\0\\t\\xff\\xff\\xff\\xff)\n";
    folder().write(QStringLiteral("ScannerA.ini.bad-1"), "an older one");
    folder().write(QStringLiteral("ScannerA.ini"), hostile);
    expectToWork();
    EXPECT_EQ(folder().read(QStringLiteral("ScannerA.ini.bad-1")), "an older one");
    EXPECT_EQ(folder().read(QStringLiteral("ScannerA.ini.bad-2")), hostile);
}

TEST_F(Obstacles, BinaryFiles)
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

TEST_F(Obstacles, TextInOtherEncodings)
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

TEST_F(Obstacles, AFileThatEndsAnywhere)
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

TEST_F(Obstacles, ADiskWithoutRoomKeepsTheOldFile)
{
    bind(m_scanner);
    setBrightness(-9);
    ok();
    const QByteArray before = bytes();
    for (const rlim_t room : {0UL, 1UL, 100UL, static_cast<unsigned long>(before.size()) - 1}) {
        const MessageBoxes none;
        dialog().show();
        setBrightness(44);
        {
            const FileSizeLimit limit(room);
            ok();
        }
        EXPECT_FALSE(dialog().isVisible());
        EXPECT_EQ(bytes(), before) << room;
        setBrightness(45);
        cancel();
        EXPECT_EQ(brightness(), 44);
    }
    // With room again the next OK saves.
    ok();
    restart(m_scanner);
    EXPECT_EQ(brightness(), 44);
}

TEST_F(Obstacles, AFirstBindingOnADiskWithoutRoom)
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
