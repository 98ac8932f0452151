#include "rules/selection_geometry.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <vector>

using namespace kestrel;
using preView::DTAG_STATUS;

std::ostream& operator<<(std::ostream& out, const QRect& rect)
{
    return out << '[' << rect.left() << ',' << rect.top() << " - " << rect.right() << ','
               << rect.bottom() << ']';
}

namespace {

// The picture of these tests reaches to (299, 399).
const ImageArea kArea{QPoint(0, 0), QPoint(299, 399)};

QRect edges(int left, int top, int right, int bottom)
{
    return {QPoint(left, top), QPoint(right, bottom)};
}

} // namespace

TEST(RectBetween, RunsFromTheSmallerToTheLargerCoordinate)
{
    EXPECT_EQ(rectBetween({10, 20}, {30, 50}), QRect(10, 20, 20, 30));
    EXPECT_EQ(rectBetween({30, 50}, {10, 20}), QRect(10, 20, 20, 30));
    EXPECT_EQ(rectBetween({30, 20}, {10, 50}), QRect(10, 20, 20, 30));
    EXPECT_EQ(rectBetween({10, 20}, {11, 21}), QRect(10, 20, 1, 1));
}

TEST(RectBetween, IsNeverEmpty)
{
    EXPECT_EQ(rectBetween({5, 6}, {5, 6}), QRect(5, 6, 1, 1));
    EXPECT_EQ(rectBetween({5, 6}, {5, 16}), QRect(5, 6, 1, 10));
    EXPECT_EQ(rectBetween({0, 0}, {0, 0}), QRect(0, 0, 1, 1));
}

TEST(RectBetween, RaisesOnlyTheSecondPointToZero)
{
    EXPECT_EQ(rectBetween({10, 20}, {-5, -6}), QRect(0, 0, 10, 20));
    EXPECT_EQ(rectBetween({-5, -6}, {10, 20}), QRect(-5, -6, 15, 26));
    EXPECT_EQ(rectBetween({-5, -6}, {-7, -8}), QRect(-5, -6, 5, 6));
}

TEST(RoundedPoint, RoundsHalvesAwayFromZero)
{
    EXPECT_EQ(roundedPoint({0.4, 0.5}), QPoint(0, 1));
    EXPECT_EQ(roundedPoint({1.5, 2.49}), QPoint(2, 2));
    EXPECT_EQ(roundedPoint({-0.4, -0.5}), QPoint(0, -1));
    EXPECT_EQ(roundedPoint({-1.5, -2.49}), QPoint(-2, -2));
}

TEST(RoundedPoint, LimitsWhatNoScreenHas)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(roundedPoint({1e300, -1e300}), QPoint(kFarthest, -kFarthest));
    EXPECT_EQ(roundedPoint({kInfinity, -kInfinity}), QPoint(kFarthest, -kFarthest));
    EXPECT_EQ(roundedPoint({std::numeric_limits<double>::quiet_NaN(), 7}), QPoint(0, 7));
}

TEST(MmToPixels, MultipliesAndCutsOff)
{
    EXPECT_EQ(mmToPixels(10, 30), 15);
    EXPECT_EQ(mmToPixels(10.6, 30), 15);
    EXPECT_EQ(mmToPixels(10.7, 30), 16);
    EXPECT_EQ(mmToPixels(-10.6, 30), -15);
    EXPECT_EQ(mmToPixels(210, 25), 262);
    EXPECT_EQ(mmToPixels(210, 0), 0);
    EXPECT_EQ(mmToPixels(1e300, 30), kFarthest);
    EXPECT_EQ(mmToPixels(std::numeric_limits<double>::quiet_NaN(), 30), 0);
}

TEST(DrawnTo, OnThePictureIsThePointer)
{
    for (const QPoint& point : {QPoint(0, 0), QPoint(1, 0), QPoint(150, 200), QPoint(299, 399)}) {
        EXPECT_EQ(drawnTo(point, kArea), point);
    }
}

