// The picture in the preview box: what it takes, how it is scaled, turned and adjusted.
#include "rules/tone.h"
#include "widgets/preview_box.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

using kestrel::test::Box;

namespace {

QImage flat(const QSize& size, QRgb colour, QImage::Format format = QImage::Format_RGB32)
{
    QImage picture(size, format);
    picture.fill(QColor::fromRgba(colour));
    return picture;
}

} // namespace

TEST(PreviewPicture, BeginsWithOnePixelOfItsBackground)
{
    const Box box;
    EXPECT_TRUE(box.source.isNull());
    EXPECT_EQ(box.shown.size(), QSize(1, 1));
    EXPECT_EQ(box.shown.pixel(0, 0), qRgb(245, 245, 245));
    EXPECT_EQ(box.background, QBrush(QColor(245, 245, 245)));
    EXPECT_EQ(box.scale, 0);
    EXPECT_EQ(box.mode, 0);
    EXPECT_EQ(box.brightness, 0);
    EXPECT_EQ(box.contrast, 0);
    EXPECT_EQ(box.getRotate(), 0);
}

TEST(PreviewPicture, IsFittedToTheHeightOfThePaper)
{
    Box box;
    QImage picture = flat({640, 1050}, qRgb(1, 2, 3));
    box.setMaxHeightAndStandrad(356, 30);
    EXPECT_TRUE(box.setImage(picture));
    const double scale = static_cast<double>(30.0F * (356.0F / 20.0F)) / 1050;
    EXPECT_EQ(box.scale, scale);
    EXPECT_EQ(box.selection.area().origin, QPoint(0, 0));
    EXPECT_EQ(box.selection.area().maximum, QPoint(static_cast<int>(640 * scale) - 1, 533));
    EXPECT_EQ(box.source.size(), picture.size());
    EXPECT_EQ(box.shown.size(), picture.size());
}

TEST(PreviewPicture, IsACopyOfItsOwn)
{
    Box box;
    box.setMaxHeightAndStandrad(200, 30);
    auto memory = std::make_unique<std::vector<unsigned char>>(8 * 8 * 4, 0x40);
    auto picture = std::make_unique<QImage>(memory->data(), 8, 8, QImage::Format_RGB32);
    box.setImage(*picture);
    QImage argb(memory->data(), 8, 8, QImage::Format_ARGB32);
    Box other;
    other.setImage(argb);
    std::fill(memory->begin(), memory->end(), 0x80);
    picture.reset();
    memory.reset();
    EXPECT_EQ(box.source.pixel(3, 3), qRgb(0x40, 0x40, 0x40));
    EXPECT_EQ(other.source.pixel(3, 3), qRgba(0x40, 0x40, 0x40, 0x40));
    box.setBrightness(1);
    EXPECT_EQ(box.shown.pixel(7, 7), qRgb(0x41, 0x41, 0x41));
}

TEST(PreviewPicture, PixelsOfAScannerAreOpaqueThoughTheirFourthByteIsZero)
{
    Box box;
    std::vector<unsigned char> bytes(16 * 16 * 4, 0);
    QImage picture(bytes.data(), 16, 16, QImage::Format_RGB32);
    box.setImage(picture);
    EXPECT_EQ(qAlpha(*reinterpret_cast<const QRgb*>(box.source.constScanLine(5))), 255);
}

TEST(PreviewPicture, NullImageChangesNothingButTheRotation)
{
    Box box;
    box.load({200, 300}, Qt::red);
    box.setRotate(90);
    const double scale = box.scale;
    const QImage before = box.shown;
    QImage null;
    box.setMaxHeightAndStandrad(100, 10);
    EXPECT_FALSE(box.setImage(null));
    EXPECT_EQ(box.getRotate(), 0);
    EXPECT_EQ(box.scale, scale);
    EXPECT_EQ(box.shown, before);
    EXPECT_EQ(box.selection.area().maximum, QPoint(199, 299));
}

TEST(PreviewPicture, NewImageTurnsBackAndKeepsModeAndSelection)
{
    Box box;
    box.load({200, 300});
    box.drag({50, 60}, {150, 160});
    box.setMode(2);
    box.setRotate(180);
    box.load({100, 150});
    EXPECT_EQ(box.getRotate(), 0);
    EXPECT_EQ(box.mode, 2);
    EXPECT_EQ(box.getSelectRect(), QRect(50, 60, 100, 100));
}

