#include <page_store.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace {

using kestrel::Page;
using kestrel::PageStore;

QImage picture(int width, int height, QImage::Format format)
{
    QImage image(width, height, format);
    if (format == QImage::Format_Mono) {
        image.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
        image.fill(0);
        image.setPixel(1, 1, 1);
        return image;
    }
    image.fill(Qt::white);
    image.setPixelColor(1, 1, QColor(200, 100, 50));
    return image;
}

} // namespace

TEST(PageStore, KeepsEveryKindOfPictureBitForBit)
{
    const QTemporaryDir dir;
    PageStore store(dir.path());
    for (const QImage::Format format :
         {QImage::Format_Mono, QImage::Format_Grayscale8, QImage::Format_Grayscale16,
          QImage::Format_RGB888, QImage::Format_RGBX64}) {
        const QImage image = picture(30, 20, format);
        Page page;
        ASSERT_EQ(store.add(image, 200, page), QString()) << format;
        QImage again(page.file);
        ASSERT_EQ(again.depth(), image.depth() == 24 ? 32 : image.depth()) << format;
        EXPECT_EQ(again.convertToFormat(QImage::Format_RGBA64),
                  image.convertToFormat(QImage::Format_RGBA64))
            << format;
        EXPECT_EQ(page.pixels, QSize(30, 20));
        EXPECT_EQ(page.dpi, 200);
    }
}

TEST(PageStore, NumbersGoOnAfterWhatIsThere)
{
    const QTemporaryDir dir;
    const auto touch = [&](const char* name) {
        QFile file(dir.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("old");
    };
    touch("page-0007.png");
    touch("page-0003.png");
    touch("page-x.png");
    touch("page-0099.png.bak");
    PageStore store(dir.path());
    Page page;
    ASSERT_EQ(store.add(picture(4, 4, QImage::Format_RGB888), 100, page), QString());
    EXPECT_EQ(page.file, dir.filePath("page-0008.png"));
    ASSERT_EQ(store.add(picture(4, 4, QImage::Format_RGB888), 100, page), QString());
    EXPECT_EQ(page.file, dir.filePath("page-0009.png"));
    QFile old(dir.filePath("page-0007.png"));
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), "old");
}

TEST(PageStore, ThumbnailKeepsTheProportions)
{
    const QTemporaryDir dir;
    PageStore store(dir.path());
    Page page;
    ASSERT_EQ(store.add(picture(1000, 2000, QImage::Format_RGB888), 100, page), QString());
    EXPECT_EQ(page.thumbnail.size(), QSize(180, 360));
}

TEST(PageStore, UnknownResolutionIsTakenAsTheUsualOne)
{
    const QTemporaryDir dir;
    PageStore store(dir.path());
    Page page;
    ASSERT_EQ(store.add(picture(4, 4, QImage::Format_RGB888), 0, page), QString());
    EXPECT_EQ(page.dpi, PageStore::fallbackDpi);
}

TEST(PageStore, MissingFolderIsMade)
{
    const QTemporaryDir dir;
    PageStore store(dir.filePath("a/b"));
    Page page;
    EXPECT_EQ(store.add(picture(4, 4, QImage::Format_RGB888), 100, page), QString());
    EXPECT_TRUE(QFile::exists(dir.filePath("a/b/page-0001.png")));
}

TEST(PageStore, FolderThatCannotBeMadeIsSaidInWords)
{
    const QTemporaryDir dir;
    QFile file(dir.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    PageStore store(dir.filePath("file/below"));
    Page page;
    EXPECT_TRUE(store.add(picture(4, 4, QImage::Format_RGB888), 100, page)
                    .contains(QStringLiteral("无法创建文件夹")));
}
