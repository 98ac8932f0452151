#include "rules/selection_geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace kestrel {
namespace {

using preView::DTAG_STATUS;

constexpr std::array<DTAG_STATUS, 8> kHitOrder = {
    preView::TopLeft,     preView::TopMiddle,    preView::TopRight,   preView::RightMiddle,
    preView::BottomRight, preView::BottomMiddle, preView::BottomLeft, preView::LeftMiddle};

int limitedCoordinate(double value)
{
    // Negated on purpose: what is not a number is 0.
    if (!(std::abs(value) < kFarthest)) {
        return value > 0 ? kFarthest : value < 0 ? -kFarthest : 0;
    }
    return static_cast<int>(value);
}

/// The number of [low, high] nearest to @p value; @p otherwise where there is none.
int nearestWithin(int value, int low, int high, int otherwise)
{
    return low > high ? otherwise : std::clamp(value, low, high);
}

/// One axis of offsetWithin(); @p low and @p high are the edges of the rectangle.
int offsetAlong(int offset, int low, int high, int maximum)
{
    if (low + offset < 0) {
        offset = -low;
    }
    if (high + offset > maximum) {
        offset = maximum - high;
    }
    return offset;
}

/// One axis of drawnTo().
int drawnAlong(int value, int extent)
{
    // One past the edge, because a rectangle ends one before its second corner.
    return value < 1 ? 0 : std::min(value, extent + 1);
}

template <typename... Handles>
bool isOneOf(DTAG_STATUS handle, Handles... handles)
{
    return ((handle == handles) || ...);
}

} // namespace

/// The distance of two coordinates, but at least 1; hosts may give any points.
static int extent(std::int64_t a, std::int64_t b)
{
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::abs(a - b), std::int64_t{1}, kMost));
}

QRect rectBetween(const QPoint& a, const QPoint& b)
{
    const QPoint second(std::max(b.x(), 0), std::max(b.y(), 0));
    const QPoint first(std::min(a.x(), second.x()), std::min(a.y(), second.y()));
    // By its corners: a position and a size meet beyond the last int where a corner is that int.
    return {first, first + QPoint(extent(a.x(), second.x()) - 1, extent(a.y(), second.y()) - 1)};
}

QPoint roundedPoint(const QPointF& position)
{
    return {limitedCoordinate(std::round(position.x())),
            limitedCoordinate(std::round(position.y()))};
}

int mmToPixels(double mm, int standard)
{
    return limitedCoordinate(mm * (standard / 20.0));
}

QPoint drawnTo(const QPoint& point, const ImageArea& area)
{
    const QPoint extent = area.maximum - area.origin;
    if (QRect(QPoint(0, 0), extent).contains(point)) {
        return point;
    }
    return {drawnAlong(point.x(), extent.x()), drawnAlong(point.y(), extent.y())};
}

QPoint offsetWithin(const QPoint& offset, const QRect& rect, const ImageArea& area)
{
    return {offsetAlong(offset.x(), rect.left(), rect.right(), area.maximum.x()),
            offsetAlong(offset.y(), rect.top(), rect.bottom(), area.maximum.y())};
}

QRect stretched(QRect rect, DTAG_STATUS handle, const QPoint& point, const ImageArea& area)
{
    using namespace preView;
    const int x = point.x();
    const int y = point.y();
    if (isOneOf(handle, TopLeft, LeftMiddle, BottomLeft)) {
        rect.setLeft(nearestWithin(x, 0, rect.right() - kMinimumStretch, rect.left()));
    }
    if (isOneOf(handle, TopRight, RightMiddle, BottomRight)) {
        rect.setRight(
            nearestWithin(x, rect.left() + kMinimumStretch, area.maximum.x(), rect.right()));
    }
    if (isOneOf(handle, TopLeft, TopMiddle, TopRight)) {
        rect.setTop(nearestWithin(y, 0, rect.bottom() - kMinimumStretch, rect.top()));
    }
    if (isOneOf(handle, BottomLeft, BottomMiddle, BottomRight)) {
        rect.setBottom(
            nearestWithin(y, rect.top() + kMinimumStretch, area.maximum.y(), rect.bottom()));
    }
    return rect;
}

HandleSquares handleSquares(const QRect& rect)
{
    const int left = rect.left();
    const int top = rect.top();
    const int right = rect.right();
    const int bottom = rect.bottom();
    const int middleX = (left + right) / 2;
    const int middleY = (top + bottom) / 2;
    const auto around = [](int x, int y) {
        return QRect(x - kHandleSide / 2, y - kHandleSide / 2, kHandleSide, kHandleSide);
    };
    // In the order of the numbers of DTAG_STATUS.
    return {around(left, top),      around(right, top),     around(left, bottom),
            around(right, bottom),  around(left, middleY),  around(middleX, top),
            around(right, middleY), around(middleX, bottom)};
}

DTAG_STATUS handleAt(const QPoint& point, const HandleSquares& squares)
{
    for (const DTAG_STATUS handle : kHitOrder) {
        if (squares[handle - 1U].contains(point)) {
            return handle;
        }
    }
    return preView::NoHandle;
}

std::optional<Qt::CursorShape> handleCursor(DTAG_STATUS handle)
{
    switch (handle) {
    case preView::TopLeft:
    case preView::BottomRight:
        return Qt::SizeFDiagCursor;
    case preView::TopRight:
    case preView::BottomLeft:
        return Qt::SizeBDiagCursor;
    case preView::LeftMiddle:
    case preView::RightMiddle:
        return Qt::SizeHorCursor;
    case preView::TopMiddle:
    case preView::BottomMiddle:
        return Qt::SizeVerCursor;
    case preView::NoHandle:
        break;
    }
    return std::nullopt;
}

} // namespace kestrel