TEST(PreviewPicture, ModesOutsideTheThreeAreNotTaken)
{
    Box box;
    for (const int mode : {0, 1, 2}) {
        box.setMode(mode);
        EXPECT_EQ(box.mode, mode);
        box.setMode(3);
        box.setMode(-1);
        EXPECT_EQ(box.mode, mode);
    }
    box.setautosize();
    EXPECT_EQ(box.mode, 2) << "there is no picture";
    box.load({20, 30});
    box.setautosize();
    EXPECT_EQ(box.mode, 0);
}

TEST(PreviewPicture, ZoomOutEnlargesByATenthBelowThree)
{
    Box box;
    box.load({100, 100}, Qt::white, 200, 28); // scale 2.8
    ASSERT_DOUBLE_EQ(box.scale, 2.8);
    box.zoomout();
    EXPECT_DOUBLE_EQ(box.scale, 2.9);
    EXPECT_EQ(box.mode, 1);
    EXPECT_EQ(box.size(), QSize(290, 290));
    box.zoomout();
    EXPECT_DOUBLE_EQ(box.scale, 2.9);
    EXPECT_EQ(box.size(), QSize(290, 290));
}

TEST(PreviewPicture, ZoomInReducesByATenthAboveZero)
{
    Box box;
    box.load({100, 150}, Qt::white, 200, 3); // scale 0.2
    ASSERT_DOUBLE_EQ(box.scale, 0.2);
    box.zoomin();
    EXPECT_DOUBLE_EQ(box.scale, 0.1);
    EXPECT_EQ(box.mode, 1);
    EXPECT_EQ(box.minimumSize(), QSize(10, 15));
    EXPECT_EQ(box.maximumSize(), QSize(10, 15));
    box.zoomin();
    EXPECT_DOUBLE_EQ(box.scale, 0.1);
}

TEST(PreviewPicture, ZoomEndsAtTheSameStepsWhereverItCameFrom)
{
    for (int standard = 1; standard <= 28; ++standard) {
        Box box;
        box.load({10, 100}, Qt::white, 200, standard);
        for (int i = 0; i < 40; ++i) {
            box.zoomout();
        }
        EXPECT_NEAR(box.scale, 2.9, 1e-9) << standard;
        for (int i = 0; i < 40; ++i) {
            box.zoomin();
        }
        EXPECT_NEAR(box.scale, 0.1, 1e-9) << standard;
    }
}

TEST(PreviewPicture, ZoomWithoutAPictureDoesNothing)
{
    Box box;
    box.zoomout();
    box.zoomin();
    EXPECT_EQ(box.scale, 0);
    EXPECT_EQ(box.mode, 0);
    EXPECT_EQ(box.size(), QSize(371, 561));
}

TEST(PreviewPicture, ZoomRoundsItsSizeAndLeavesTheImageArea)
{
    Box box;
    box.load({101, 99}, Qt::white, 198, 10); // scale 1
    ASSERT_DOUBLE_EQ(box.scale, 1.0);
    const QPoint maximum = box.selection.area().maximum;
    box.zoomin(); // 90.9 x 89.1
    EXPECT_EQ(box.size(), QSize(91, 89));
    EXPECT_EQ(box.selection.area().maximum, maximum);
}

TEST(PreviewPicture, ZoomShowsTheSourceWithoutAdjustments)
{
    Box box;
    box.load({100, 100}, QColor(100, 100, 100), 200, 20);
    box.setBrightness(50);
    ASSERT_EQ(box.shown.pixel(50, 50), qRgb(150, 150, 150));
    box.zoomout();
    EXPECT_EQ(box.shown.pixel(50, 50), qRgb(100, 100, 100));
    EXPECT_EQ(box.brightness, 50);
}

TEST(PreviewPicture, ScaleStepsAreQuartersWithinLimits)
{
    Box box;
    const std::vector<std::pair<int, double>> steps{{0, 0.25},
                                                    {3, 1.0},
                                                    {7, 2.0},
                                                    {-1, 0.01},
                                                    {-100, 0.01},
                                                    {399, 100.0},
                                                    {400, 100},
                                                    {1000, 100.0},
                                                    {std::numeric_limits<int>::max(), 100.0},
                                                    {std::numeric_limits<int>::min(), 0.01}};
    for (const auto& [step, scale] : steps) {
        box.setScale(step);
        EXPECT_DOUBLE_EQ(box.scale, scale) << step;
    }
    EXPECT_EQ(box.size(), QSize(371, 561));
}

