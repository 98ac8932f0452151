#include <simulator_env.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

class SimulatorEnv : public testing::Test
{
protected:
    void SetUp() override
    {
        m_config = qgetenv("SANE_CONFIG_DIR");
        m_path = qgetenv("LD_LIBRARY_PATH");
        qunsetenv("LD_LIBRARY_PATH");
    }
    void TearDown() override
    {
        qputenv("SANE_CONFIG_DIR", m_config);
        qputenv("LD_LIBRARY_PATH", m_path);
    }

    void touch(const QString& name)
    {
        const QString path = m_dir.filePath(name);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    QTemporaryDir m_dir;

private:
    QByteArray m_config;
    QByteArray m_path;
};

} // namespace

TEST_F(SimulatorEnv, IsFoundBesideTheProgramAsInABuildTree)
{
    touch("simulator/etc/dll.conf");
    touch("simulator/sane/x");
    EXPECT_EQ(kestrel::useSimulator(m_dir.filePath("scanhost")), QString());
    EXPECT_EQ(qgetenv("SANE_CONFIG_DIR"), m_dir.filePath("simulator/etc").toUtf8());
    EXPECT_EQ(qgetenv("LD_LIBRARY_PATH"), m_dir.filePath("simulator/sane").toUtf8());
}

TEST_F(SimulatorEnv, IsFoundWhereItIsInstalled)
{
    touch(QDir::cleanPath("bin/" KESTREL_SIMULATOR_FROM_BIN "/etc/dll.conf"));
    touch(QDir::cleanPath("bin/" KESTREL_SIMULATOR_FROM_BIN "/sane/x"));
    EXPECT_EQ(kestrel::useSimulator(m_dir.filePath("bin")), QString());
    EXPECT_TRUE(qgetenv("SANE_CONFIG_DIR").endsWith("kestrel-settingui/simulator/etc"));
}

TEST_F(SimulatorEnv, LibrariesOfTheUserStayFindable)
{
    touch("simulator/etc/dll.conf");
    touch("simulator/sane/x");
    qputenv("LD_LIBRARY_PATH", "/mine");
    kestrel::useSimulator(m_dir.filePath("scanhost"));
    EXPECT_EQ(qgetenv("LD_LIBRARY_PATH"), m_dir.filePath("simulator/sane").toUtf8() + ":/mine");
}

TEST_F(SimulatorEnv, MissingIsSaidAndNothingIsChanged)
{
    qputenv("SANE_CONFIG_DIR", "/before");
    EXPECT_FALSE(kestrel::useSimulator(m_dir.filePath("scanhost")).isEmpty());
    EXPECT_EQ(qgetenv("SANE_CONFIG_DIR"), "/before");
}
