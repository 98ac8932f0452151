#include <page_export.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cmath>

namespace {

using kestrel::exportFiles;
using kestrel::exportPages;
using kestrel::FileFormat;
using kestrel::Page;
using kestrel::PageStore;

class PageExport : public testing::Test
{
protected:
    void addPage(int width, int height, int dpi, const QColor& colour = Qt::red)
    {
        QImage image(width, height, QImage::Format_RGB888);
        image.fill(colour);
        Page page;
        ASSERT_EQ(m_store.add(image, dpi, page), QString());
        m_pages.push_back(page);
    }

    QString path(const char* name) const { return m_dir.filePath(name); }

    static QByteArray content(const QString& file)
    {
        QFile f(file);
        EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << qPrintable(file);
        return f.readAll();
    }

    QTemporaryDir m_dir;
    PageStore m_store{m_dir.filePath("pages")};
    std::vector<Page> m_pages;
};

/// The sizes of the pages of a PDF, in millimetres, as its MediaBox entries say.
std::vector<QSizeF> pageSizes(const QByteArray& pdf)
{
    static const QRegularExpression box("/MediaBox \\[\\s*0 0 ([0-9.]+) ([0-9.]+)\\s*\\]");
    std::vector<QSizeF> sizes;
    auto match = box.globalMatch(QString::fromLatin1(pdf.constData(), pdf.size()));
    while (match.hasNext()) {
        const auto found = match.next();
        sizes.emplace_back(found.captured(1).toDouble() / 72 * 25.4,
                           found.captured(2).toDouble() / 72 * 25.4);
    }
    return sizes;
}

} // namespace

TEST_F(PageExport, PdfPagesHaveTheSizeOfThePaper)
{
    struct Row
    {
        int width, height, dpi;
        double widthMm, heightMm;
    };
    const Row rows[] = {
        {2480, 3508, 300, 210, 297},    // A4
        {1654, 2339, 200, 210, 297},    // A4, less fine
        {1754, 1240, 300, 148.5, 105},  // a postcard, wide
        {850, 1100, 100, 215.9, 279.4}, // letter
        {300, 3000, 100, 76.2, 762},    // a long receipt
        {59, 118, 300, 4.995, 9.991},   // as small as can be
    };
    for (const Row& row : rows) {
        addPage(row.width, row.height, row.dpi);
    }
    ASSERT_EQ(exportPages(m_pages, path("x.pdf"), FileFormat::Pdf), QString());
    const QByteArray pdf = content(path("x.pdf"));
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_TRUE(pdf.trimmed().endsWith("%%EOF"));
    const auto sizes = pageSizes(pdf);
    ASSERT_EQ(sizes.size(), std::size(rows));
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        // PDF pages are whole points here, a third of a millimetre.
        EXPECT_NEAR(sizes[i].width(), rows[i].widthMm, 0.18) << "page " << i;
        EXPECT_NEAR(sizes[i].height(), rows[i].heightMm, 0.18) << "page " << i;
    }
}

TEST_F(PageExport, PdfHoldsThePicturesInFullResolution)
{
    addPage(640, 480, 150);
    addPage(320, 240, 300);
    ASSERT_EQ(exportPages(m_pages, path("x.pdf"), FileFormat::Pdf), QString());
    const QByteArray pdf = content(path("x.pdf"));
    EXPECT_TRUE(pdf.contains("/Width 640\n/Height 480"));
    EXPECT_TRUE(pdf.contains("/Width 320\n/Height 240"));
}

TEST_F(PageExport, OnePictureKeepsItsName)
{
    addPage(40, 20, 200, QColor(10, 200, 30));
    ASSERT_EQ(exportPages(m_pages, path("x.png"), FileFormat::Png), QString());
    const QImage image(path("x.png"));
    ASSERT_EQ(image.size(), QSize(40, 20));
    EXPECT_EQ(image.pixelColor(3, 3), QColor(10, 200, 30));
    EXPECT_EQ(image.dotsPerMeterX(), 7874);
}

