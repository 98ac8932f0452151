// What a session could not save, and a file that goes while it runs.
#include "config_manager.h"

#include <csignal>

#include <sys/resource.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

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
