#include "page_store.h"

#include <QCoreApplication>
#include <QImageWriter>
#include <QRegularExpression>
#include <QSaveFile>

#include <algorithm>

namespace kestrel {

namespace {

// Qt maps PNG quality to zlib levels; this one is level 1, which keeps up with a fast scanner.
constexpr int fastPng = 80;

QString storeText(const char* text)
{
    return QCoreApplication::translate("PageStore", text);
}

} // namespace

PageStore::PageStore(const QString& folder) : m_folder(folder) {}

int PageStore::nextNumber() const
{
    static const QRegularExpression pattern(QStringLiteral("^page-(\\d{1,8})\\.png$"));
    int highest = 0;
    const auto names = m_folder.entryList({QStringLiteral("page-*.png")}, QDir::Files);
    for (const QString& name : names) {
        highest = std::max(highest, pattern.match(name).captured(1).toInt());
    }
    return highest + 1;
}

QString PageStore::add(const QImage& picture, int dpi, Page& page)
{
    if (!m_folder.mkpath(QStringLiteral("."))) {
        return storeText(QT_TRANSLATE_NOOP("PageStore", "无法创建文件夹 %1")).arg(folder());
    }
    if (m_next == 0) {
        m_next = nextNumber();
    }
    const QString path =
        m_folder.absoluteFilePath(QStringLiteral("page-%1.png").arg(m_next, 4, 10, QChar('0')));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return storeText(QT_TRANSLATE_NOOP("PageStore", "无法写入文件 %1：%2"))
            .arg(path, file.errorString());
    }
    QImageWriter writer(&file, "png");
    writer.setQuality(fastPng);
    if (!writer.write(picture) || !file.commit()) {
        return storeText(QT_TRANSLATE_NOOP("PageStore", "无法写入文件 %1：%2"))
            .arg(path,
                 file.error() != QFileDevice::NoError ? file.errorString() : writer.errorString());
    }
    ++m_next;
    page.file = path;
    page.pixels = picture.size();
    page.dpi = dpi > 0 ? dpi : fallbackDpi;
    page.thumbnail =
        picture.scaled(thumbnailEdge, thumbnailEdge, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return {};
}

} // namespace kestrel