TEST_F(PageExport, SeveralPicturesAreNumbered)
{
    addPage(4, 4, 100, Qt::red);
    addPage(4, 4, 100, Qt::green);
    ASSERT_EQ(exportPages(m_pages, path("my.scan.png"), FileFormat::Png), QString());
    EXPECT_EQ(QImage(path("my.scan-001.png")).pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(QImage(path("my.scan-002.png")).pixelColor(0, 0), QColor(Qt::green));
    EXPECT_FALSE(QFileInfo::exists(path("my.scan.png")));
}

TEST_F(PageExport, NamesFollowFormatAndNumber)
{
    EXPECT_EQ(exportFiles("/d/a.pdf", FileFormat::Pdf, 9), QStringList{"/d/a.pdf"});
    EXPECT_EQ(exportFiles("/d/a.tif", FileFormat::Tiff, 1), QStringList{"/d/a.tif"});
    EXPECT_EQ(exportFiles("/d/a.png", FileFormat::Png, 2),
              (QStringList{"/d/a-001.png", "/d/a-002.png"}));
    EXPECT_EQ(exportFiles("/d/a.png", FileFormat::Png, 1000).first(), "/d/a-0001.png");
    EXPECT_EQ(exportFiles("/d/a%1.png", FileFormat::Png, 2).first(), "/d/a%1-001.png");
}

TEST_F(PageExport, ProgressCountsThePagesAndMayStop)
{
    addPage(4, 4, 100);
    addPage(4, 4, 100);
    addPage(4, 4, 100);
    std::vector<int> seen;
    ASSERT_EQ(exportPages(m_pages, path("x.pdf"), FileFormat::Pdf,
                          [&](int done) {
                              seen.push_back(done);
                              return true;
                          }),
              QString());
    EXPECT_EQ(seen, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(exportPages(m_pages, path("stopped.pdf"), FileFormat::Pdf, [](int) { return false; }),
              QString());
    EXPECT_FALSE(QFileInfo::exists(path("stopped.pdf"))) << "half a document is none";
}

TEST_F(PageExport, TroubleIsSaidInWordsAndLeavesTheOldFile)
{
    EXPECT_TRUE(exportPages({}, path("x.pdf"), FileFormat::Pdf)
                    .contains(QStringLiteral("没有可以保存的图像")));
    addPage(4, 4, 100);
    EXPECT_TRUE(exportPages(m_pages, path("none/x.pdf"), FileFormat::Pdf)
                    .contains(QStringLiteral("无法写入文件")));
    EXPECT_TRUE(exportPages(m_pages, path("none/x.png"), FileFormat::Png)
                    .contains(QStringLiteral("无法写入文件")));

    QFile old(path("x.pdf"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    ASSERT_TRUE(QFile::remove(m_pages.front().file));
    EXPECT_TRUE(
        exportPages(m_pages, path("x.pdf"), FileFormat::Pdf).contains(QStringLiteral("无法读取")));
    EXPECT_EQ(content(path("x.pdf")), "old");
}

TEST_F(PageExport, EveryOfferedFormatCanBeWritten)
{
    addPage(16, 12, 100, QColor(1, 2, 3));
    const auto formats = kestrel::availableFormats();
    ASSERT_GE(formats.size(), 2u);
    for (const FileFormat format : formats) {
        const QString file = m_dir.filePath("all." + kestrel::fileSuffix(format));
        EXPECT_EQ(exportPages(m_pages, file, format), QString());
        EXPECT_GT(QFileInfo(file).size(), 0) << qPrintable(file);
        EXPECT_TRUE(kestrel::fileFilter(format).contains("*." + kestrel::fileSuffix(format)));
        if (format != FileFormat::Pdf) {
            EXPECT_EQ(QImage(file).pixelColor(5, 5), QColor(1, 2, 3));
        }
    }
}

TEST_F(PageExport, PageSizeFollowsTheResolution)
{
    Page page;
    page.pixels = {300, 600};
    page.dpi = 300;
    EXPECT_DOUBLE_EQ(kestrel::pageSizeMm(page).width(), 25.4);
    EXPECT_DOUBLE_EQ(kestrel::pageSizeMm(page).height(), 50.8);
}