TEST(PreviewPicture, ScaleAndRotationSizeTheZoomedWidget)
{
    Box box;
    box.load({101, 203});
    box.setRotate(90);
    EXPECT_EQ(box.size(), QSize(371, 561)) << "the fitted mode has no size of its own";
    box.setRotate(0);
    box.setMode(1);
    box.setScale(1); // 50.5 x 101.5
    EXPECT_EQ(box.size(), QSize(51, 102));
    box.setRotate(90);
    EXPECT_EQ(box.getRotate(), 90);
    EXPECT_EQ(box.size(), QSize(101, 50));
    box.setRotate(180);
    EXPECT_EQ(box.size(), QSize(51, 102));
    box.setRotate(270);
    EXPECT_EQ(box.size(), QSize(101, 50));
    box.setScale(3);
    EXPECT_EQ(box.size(), QSize(203, 101));
    box.setMode(2);
    box.setScale(0);
    EXPECT_EQ(box.size(), QSize(203, 101)) << "only the zoomed mode follows the scale";
    box.setRotate(0);
    EXPECT_EQ(box.size(), QSize(25, 51));
}

TEST(PreviewPicture, AdjustmentsStartFromTheSourceEachTime)
{
    Box box;
    box.load({60, 60}, QColor(10, 100, 200), 200, 30);
    const auto expected = [](int brightness, int contrast) {
        const kestrel::ToneTable table = kestrel::toneTable(brightness, contrast);
        return qRgb(table[10], table[100], table[200]);
    };
    box.setBrightness(30);
    EXPECT_EQ(box.shown.pixel(30, 30), expected(30, 0));
    box.AdjustContrast(40);
    EXPECT_EQ(box.shown.pixel(30, 30), expected(30, 40));
    box.setBrightness(-30);
    EXPECT_EQ(box.shown.pixel(30, 30), expected(-30, 40));
    box.setimage_pix(5, 100);
    EXPECT_EQ(box.shown.pixel(30, 30), expected(5, 100));
    EXPECT_EQ(box.brightness, -30) << "kept only by setBrightness()";
    EXPECT_EQ(box.contrast, 40);
    box.AdjustContrast(0);
    EXPECT_EQ(box.shown.pixel(30, 30), expected(-30, 0));
    EXPECT_EQ(box.source.pixel(30, 30), qRgb(10, 100, 200));
}

TEST(PreviewPicture, AdjustmentsKeepAlpha)
{
    Box box;
    QImage picture = flat({40, 40}, qRgba(100, 100, 100, 128), QImage::Format_ARGB32);
    box.setMaxHeightAndStandrad(200, 30);
    box.setImage(picture);
    box.setBrightness(50);
    EXPECT_EQ(box.shown.pixelColor(20, 20).alpha(), 128);
    EXPECT_NEAR(box.shown.pixelColor(20, 20).red(), 150, 1);
}

TEST(PreviewPicture, TwoBoxesDoNotMixTheirAdjustments)
{
    Box first;
    Box second;
    first.load({60, 60}, QColor(100, 100, 100), 200, 60);
    second.load({60, 60}, QColor(50, 50, 50), 200, 60);
    first.setBrightness(10);
    second.setBrightness(20);
    EXPECT_EQ(first.shown.pixel(5, 5), qRgb(110, 110, 110));
    EXPECT_EQ(second.shown.pixel(5, 5), qRgb(70, 70, 70));
}

TEST(PreviewPicture, AdjustmentsWithoutAPictureAreKeptOnly)
{
    Box box;
    box.setBrightness(30);
    box.AdjustContrast(20);
    EXPECT_EQ(box.brightness, 30);
    EXPECT_EQ(box.contrast, 20);
    EXPECT_EQ(box.shown.pixel(0, 0), qRgb(245, 245, 245));
}

TEST(PreviewPicture, ReducedPicturesAreResampledDownAndUp)
{
    // Stripes of one pixel turn gray on the way down and stay gray on the way up.
    Box box;
    QImage stripes(200, 200, QImage::Format_RGB32);
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 200; ++x) {
            stripes.setPixel(x, y, x % 2 == 0 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
        }
    }
    box.setMaxHeightAndStandrad(100,
                                static_cast<int>(10 / box.devicePixelRatioF())); // half or less
    box.setImage(stripes);
    EXPECT_EQ(box.shown.size(), stripes.size());
    for (int x = 10; x < 190; ++x) {
        ASSERT_NEAR(qRed(box.shown.pixel(x, 100)), 127, 25) << x;
    }
    // Adjustments of an enlarged picture leave every pixel as it is.
    box.setScale(3);
    box.setimage_pix(0, 0);
    EXPECT_EQ(box.shown, stripes);
}

