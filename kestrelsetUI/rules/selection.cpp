#include "rules/selection.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace kestrel {
namespace {

using preView::DTAG_STATUS;

// No screen is that large, and a handful of such numbers can be added without overflow.
constexpr int farthest = 1 << 28;

// Where a handle and its neighbour overlap on a small rectangle, the one that stands first is
// taken.
constexpr std::array<DTAG_STATUS, 8> hitOrder = {
    preView::TopLeft,     preView::TopMiddle,    preView::TopRight,   preView::RightMiddle,
    preView::BottomRight, preView::BottomMiddle, preView::BottomLeft, preView::LeftMiddle};

int limitedToScreen(double value)
{
    // Written so that NaN ends up at 0.
    if (value >= farthest) {
        return farthest;
    }
    if (value <= -farthest) {
        return -farthest;
    }
    return value == value ? static_cast<int>(value) : 0;
}

/// The nearest number within [low, high]; @p unchanged where there is none.
int within(int value, int low, int high, int unchanged)
{
    return low > high ? unchanged : std::clamp(value, low, high);
}

/// An offset along one axis under which [low, high] stays between 0 and @p maximum.
int limitedOffset(int offset, int low, int high, int maximum)
{
    if (low + offset < 0) {
        offset = -low;
    }
    if (high + offset > maximum) {
        offset = maximum - high;
    }
    return offset;
}

bool isClick(const QPoint& distance)
{
    return std::abs(distance.x()) < Selection::dragDistance &&
           std::abs(distance.y()) < Selection::dragDistance;
}

} // namespace

QRect rectBetween(const QPoint& a, const QPoint& b)
{
    const QPoint second(std::max(b.x(), 0), std::max(b.y(), 0));
    return {std::min(a.x(), second.x()), std::min(a.y(), second.y()),
            std::max(1, std::abs(a.x() - second.x())), std::max(1, std::abs(a.y() - second.y()))};
}

QPoint roundedPoint(const QPointF& position)
{
    return {limitedToScreen(std::round(position.x())), limitedToScreen(std::round(position.y()))};
}