TEST(DrawnTo, OffThePictureIsItsEdgeOrOnePastIt)
{
    EXPECT_EQ(drawnTo({-1, 50}, kArea), QPoint(0, 50));
    EXPECT_EQ(drawnTo({50, -100}, kArea), QPoint(50, 0));
    EXPECT_EQ(drawnTo({300, 50}, kArea), QPoint(300, 50));
    EXPECT_EQ(drawnTo({301, 50}, kArea), QPoint(300, 50));
    EXPECT_EQ(drawnTo({50, 5000}, kArea), QPoint(50, 400));
    EXPECT_EQ(drawnTo({-5, 5000}, kArea), QPoint(0, 400));
    EXPECT_EQ(drawnTo({5000, 0}, kArea), QPoint(300, 0));
}

TEST(DrawnTo, WithoutARoomOnScreenEverythingIsTheOrigin)
{
    const ImageArea nothing{QPoint(0, 0), QPoint(-1, -1)};
    EXPECT_EQ(drawnTo({0, 0}, nothing), QPoint(0, 0));
    EXPECT_EQ(drawnTo({70, -3}, nothing), QPoint(0, 0));
}

TEST(DrawnTo, MeasuresTheExtentFromTheOrigin)
{
    const ImageArea shifted{QPoint(100, 50), QPoint(299, 399)};
    EXPECT_EQ(drawnTo({250, 100}, shifted), QPoint(200, 100));
    EXPECT_EQ(drawnTo({199, 349}, shifted), QPoint(199, 349));
}

TEST(OffsetWithin, StopsAtEachEdge)
{
    const QRect rect = edges(50, 60, 99, 159);
    EXPECT_EQ(offsetWithin({20, -30}, rect, kArea), QPoint(20, -30));
    EXPECT_EQ(offsetWithin({-50, -60}, rect, kArea), QPoint(-50, -60));
    EXPECT_EQ(offsetWithin({-51, -61}, rect, kArea), QPoint(-50, -60));
    EXPECT_EQ(offsetWithin({200, 240}, rect, kArea), QPoint(200, 240));
    EXPECT_EQ(offsetWithin({201, 241}, rect, kArea), QPoint(200, 240));
}

TEST(Stretched, MovesTheEdgesOfTheHandleToThePointer)
{
    const QRect rect = edges(100, 100, 200, 220);
    const QPoint pointer(130, 150);
    EXPECT_EQ(stretched(rect, preView::NoHandle, pointer, kArea), rect);
    EXPECT_EQ(stretched(rect, preView::TopLeft, pointer, kArea), edges(130, 150, 200, 220));
    EXPECT_EQ(stretched(rect, preView::TopRight, pointer, kArea), edges(100, 150, 130, 220));
    EXPECT_EQ(stretched(rect, preView::BottomLeft, pointer, kArea), edges(130, 100, 200, 150));
    EXPECT_EQ(stretched(rect, preView::BottomRight, pointer, kArea), edges(100, 100, 130, 150));
    EXPECT_EQ(stretched(rect, preView::LeftMiddle, pointer, kArea), edges(130, 100, 200, 220));
    EXPECT_EQ(stretched(rect, preView::TopMiddle, pointer, kArea), edges(100, 150, 200, 220));
    EXPECT_EQ(stretched(rect, preView::RightMiddle, pointer, kArea), edges(100, 100, 130, 220));
    EXPECT_EQ(stretched(rect, preView::BottomMiddle, pointer, kArea), edges(100, 100, 200, 150));
    EXPECT_EQ(stretched(rect, static_cast<DTAG_STATUS>(9), pointer, kArea), rect);
}

TEST(Stretched, KeepsEighteenPixelsBetweenTheEdges)
{
    const QRect rect = edges(100, 100, 200, 220);
    const QPoint beyond(250, 300);
    const QPoint before(50, 60);
    EXPECT_EQ(stretched(rect, preView::TopLeft, beyond, kArea), edges(182, 202, 200, 220));
    EXPECT_EQ(stretched(rect, preView::TopRight, {50, 300}, kArea), edges(100, 202, 118, 220));
    EXPECT_EQ(stretched(rect, preView::BottomLeft, {250, 60}, kArea), edges(182, 100, 200, 118));
    EXPECT_EQ(stretched(rect, preView::BottomRight, before, kArea), edges(100, 100, 118, 118));
    EXPECT_EQ(stretched(rect, preView::LeftMiddle, beyond, kArea), edges(182, 100, 200, 220));
    EXPECT_EQ(stretched(rect, preView::TopMiddle, beyond, kArea), edges(100, 202, 200, 220));
    EXPECT_EQ(stretched(rect, preView::RightMiddle, before, kArea), edges(100, 100, 118, 220));
    EXPECT_EQ(stretched(rect, preView::BottomMiddle, before, kArea), edges(100, 100, 200, 118));
}