TEST(PreviewPicture, ClearingPaintsItGreyUntilTheNextAdjustment)
{
    Box box;
    box.load({60, 60}, Qt::red);
    box.clearpaint();
    EXPECT_EQ(box.shown.size(), QSize(60, 60));
    EXPECT_EQ(box.shown.pixel(30, 30), qRgb(216, 216, 216));
    EXPECT_EQ(box.source.pixel(30, 30), qRgb(255, 0, 0));
    box.setBrightness(0);
    EXPECT_EQ(box.shown.pixel(30, 30), qRgb(255, 0, 0));
}

TEST(PreviewPicture, KeepsBrushAndFlagAndSavesNothing)
{
    Box box;
    box.setBackground(QBrush(Qt::green, Qt::DiagCrossPattern));
    EXPECT_EQ(box.background, QBrush(Qt::green, Qt::DiagCrossPattern));
    box.setRipewhiteEnable(1);
    EXPECT_EQ(box.ripeWhite, 1);
    char nowhere[] = "";
    box.save_image(nowhere, 0, 0);
    box.save_image(nullptr, 0, 0);
    EXPECT_TRUE(box.announced.empty());
}

TEST(PreviewPicture, HostileImagesAreShownOrLeft)
{
    const std::vector<QSize> sizes{{1, 1}, {100000, 1}, {1, 100000}, {2, 2}, {30000, 2}};
    const std::vector<QImage::Format> formats{
        QImage::Format_RGB32,  QImage::Format_ARGB32,
        QImage::Format_RGB888, QImage::Format_Grayscale8,
        QImage::Format_Mono,   QImage::Format_Indexed8,
        QImage::Format_RGB16,  QImage::Format_RGBA64_Premultiplied};
    for (const QSize& size : sizes) {
        for (const QImage::Format format : formats) {
            Box box;
            QImage picture(size, format);
            picture.fill(1);
            box.setMaxHeightAndStandrad(356, 30);
            EXPECT_TRUE(box.setImage(picture));
            box.drag({10, 10}, {100, 100});
            box.setBrightness(20);
            box.setMode(1);
            box.grab();
            box.zoomout();
            box.zoomin();
            box.setRotate(90);
            // What can be seen of it, however large it may be by now.
            box.setFixedSize(371, 561);
            box.setScale(1000);
            box.setFixedSize(371, 561);
            EXPECT_EQ(box.source.size(), size);
            EXPECT_FALSE(box.grab().isNull());
        }
    }
}

TEST(PreviewPicture, PapersOfNoHeightGiveNoScale)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (const float height : {0.0F, -100.0F, kInfinity, std::nanf("")}) {
        Box box;
        box.load({100, 100}, Qt::white, height, 30);
        EXPECT_EQ(box.scale, 0) << height;
        EXPECT_EQ(box.selection.area().maximum, QPoint(-1, -1));
        box.drag({10, 10}, {60, 60});
        EXPECT_FALSE(box.grab().isNull());
    }
}

// The adjustments of all boxes share their scratch memory: what one left there is not another's.
TEST(PreviewPicture, AnAdjustedPictureKeepsItsTransparencyAfterAnOpaqueOne)
{
    const QSize size(16, 16);
    Box opaque;
    opaque.load(size, QColor(200, 100, 50), 5, 20);
    ASSERT_LT(opaque.scale, 1.0);
    opaque.setBrightness(10);
    ASSERT_FALSE(opaque.shown.hasAlphaChannel());
    Box clear;
    clear.setMaxHeightAndStandrad(5, 20);
    QImage picture = flat(size, qRgba(200, 100, 50, 128), QImage::Format_ARGB32);
    clear.setImage(picture);
    clear.setBrightness(10);
    ASSERT_TRUE(clear.shown.hasAlphaChannel());
    EXPECT_EQ(qAlpha(clear.shown.pixel(8, 8)), 128);
    opaque.setBrightness(20);
    EXPECT_FALSE(opaque.shown.hasAlphaChannel());
}
