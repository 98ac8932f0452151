// Someone clones the project, types ./demo and looks at what is there.
#include "program.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

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

int countOf(const QImage& image, QRgb colour)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixel(x, y) == colour ? 1 : 0;
        }
    }
    return count;
}

bool isBlackAndWhite(const QImage& image)
{
    return countOf(image, qRgb(0, 0, 0)) + countOf(image, qRgb(255, 255, 255)) ==
           image.width() * image.height();
}

QSizeF millimetres(const QImage& image)
{
    return {image.width() * 1000.0 / image.dotsPerMeterX(),
            image.height() * 1000.0 / image.dotsPerMeterY()};
}

/// @return the part of the pixels that are dark in both pictures or in none
/// @param offset where the top left corner of @p part lies in @p whole
double agreement(const QImage& part, const QImage& whole, const QPoint& offset)
{
    constexpr int dark = 128;
    const QRect common = part.rect() & whole.rect().translated(-offset);
    int equal = 0;
    for (int y = common.top(); y <= common.bottom(); ++y) {
        for (int x = common.left(); x <= common.right(); ++x) {
            const bool inPart = qGray(part.pixel(x, y)) < dark;
            const bool inWhole = qGray(whole.pixel(QPoint(x, y) + offset)) < dark;
            equal += inPart == inWhole ? 1 : 0;
        }
    }
    return common.isEmpty() ? 0.0 : equal / (1.0 * common.width() * common.height());
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
        // With warnings as errors, as everything was built a moment ago: ccache still has it then.
        ASSERT_EQ(QProcess::execute(KESTREL_CMAKE, {"-S", KESTREL_TOP, "-B", KESTREL_DEMO_BUILD,
                                                    "-G", "Ninja", "-DKESTREL_WERROR=ON"}),
                  0);
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

    /// @return what was drawn on the preview, in millimetres
    static QRectF selectedArea()
    {
        static const QRegularExpression words(
            R"(Area ([\d.]+) x ([\d.]+) mm at ([\d.]+), ([\d.]+))");
        const auto said = words.match(s_said);
        EXPECT_TRUE(said.hasMatch()) << qPrintable(s_said);
        const auto number = [&said](int n) { return said.captured(n).toDouble(); };
        return {number(3), number(4), number(1), number(2)};
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

TEST_F(Newcomer, SecondStartLooksLikeTheFirst)
{
    const QImage first(out("first-start.png"));
    const QImage second(out("second-start.png"));
    EXPECT_TRUE(showsSomething(first));
    EXPECT_EQ(first, second);
    EXPECT_EQ(first.size(), QImage(out("tab-01.png")).size());
    EXPECT_NE(first, QImage(out("tab-01.png")))
        << "what was confirmed is not what was there before";
}

TEST_F(Newcomer, PreviewShowsTheSelection)
{
    const QImage image(out("preview-selection.png"));
    EXPECT_TRUE(showsSomething(image));
    EXPECT_GT(countOf(image, qRgb(0, 174, 255)), 8 * 16) << "the handles of the selection";
    EXPECT_GT(countOf(image, qRgb(255, 0, 0)), 100) << "its outline";
}

TEST_F(Newcomer, PageOfTheAreaHasItsSize)
{
    const QRectF area = selectedArea();
    EXPECT_GT(area.width(), 15.0);
    EXPECT_GT(area.height(), 15.0);
    const QImage page(out("area.png"));
    EXPECT_TRUE(showsSomething(page));
    EXPECT_NEAR(millimetres(page).width(), area.width(), 1.0);
    EXPECT_NEAR(millimetres(page).height(), area.height(), 1.0);
}

TEST_F(Newcomer, ButtonOneScansBothSidesInColourAndInBlackAndWhite)
{
    const QStringList pages = files("page-*.png", "button-1");
    ASSERT_GE(pages.size(), 4);
    EXPECT_EQ(pages.size() % 4, 0) << "two images of two sides each";
    EXPECT_EQ(kestrel::test::pdfPages(out("button-1.pdf")), pages.size());
    int coloured = 0;
    for (int i = 0; i < pages.size(); ++i) {
        const QImage page(out("button-1/" + pages[i]));
        ASSERT_FALSE(page.isNull()) << qPrintable(pages[i]);
        if (i % 2 == 0) {
            EXPECT_GT(page.depth(), 8) << qPrintable(pages[i]);
            coloured += page.allGray() ? 0 : 1;
        } else {
            EXPECT_TRUE(isBlackAndWhite(page)) << qPrintable(pages[i]);
        }
    }
    EXPECT_GE(coloured, 2);
}

TEST_F(Newcomer, ButtonTwoScansTheFlatbedInGrayOnACentredA5)
{
    const QStringList pages = files("page-*.png", "button-2");
    ASSERT_EQ(pages.size(), 1);
    EXPECT_EQ(kestrel::test::pdfPages(out("button-2.pdf")), 1);
    const QImage page(out("button-2/" + pages[0]));
    EXPECT_TRUE(showsSomething(page));
    EXPECT_TRUE(page.allGray());
    EXPECT_FALSE(isBlackAndWhite(page));
    EXPECT_NEAR(millimetres(page).width(), 148.0, 0.5);
    EXPECT_NEAR(millimetres(page).height(), 210.0, 0.5);
}

TEST_F(Newcomer, AreaAndCentredPageShowTheSheetWhereTheyWereCutFromIt)
{
    // Both are of the sheet on the glass, at the same resolution.
    constexpr double glassWidth = 216.0;
    constexpr double a5Width = 148.0;
    const QImage area(out("area.png"));
    const QImage centred(out("button-2/page-0001.png"));
    ASSERT_FALSE(area.isNull() || centred.isNull());
    ASSERT_EQ(area.dotsPerMeterX(), centred.dotsPerMeterX());
    const double perMm = area.dotsPerMeterX() / 1000.0;
    const QPointF place = selectedArea().topLeft() - QPointF((glassWidth - a5Width) / 2, 0.0);
    const QPoint expected = (place * perMm).toPoint();
    double best = 0.0;
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            best = std::max(best, agreement(area, centred, expected + QPoint(dx, dy)));
        }
    }
    // One is colour and one gray: middle tones of the photo fall on either side of the threshold.
    EXPECT_GT(best, 0.98);
    EXPECT_LT(agreement(area, centred, expected + QPoint(12, 12)), 0.95)
        << "a picture without detail shows nothing";
}

TEST_F(Newcomer, IsToldWhatThereIs)
{
    for (const char* name :
         {"demo.pdf", "pages/", "tab-*.png", "window.png", "first-start.png", "second-start.png",
          "preview-selection.png", "area.png", "button-1", "button-2"}) {
        EXPECT_TRUE(s_said.contains(name)) << name;
    }
    EXPECT_TRUE(s_said.contains(s_dir->filePath("out")));
}