TEST(Stretched, StopsAtThePicturesEdge)
{
    const QRect rect = edges(100, 100, 200, 220);
    EXPECT_EQ(stretched(rect, preView::TopLeft, {-9, -9}, kArea), edges(0, 0, 200, 220));
    EXPECT_EQ(stretched(rect, preView::BottomRight, {900, 900}, kArea), edges(100, 100, 299, 399));
    EXPECT_EQ(stretched(rect, preView::TopRight, {900, -9}, kArea), edges(100, 0, 299, 220));
    EXPECT_EQ(stretched(rect, preView::BottomLeft, {-9, 900}, kArea), edges(0, 100, 200, 399));
}

TEST(Stretched, AnEdgeWithoutRoomStays)
{
    EXPECT_EQ(stretched(edges(5, 5, 17, 17), preView::TopLeft, {0, 0}, kArea), edges(5, 5, 17, 17));
    EXPECT_EQ(stretched(edges(290, 390, 299, 399), preView::BottomRight, {299, 399}, kArea),
              edges(290, 390, 299, 399));
    // Just room for one place.
    EXPECT_EQ(stretched(edges(5, 5, 18, 18), preView::TopLeft, {9, 9}, kArea), edges(0, 0, 18, 18));
}

TEST(Handles, AreSixBySixAroundCornersAndMiddles)
{
    const HandleSquares squares = handleSquares(edges(100, 100, 201, 221));
    const std::vector<QPoint> centres{{100, 100}, {201, 100}, {100, 221}, {201, 221},
                                      {100, 160}, {150, 100}, {201, 160}, {150, 221}};
    ASSERT_EQ(squares.size(), centres.size());
    for (std::size_t i = 0; i < centres.size(); ++i) {
        EXPECT_EQ(squares[i], edges(centres[i].x() - 3, centres[i].y() - 3, centres[i].x() + 2,
                                    centres[i].y() + 2))
            << i + 1;
        const auto handle = static_cast<DTAG_STATUS>(i + 1);
        EXPECT_EQ(handleAt(squares[i].topLeft(), squares), handle);
        EXPECT_EQ(handleAt(squares[i].bottomRight(), squares), handle);
        EXPECT_EQ(handleAt(squares[i].topLeft() - QPoint(1, 0), squares), preView::NoHandle);
        EXPECT_EQ(handleAt(squares[i].bottomRight() + QPoint(0, 1), squares), preView::NoHandle);
    }
}

TEST(Handles, WhereTwoOverlapTheFirstClockwiseIsHit)
{
    // So small that all eight lie over each other: the order of precedence shows one by one.
    HandleSquares squares = handleSquares(edges(50, 50, 51, 51));
    for (const DTAG_STATUS handle :
         {preView::TopLeft, preView::TopMiddle, preView::TopRight, preView::RightMiddle,
          preView::BottomRight, preView::BottomMiddle, preView::BottomLeft, preView::LeftMiddle}) {
        EXPECT_EQ(handleAt({50, 50}, squares), handle);
        squares[static_cast<std::size_t>(handle) - 1] = QRect();
    }
    EXPECT_EQ(handleAt({50, 50}, squares), preView::NoHandle);
}

TEST(Handles, EachHasItsCursor)
{
    const std::vector<std::optional<Qt::CursorShape>> shapes{
        std::nullopt,        Qt::SizeFDiagCursor, Qt::SizeBDiagCursor,
        Qt::SizeBDiagCursor, Qt::SizeFDiagCursor, Qt::SizeHorCursor,
        Qt::SizeVerCursor,   Qt::SizeHorCursor,   Qt::SizeVerCursor};
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        EXPECT_EQ(handleCursor(static_cast<DTAG_STATUS>(i)), shapes[i]) << i;
    }
}
