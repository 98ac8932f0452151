/// @file
/// Geometry of the selection rectangle on the preview, in pixels.
#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <Qt>

#include <array>
#include <optional>

namespace preView {

/// The square at the rim of the selection that is dragged to stretch it.
enum DTAG_STATUS
{
    NoHandle = 0,
    TopLeft = 1,
    TopRight = 2,
    BottomLeft = 3,
    BottomRight = 4,
    LeftMiddle = 5,
    TopMiddle = 6,
    RightMiddle = 7,
    BottomMiddle = 8,
};

} // namespace preView

namespace kestrel {

/// The largest coordinate that is taken for real: sums of a few of them stay within an int.
constexpr int kFarthest = 1 << 28;
/// A rectangle can not be stretched to less than this between its edges.
constexpr int kMinimumStretch = 18;
/// From this distance on, along one axis, a press and a release are a drag and no click.
constexpr int kDragDistance = 6;
/// Side of a handle square.
constexpr int kHandleSide = 6;

/// Where the picture lies: from origin to maximum, both within. As long as there is no picture,
/// nothing limits the right and bottom.
struct ImageArea
{
    QPoint origin{0, 0};
    QPoint maximum{kFarthest, kFarthest};
};

/// The handle squares, [handle - 1]; all empty before there is a rectangle.
using HandleSquares = std::array<QRect, 8>;

/// @return the rectangle between two corners given in any order: as wide and high as they differ,
/// at
///         least 1 x 1. Negative coordinates of @p b count as 0
QRect rectBetween(const QPoint& a, const QPoint& b);

/// @return @p position rounded to whole pixels, halves away from zero, within kFarthest
QPoint roundedPoint(const QPointF& position);

/// @return millimetres as pixels, cut off to an integer, within kFarthest
/// @param standard pixels per 20 mm; 0 gives 0
int mmToPixels(double mm, int standard);

/// @return where a rectangle that is being drawn ends for a pointer at @p point: there, or, for a
///         pointer off the picture, at 0 or one past the edge of the picture
QPoint drawnTo(const QPoint& point, const ImageArea& area);

/// @return @p offset, shortened so that @p rect moved by it stays on the picture
QPoint offsetWithin(const QPoint& offset, const QRect& rect, const ImageArea& area);

/// @return @p rect with the edges that belong to @p handle at @p point, as far as the picture and
/// the
///         smallest size allow; an edge that has no room at all stays
QRect stretched(QRect rect, preView::DTAG_STATUS handle, const QPoint& point,
                const ImageArea& area);

/// @return the handle squares around the corners and the middles of the edges of @p rect
HandleSquares handleSquares(const QRect& rect);

/// @return the handle at @p point; where two overlap, the one that comes first clockwise
preView::DTAG_STATUS handleAt(const QPoint& point, const HandleSquares& squares);

/// @return the pointer shape over a handle; nothing for NoHandle
std::optional<Qt::CursorShape> handleCursor(preView::DTAG_STATUS handle);

} // namespace kestrel
