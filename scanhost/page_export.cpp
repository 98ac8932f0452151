#include "page_export.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <algorithm>

namespace kestrel {

namespace {

QString exportText(const char* text)
{
    return QCoreApplication::translate("PageExport", text);
}

QString writeProblem(const QString& path, const QString& why)
{
    return exportText(QT_TRANSLATE_NOOP("PageExport", "无法写入文件 %1：%2")).arg(path, why);
}

QString readProblem(const Page& page)
{
    return exportText(QT_TRANSLATE_NOOP("PageExport", "无法读取已扫描的图像 %1")).arg(page.file);
}

QImage load(const Page& page)
{
    QImage picture = QImageReader(page.file, "png").read();
    const int dotsPerMetre = qRound(page.dpi / 0.0254);
    picture.setDotsPerMeterX(dotsPerMetre);
    picture.setDotsPerMeterY(dotsPerMetre);
    return picture;
}

QPageLayout layoutFor(const Page& page)
{
    const QPageSize size(pageSizeMm(page), QPageSize::Millimeter, QString(), QPageSize::ExactMatch);
    QPageLayout layout(size, QPageLayout::Portrait, QMarginsF());
    // Wide pages stay wide: the size says all, there is nothing to turn.
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

void drawPage(QPainter& painter, const QImage& picture)
{
    // Letters in black-and-white or few colours suffer from JPEG, photographs do not.
    painter.setRenderHint(QPainter::LosslessImageRendering, picture.depth() <= 8);
    painter.drawImage(painter.viewport(), picture);
}

QString exportPdf(const std::vector<Page>& pages, const QString& path,
                  const ExportProgress& progress)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return writeProblem(path, file.errorString());
    }
    {
        QPdfWriter writer(&file);
        writer.setCreator(QStringLiteral("kestrel-scan"));
        writer.setTitle(QFileInfo(path).completeBaseName());
        writer.setResolution(1200);
        writer.setPageLayout(layoutFor(pages.front()));
        QPainter painter;
        if (!painter.begin(&writer)) {
            return writeProblem(path, file.errorString());
        }
        int done = 0;
        for (const Page& page : pages) {
            const QImage picture = load(page);
            if (picture.isNull()) {
                return readProblem(page);
            }
            if (done > 0) {
                writer.setPageLayout(layoutFor(page));
                writer.newPage();
                painter.setViewport(0, 0, writer.width(), writer.height());
                painter.setWindow(painter.viewport());
            }
            drawPage(painter, picture);
            ++done;
            if (progress && !progress(done)) {
                return {};
            }
        }
        painter.end();
    }
    return file.commit() ? QString() : writeProblem(path, file.errorString());
}

QString exportImage(const Page& page, const QString& path, FileFormat format)
{
    const QImage picture = load(page);
    if (picture.isNull()) {
        return readProblem(page);
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return writeProblem(path, file.errorString());
    }
    QImageWriter writer(&file, format == FileFormat::Tiff ? "tiff" : "png");
    if (format == FileFormat::Tiff) {
        writer.setCompression(1); // LZW
    }
    if (!writer.write(picture)) {
        return writeProblem(path, writer.errorString());
    }
    return file.commit() ? QString() : writeProblem(path, file.errorString());
}

} // namespace

std::vector<FileFormat> availableFormats()
{
    std::vector<FileFormat> formats{FileFormat::Pdf, FileFormat::Png};
    if (QImageWriter::supportedImageFormats().contains("tiff")) {
        formats.push_back(FileFormat::Tiff);
    }
    return formats;
}

QString fileSuffix(FileFormat format)
{
    switch (format) {
    case FileFormat::Pdf:
        return QStringLiteral("pdf");
    case FileFormat::Png:
        return QStringLiteral("png");
    case FileFormat::Tiff:
        return QStringLiteral("tif");
    }
    return {};
}

QString fileFilter(FileFormat format)
{
    switch (format) {
    case FileFormat::Pdf:
        return exportText(QT_TRANSLATE_NOOP("PageExport", "PDF 文档 (*.pdf)"));
    case FileFormat::Png:
        return exportText(QT_TRANSLATE_NOOP("PageExport", "PNG 图像 (*.png)"));
    case FileFormat::Tiff:
        return exportText(QT_TRANSLATE_NOOP("PageExport", "TIFF 图像 (*.tif *.tiff)"));
    }
    return {};
}

QSizeF pageSizeMm(const Page& page)
{
    const double mmPerDot = 25.4 / std::max(page.dpi, 1);
    return {page.pixels.width() * mmPerDot, page.pixels.height() * mmPerDot};
}

QStringList exportFiles(const QString& path, FileFormat format, int count)
{
    if (format == FileFormat::Pdf || count <= 1) {
        return {path};
    }
    const QFileInfo info(path);
    const int digits = std::max(3, static_cast<int>(QString::number(count).size()));
    QStringList files;
    for (int number = 1; number <= count; ++number) {
        files << info.path() + '/' + info.completeBaseName() +
                     QStringLiteral("-%1.").arg(number, digits, 10, QChar('0')) + info.suffix();
    }
    return files;
}

QString exportPages(const std::vector<Page>& pages, const QString& path, FileFormat format,
                    const ExportProgress& progress)
{
    if (pages.empty()) {
        return exportText(QT_TRANSLATE_NOOP("PageExport", "没有可以保存的图像"));
    }
    if (format == FileFormat::Pdf) {
        return exportPdf(pages, path, progress);
    }
    const QStringList files = exportFiles(path, format, static_cast<int>(pages.size()));
    for (int i = 0; i < files.size(); ++i) {
        QString problem = exportImage(pages[static_cast<std::size_t>(i)], files[i], format);
        if (!problem.isEmpty()) {
            return problem;
        }
        if (progress && !progress(i + 1)) {
            return {};
        }
    }
    return {};
}

} // namespace kestrel
