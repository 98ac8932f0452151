#include <language.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTranslator>

namespace {

class Language : public testing::Test
{
protected:
    ~Language() override
    {
        // A translator that goes takes its texts with it.
        qDeleteAll(QCoreApplication::instance()->findChildren<QTranslator*>());
    }

    /// Puts both catalogues into a folder below this test's own.
    void install(const QString& folder)
    {
        const QString to = QDir::cleanPath(m_dir.filePath(folder));
        ASSERT_TRUE(QDir().mkpath(to));
        for (const char* name : {"/kestrel-scan_en.qm", "/kestrel-settingui_en.qm"}) {
            ASSERT_TRUE(QFile::copy(QLatin1String(KESTREL_TRANSLATIONS) + QLatin1String(name),
                                    to + QLatin1String(name)));
        }
    }

    static QString ofProgram() { return QCoreApplication::translate("StatusText", "正常"); }
    static QString ofDialog() { return QCoreApplication::translate("KestrelSetting", "扫描设置"); }

    /// @return what the program prints for --help
    static QString help(const char* variable, const char* locale)
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* other : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
            environment.remove(QLatin1String(other));
        }
        environment.insert(QLatin1String(variable), QLatin1String(locale));
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(KESTREL_SCAN_PROGRAM), {QStringLiteral("--help")});
        EXPECT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitCode(), 0);
        return QString::fromUtf8(program.readAllStandardOutput());
    }

    QTemporaryDir m_dir;
};

} // namespace

TEST_F(Language, FirstOfTheUsersLanguagesThatIsKnownIsTaken)
{
    EXPECT_EQ(kestrel::catalogueFor({"en-US", "en"}), "en");
    EXPECT_EQ(kestrel::catalogueFor({"de", "de-DE", "en", "en-US"}), "en");
    EXPECT_EQ(kestrel::catalogueFor({"en", "zh-CN"}), "en");
    EXPECT_EQ(kestrel::catalogueFor({"zh-CN", "zh", "en"}), QString());
    EXPECT_EQ(kestrel::catalogueFor({"de"}), QString());
    EXPECT_EQ(kestrel::catalogueFor({"C"}), QString());
    EXPECT_EQ(kestrel::catalogueFor({}), QString());
}

TEST_F(Language, EnglishIsFoundBesideTheProgramAsInABuildTree)
{
    install("translations");
    kestrel::speak({"en"}, m_dir.filePath("scanhost"));
    EXPECT_EQ(ofProgram(), "All is well");
    EXPECT_EQ(ofDialog(), "Scan settings");
}

TEST_F(Language, EnglishIsFoundWhereItIsInstalled)
{
    install("bin/" KESTREL_TRANSLATIONS_FROM_BIN);
    kestrel::speak({"en-GB"}, m_dir.filePath("bin"));
    EXPECT_EQ(ofProgram(), "All is well");
    EXPECT_EQ(ofDialog(), "Scan settings");
}

TEST_F(Language, ChineseIsSpokenByItself)
{
    install("translations");
    kestrel::speak({"zh-CN", "en"}, m_dir.filePath("scanhost"));
    EXPECT_EQ(ofProgram(), "正常");
    EXPECT_EQ(ofDialog(), "扫描设置");
}

TEST_F(Language, WithoutCataloguesTheProgramStaysChinese)
{
    kestrel::speak({"en"}, m_dir.filePath("scanhost"));
    EXPECT_EQ(ofProgram(), "正常");
    EXPECT_TRUE(QCoreApplication::instance()->findChildren<QTranslator*>().isEmpty());
}

TEST_F(Language, BrokenCatalogueIsPassedOver)
{
    ASSERT_TRUE(QDir().mkpath(m_dir.filePath("translations")));
    QFile file(m_dir.filePath("translations/kestrel-scan_en.qm"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(1000, 'x'));
    file.close();
    kestrel::speak({"en"}, m_dir.filePath("scanhost"));
    EXPECT_EQ(ofProgram(), "正常");
}

TEST_F(Language, ProgramFollowsTheLocaleOfItsUser)
{
    EXPECT_TRUE(help("LC_ALL", "en_US.UTF-8").contains("list the scanners and stop"));
    EXPECT_TRUE(help("LANG", "en_GB.UTF-8").contains("list the scanners and stop"));
    EXPECT_TRUE(help("LANG", "zh_CN.UTF-8").contains("列出扫描仪"));
    EXPECT_TRUE(help("LC_ALL", "C.UTF-8").contains("列出扫描仪"));
}
