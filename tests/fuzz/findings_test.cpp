// What the fuzzers have found, by name.
#include "rules/selection_geometry.h"

#include <gtest/gtest.h>

#include <limits>

using kestrel::rectBetween;

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

} // namespace
