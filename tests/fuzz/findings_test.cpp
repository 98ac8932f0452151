// What the fuzzers have found, by name.
#include "rules/selection_geometry.h"
#include "widgets/preview_box.h"

#include <QImage>
#include <QRegion>
#include <QWidget>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

using kestrel::rectBetween;
using kestrel::test::Box;

namespace {

constexpr int kLast = std::numeric_limits<int>::max();
constexpr int kFirst = std::numeric_limits<int>::min();

TEST(Findings, CornersAtTheLastIntMakeARectangleWithoutAnOverflow)
{
    const QPoint corner(kLast, kLast);
    EXPECT_EQ(rectBetween(corner, corner), QRect(corner, corner));
    EXPECT_EQ(rectBetween({kLast - 1, kLast - 2}, corner),
              QRect(QPoint(kLast - 1, kLast - 2), QPoint(kLast - 1, kLast - 1)));
}

TEST(Findings, CornersFurtherApartThanAnIntMakeTheLargestRectangle)
{
    const QRect rect = rectBetween({kFirst, 3}, {kLast, 3});
    EXPECT_EQ(rect.left(), kFirst);
    EXPECT_EQ(rect.right(), kFirst + (kLast - 1));
    EXPECT_EQ(rect.height(), 1);
}

QRgb colourRenderedAt(QWidget& widget, const QPoint& corner)
{
    QImage canvas(20, 20, QImage::Format_RGB32);
    canvas.fill(Qt::magenta);
    widget.render(&canvas, QPoint(), QRegion(QRect(corner, canvas.size())));
    return canvas.pixel(10, 10);
}

TEST(Findings, APartFarOffTheScreenIsRenderedWithoutAllThatLiesBetween)
{
    QWidget window;
    window.resize(400, 600);
    auto* const box = std::make_unique<Box>(&window).release();
    // 1,333,333 x 2,000,000 pixels: all of them would be ten terabytes.
    box->load(QSize(40, 60), Qt::red, 2e6F, 20);
    box->resize(1'333'333, 2'000'000);
    window.show();
    EXPECT_EQ(colourRenderedAt(*box, {1'300'000, 1'900'000}), colourRenderedAt(*box, {10, 10}));
}

} // namespace
