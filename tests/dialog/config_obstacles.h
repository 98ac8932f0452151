/// @file
/// A settings file in trouble, and a user who goes on working with the dialog.
#pragma once

#include "config_manager.h"

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrel::test {

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

} // namespace kestrel::test
