// Someone clones the project, types ./demo and looks at what is there.
#include "program.h"

#include <QFileInfo>
#include <QSet>

namespace {

/// @return whether more than one colour is in the picture
bool showsSomething(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0)) {
                return true;
            }
        }
    }
    return false;
}

class Newcomer : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_dir = std::make_unique<QTemporaryDir>();
        // Whoever would change the system is stopped and leaves a trace.
        for (const char* name : {"apt-get", "sudo"}) {
            QFile trap(s_dir->filePath(name));
            ASSERT_TRUE(trap.open(QIODevice::WriteOnly));
            trap.write("#!/bin/sh\ntouch '" + s_dir->filePath("touched").toUtf8() + "'\nexit 1\n");
            trap.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        QProcess demo;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("PATH", s_dir->path() + ':' + environment.value("PATH"));
        // As a fresh shell would have it.
        for (const char* name : {"SANE_CONFIG_DIR", "LD_LIBRARY_PATH", "QT_QPA_PLATFORM"}) {
            environment.remove(name);
        }
        demo.setProcessEnvironment(environment);
        demo.setProcessChannelMode(QProcess::MergedChannels);
        demo.start(KESTREL_TOP "/demo",
                   {"--headless", "--out", s_dir->filePath("out"), "--build", KESTREL_DEMO_BUILD});
        ASSERT_TRUE(demo.waitForFinished(1'500'000));
        s_said = QString::fromUtf8(demo.readAll());
        s_exitCode = demo.exitStatus() == QProcess::NormalExit ? demo.exitCode() : -1;
    }
    static void TearDownTestSuite() { s_dir.reset(); }

    static QString out(const QString& name) { return s_dir->filePath("out/" + name); }
    static QStringList files(const QString& pattern, const QString& folder = {})
    {
        return QDir(out(folder)).entryList({pattern}, QDir::Files, QDir::Name);
    }

    static std::unique_ptr<QTemporaryDir> s_dir;
    static QString s_said;
    static int s_exitCode;
};

std::unique_ptr<QTemporaryDir> Newcomer::s_dir;
QString Newcomer::s_said;
int Newcomer::s_exitCode = -1;

} // namespace

TEST_F(Newcomer, DemoSucceeds)
{
    EXPECT_EQ(s_exitCode, 0) << qPrintable(s_said);
}

TEST_F(Newcomer, NothingIsDoneToASystemThatHasEverything)
{
    EXPECT_FALSE(QFile::exists(s_dir->filePath("touched")));
    EXPECT_FALSE(s_said.contains("will be installed"));
}

TEST_F(Newcomer, EveryTabHasItsPicture)
{
    const QStringList tabs = files("tab-*.png");
    ASSERT_GE(tabs.size(), 9);
    QSet<QByteArray> different;
    for (const QString& tab : tabs) {
        const QImage image(out(tab));
        EXPECT_GE(image.width(), 600) << qPrintable(tab);
        EXPECT_GE(image.height(), 500) << qPrintable(tab);
        EXPECT_TRUE(showsSomething(image)) << qPrintable(tab);
        QFile file(out(tab));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        different.insert(file.readAll());
    }
    EXPECT_EQ(different.size(), tabs.size()) << "no two tabs look the same";
}

TEST_F(Newcomer, WindowHasItsPicture)
{
    EXPECT_TRUE(showsSomething(QImage(out("window.png"))));
}

TEST_F(Newcomer, ScannedPagesAreInTheFolderAndInTheDocument)
{
    const QStringList pages = files("page-*.png", "pages");
    ASSERT_GE(pages.size(), 2);
    for (const QString& page : pages) {
        const QImage image(out("pages/" + page));
        EXPECT_GT(image.width(), 1000) << qPrintable(page);
        EXPECT_TRUE(showsSomething(image)) << qPrintable(page);
    }
    EXPECT_EQ(kestrel::test::pdfPages(out("demo.pdf")), pages.size());
}

TEST_F(Newcomer, IsToldWhatThereIs)
{
    for (const char* name : {"demo.pdf", "pages/", "tab-*.png", "window.png"}) {
        EXPECT_TRUE(s_said.contains(name)) << name;
    }
    EXPECT_TRUE(s_said.contains(s_dir->filePath("out")));
}