int mmToPixels(double mm, int standard)
{
    return limitedToScreen(mm * (standard / 20.0));
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

Selection::Selection() : imageArea{QPoint(0, 0), QPoint(farthest, farthest)} {}

void Selection::setArea(const ImageArea& area, bool shown)
{
    imageArea = area;
    pictureShown = shown;
}

Selection::Reaction Selection::press(const QPoint& point, Qt::MouseButton button)
{
    if (button == Qt::RightButton) {
        return clear();
    }
    Reaction reaction;
    const bool left = button == Qt::LeftButton;
    handle = handleAt(point);
    if (!contains(point) || (left && pictureShown && current == SelectionState::Idle)) {
        current = SelectionState::Drawing;
        start = end = point;
    } else if (handle != preView::NoHandle || left) {
        const bool stretches = handle != preView::NoHandle;
        current = stretches ? SelectionState::Stretching : SelectionState::Moving;
        reaction.cursor = stretches ? handleCursor(handle) : Qt::SizeAllCursor;
        pressPoint = currentPoint = point;
        dragged = false;
    }
    return reaction;
}

Selection::Reaction Selection::move(const QPoint& point, Qt::MouseButtons held)
{
    Reaction reaction;
    if (held.testFlag(Qt::RightButton)) {
        return reaction;
    }
    switch (current) {
    case SelectionState::Drawing:
        end = limited(point);
        break;
    case SelectionState::Moving:
    case SelectionState::Stretching:
        currentPoint = point;
        dragged = true;
        break;
    default:
        reaction.cursor = hoverCursor(point);
        break;
    }
    reaction.announced = selectRect();
    reaction.repaint = true;
    return reaction;
}

Selection::Reaction Selection::release(const QPoint& point, Qt::MouseButton button)
{
    Reaction reaction;
    reaction.repaint = true;
    if (current == SelectionState::Drawing) {
        current = SelectionState::Finished;
        end = limited(point);
    } else if (current == SelectionState::Moving || current == SelectionState::Stretching) {
        current =
            current == SelectionState::Moving ? SelectionState::Moved : SelectionState::Stretched;
        dragged = !isClick(point - pressPoint);
        currentPoint = dragged ? point : pressPoint;
        reaction.cursor = Qt::ArrowCursor;
    }
    if (button == Qt::RightButton) {
        forget();
        reaction.cursor = Qt::ArrowCursor;
    }
    return reaction;
}

Selection::Reaction Selection::nudge(const QPoint& offset)
{
    Reaction reaction;
    if (moveFirstCornerTo(start + offset)) {
        reaction.announced = selectRect();
        reaction.repaint = true;
    }
    return reaction;
}

Selection::Reaction Selection::grow(const QPoint& offset)
{
    Reaction reaction;
    if (current != SelectionState::Finished) {
        return reaction;
    }
    handle = offset.y() == 0   ? preView::RightMiddle
             : offset.x() == 0 ? preView::BottomMiddle
                               : preView::BottomRight;
    pressPoint = rectBetween(start, end).bottomRight();
    currentPoint = pressPoint + offset;
    dragged = true;
    current = SelectionState::Stretched;
    reaction.announced = selectRect();
    reaction.repaint = true;
    return reaction;
}

Selection::Reaction Selection::clear()
{
    forget();
    Reaction reaction;
    reaction.cursor = Qt::ArrowCursor;
    reaction.announced = QRect();
    reaction.repaint = true;
    return reaction;
}

bool Selection::setCorners(const QPoint& first, const QPoint& second)
{
    if (current != SelectionState::Idle && current != SelectionState::Finished) {
        return false;
    }
    current = SelectionState::Finished;
    start = first;
    end = second;
    return true;
}

bool Selection::moveFirstCornerTo(const QPoint& target)
{
    if (current != SelectionState::Finished) {
        return false;
    }
    pressPoint = start;
    currentPoint = target;
    dragged = true;
    current = SelectionState::Moved;
    // Taken over at once, so that edits follow each other also while nothing is painted.
    selectRect();
    return true;
}

bool Selection::setExtent(const QPoint& extent)
{
    if (current != SelectionState::Finished) {
        return false;
    }
    end = start + extent;
    return true;
}

bool Selection::contains(const QPoint& point) const
{
    return rectBetween(start, end).contains(point);
}

DTAG_STATUS Selection::handleAt(const QPoint& point) const
{
    for (const DTAG_STATUS candidate : hitOrder) {
        if (handleSquares[candidate - 1U].contains(point)) {
            return candidate;
        }
    }
    return preView::NoHandle;
}

QPoint Selection::moveOffset() const
{
    const QRect rect = rectBetween(start, end);
    const QPoint offset = currentPoint - pressPoint;
    return {limitedOffset(offset.x(), rect.left(), rect.right(), imageArea.maximum.x()),
            limitedOffset(offset.y(), rect.top(), rect.bottom(), imageArea.maximum.y())};
}

QRect Selection::moveRect()
{
    const QRect rect = rectBetween(start, end).translated(dragged ? moveOffset() : QPoint());
    if (current == SelectionState::Moved) {
        takeOver(rect);
    }
    return rect;
}

QRect Selection::stretchRect()
{
    QRect rect = rectBetween(start, end);
    // Before the first move, and after a mere click, no edge may jump to the pointer.
    if (dragged) {
        const bool left = handle == preView::TopLeft || handle == preView::BottomLeft ||
                          handle == preView::LeftMiddle;
        const bool right = handle == preView::TopRight || handle == preView::BottomRight ||
                           handle == preView::RightMiddle;
        const bool top = handle == preView::TopLeft || handle == preView::TopRight ||
                         handle == preView::TopMiddle;
        const bool bottom = handle == preView::BottomLeft || handle == preView::BottomRight ||
                            handle == preView::BottomMiddle;
        const int x = currentPoint.x();
        const int y = currentPoint.y();
        if (left) {
            rect.setLeft(within(x, 0, rect.right() - minimumStretch, rect.left()));
        }
        if (right) {
            rect.setRight(
                within(x, rect.left() + minimumStretch, imageArea.maximum.x(), rect.right()));
        }
        if (top) {
            rect.setTop(within(y, 0, rect.bottom() - minimumStretch, rect.top()));
        }
        if (bottom) {
            rect.setBottom(
                within(y, rect.top() + minimumStretch, imageArea.maximum.y(), rect.bottom()));
        }
    }
    if (current == SelectionState::Stretched) {
        takeOver(rect);
    }
    return rect;
}

QRect Selection::selectRect()
{
    QRect rect;
    switch (current) {
    case SelectionState::Drawing:
    case SelectionState::Finished:
        rect = rectBetween(start, end);
        break;
    case SelectionState::Moving:
    case SelectionState::Moved:
        rect = moveRect();
        break;
    case SelectionState::Stretching:
    case SelectionState::Stretched:
        rect = stretchRect();
        break;
    case SelectionState::Idle:
        return {QPoint(0, 0), QPoint(99, 199)};
    }
    if (current == SelectionState::Moved || current == SelectionState::Stretched) {
        current = SelectionState::Finished;
    }
    selectedRect = rect;
    layOutHandles(rect);
    return rect;
}

QPoint Selection::limited(const QPoint& point) const
{
    const QPoint extent = imageArea.maximum - imageArea.origin;
    if (QRect(QPoint(0, 0), extent).contains(point)) {
        return point;
    }
    // One pixel past the edge on purpose: a rectangle ends one before its second corner.
    const auto along = [](int value, int limit) {
        return value < 1 ? 0 : std::min(value, limit + 1);
    };
    return {along(point.x(), extent.x()), along(point.y(), extent.y())};
}

Qt::CursorShape Selection::hoverCursor(const QPoint& point) const
{
    const Qt::CursorShape inside = contains(point) ? Qt::SizeAllCursor : Qt::ArrowCursor;
    return handleCursor(handleAt(point)).value_or(inside);
}

void Selection::takeOver(const QRect& rect)
{
    // The second corner lies one past the edge, so that rectBetween() gives the same rectangle
    // back.
    start = rect.topLeft();
    end = rect.bottomRight() + QPoint(1, 1);
    pressPoint = currentPoint = QPoint();
    dragged = false;
}

void Selection::layOutHandles(const QRect& rect)
{
    const int middleX = (rect.left() + rect.right()) / 2;
    const int middleY = (rect.top() + rect.bottom()) / 2;
    const std::array<std::pair<DTAG_STATUS, QPoint>, 8> centres = {{
        {preView::TopLeft, rect.topLeft()},
        {preView::TopRight, rect.topRight()},
        {preView::BottomLeft, rect.bottomLeft()},
        {preView::BottomRight, rect.bottomRight()},
        {preView::LeftMiddle, {rect.left(), middleY}},
        {preView::TopMiddle, {middleX, rect.top()}},
        {preView::RightMiddle, {rect.right(), middleY}},
        {preView::BottomMiddle, {middleX, rect.bottom()}},
    }};
    constexpr QPoint toCorner(handleSide / 2, handleSide / 2);
    for (const auto& [which, centre] : centres) {
        handleSquares[which - 1U] = QRect(centre - toCorner, QSize(handleSide, handleSide));
    }
}

void Selection::forget()
{
    current = SelectionState::Idle;
    start = end = pressPoint = currentPoint = QPoint();
    dragged = false;
    selectedRect = QRect();
}

} // namespace kestrel
