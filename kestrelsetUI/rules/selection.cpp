#include "rules/selection.h"

#include <cstdlib>

namespace kestrel {
namespace {

constexpr QRect kRectOfNothing(0, 0, 100, 200);

bool isClick(const QPoint& distance)
{
    return std::abs(distance.x()) < kDragDistance && std::abs(distance.y()) < kDragDistance;
}

} // namespace

Selection::Reaction Selection::press(const QPoint& point, Qt::MouseButton button)
{
    if (button == Qt::RightButton) {
        return clear();
    }
    Reaction reaction;
    const bool left = button == Qt::LeftButton;
    m_handle = handleAt(point);
    if (!contains(point) || (left && m_pictureShown && m_state == SelectionState::Idle)) {
        m_state = SelectionState::Drawing;
        m_start = m_end = point;
    } else if (m_handle != preView::NoHandle) {
        beginDrag(SelectionState::Stretching, point);
        reaction.cursor = handleCursor(m_handle);
    } else if (left) {
        beginDrag(SelectionState::Moving, point);
        reaction.cursor = Qt::SizeAllCursor;
    }
    return reaction;
}

Selection::Reaction Selection::move(const QPoint& point, Qt::MouseButtons held)
{
    Reaction reaction;
    if (held.testFlag(Qt::RightButton)) {
        return reaction;
    }
    switch (m_state) {
    case SelectionState::Drawing:
        m_end = drawnTo(point, m_area);
        break;
    case SelectionState::Moving:
    case SelectionState::Stretching:
        m_pointer = point;
        m_dragged = true;
        break;
    default:
        reaction.cursor = handleCursor(handleAt(point))
                              .value_or(contains(point) ? Qt::SizeAllCursor : Qt::ArrowCursor);
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
    if (m_state == SelectionState::Drawing) {
        m_state = SelectionState::Finished;
        m_end = drawnTo(point, m_area);
    } else if (m_state == SelectionState::Moving || m_state == SelectionState::Stretching) {
        m_state =
            m_state == SelectionState::Moving ? SelectionState::Moved : SelectionState::Stretched;
        m_dragged = !isClick(point - m_press);
        m_pointer = m_dragged ? point : m_press;
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
    if (moveFirstCornerTo(m_start + offset)) {
        reaction.announced = selectRect();
        reaction.repaint = true;
    }
    return reaction;
}

Selection::Reaction Selection::grow(const QPoint& offset)
{
    Reaction reaction;
    if (m_state == SelectionState::Finished) {
        const QPoint corner = rectBetween(m_start, m_end).bottomRight();
        m_handle = offset.y() == 0   ? preView::RightMiddle
                   : offset.x() == 0 ? preView::BottomMiddle
                                     : preView::BottomRight;
        beginDrag(SelectionState::Stretched, corner);
        m_pointer = corner + offset;
        m_dragged = true;
        reaction.announced = selectRect();
        reaction.repaint = true;
    }
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
    if (m_state != SelectionState::Idle && m_state != SelectionState::Finished) {
        return false;
    }
    m_state = SelectionState::Finished;
    m_start = first;
    m_end = second;
    return true;
}

bool Selection::moveFirstCornerTo(const QPoint& target)
{
    if (m_state != SelectionState::Finished) {
        return false;
    }
    beginDrag(SelectionState::Moved, m_start);
    m_pointer = target;
    m_dragged = true;
    // Taken over at once, so that edits follow each other also while nothing is painted.
    selectRect();
    return true;
}

bool Selection::setExtent(const QPoint& extent)
{
    if (m_state != SelectionState::Finished) {
        return false;
    }
    m_end = m_start + extent;
    return true;
}

bool Selection::contains(const QPoint& point) const
{
    return rectBetween(m_start, m_end).contains(point);
}

preView::DTAG_STATUS Selection::handleAt(const QPoint& point) const
{
    return kestrel::handleAt(point, m_handles);
}

QPoint Selection::moveOffset() const
{
    return offsetWithin(m_pointer - m_press, rectBetween(m_start, m_end), m_area);
}

QRect Selection::moveRect()
{
    QRect rect = rectBetween(m_start, m_end);
    if (m_dragged) {
        rect.translate(moveOffset());
    }
    if (m_state == SelectionState::Moved) {
        takeOver(rect);
    }
    return rect;
}

QRect Selection::stretchRect()
{
    QRect rect = rectBetween(m_start, m_end);
    if (m_dragged) {
        rect = stretched(rect, m_handle, m_pointer, m_area);
    }
    if (m_state == SelectionState::Stretched) {
        takeOver(rect);
    }
    return rect;
}

QRect Selection::selectRect()
{
    QRect rect;
    switch (m_state) {
    case SelectionState::Idle:
        return kRectOfNothing;
    case SelectionState::Drawing:
    case SelectionState::Finished:
        rect = rectBetween(m_start, m_end);
        break;
    case SelectionState::Moving:
    case SelectionState::Moved:
        rect = moveRect();
        break;
    case SelectionState::Stretching:
    case SelectionState::Stretched:
        rect = stretchRect();
        break;
    }
    if (m_state == SelectionState::Moved || m_state == SelectionState::Stretched) {
        m_state = SelectionState::Finished;
    }
    m_handles = handleSquares(rect);
    return rect;
}

void Selection::beginDrag(SelectionState state, const QPoint& point)
{
    m_state = state;
    m_press = m_pointer = point;
    m_dragged = false;
}

void Selection::takeOver(const QRect& rect)
{
    // The second corner lies one past the edge, so that the rectangle between them is this one.
    m_start = rect.topLeft();
    m_end = rect.bottomRight() + QPoint(1, 1);
    m_press = m_pointer = QPoint();
    m_dragged = false;
}

void Selection::forget()
{
    m_state = SelectionState::Idle;
    m_start = m_end = m_press = m_pointer = QPoint();
    m_dragged = false;
}

} // namespace kestrel
