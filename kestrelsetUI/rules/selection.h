/// @file
/// The selection rectangle on the preview: its states, its geometry and its handles, without a
/// widget.
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

/// What the user is doing with the selection.
enum class SelectionState
{
    Idle = 0,       ///< nothing selected
    Drawing = 1,    ///< a new rectangle follows the pointer
    Finished = 2,   ///< a rectangle is there and rests
    Moving = 3,     ///< it follows the pointer
    Moved = 4,      ///< let go, not yet taken over
    Stretching = 5, ///< a handle follows the pointer
    Stretched = 6,  ///< let go, not yet taken over
};

/// Where the picture lies, in pixels of the widget: from origin to maximum, both within.
struct ImageArea
{
    QPoint origin;
    QPoint maximum;
};

/// @return the rectangle between two corners given in any order: as wide and high as they differ,
/// at
///         least 1 x 1. Negative coordinates of @p b count as 0
QRect rectBetween(const QPoint& a, const QPoint& b);

/// @return @p position rounded to whole pixels, halves away from zero; coordinates beyond what a
/// screen
///         can have are limited so that sums of them stay exact
QPoint roundedPoint(const QPointF& position);

/// @return millimetres as pixels, cut off to an integer
/// @param standard pixels per 20 mm; 0 gives 0
int mmToPixels(double mm, int standard);

/// @return the pointer shape over a handle; nothing for NoHandle
std::optional<Qt::CursorShape> handleCursor(preView::DTAG_STATUS handle);

/// The selection rectangle as the mouse, the keyboard and the dialog's numbers change it.
///
///                        +--------------------------- press left inside ------+
///                        |             +------------- press on a handle ----+ |
///                        |             |                                    | |
///                 press  v   release   |                                    | |
///        Idle -------> Drawing ----> Finished <--------------+--------+     | |
///          ^             ^             |  ^ setRect          |        |     | |
///          |             +-------------+  |               query     query   | |
///          |              press outside   Idle               |        |     | |
///          |                                  release        |        |     | |
///          |                        Moving ------------> Moved        |     | |
///          |                          ^                               |     | |
///          |                          +---------------------------------------+
///          |                                    release               |     |
///          |                        Stretching ------------> Stretched      |
///          |                          ^                                     |
///          |                          +-------------------------------------+
///          +--- press right, release right, clear() from every state
///
/// "query" is selectRect(): the first one after a release takes the moved or stretched rectangle
/// over. A press counts as inside by the rectangle alone, so the outer half of a handle starts a
/// new one.
class Selection
{
public:
    /// The widget's share of an event.
    struct Reaction
    {
        std::optional<Qt::CursorShape> cursor; ///< shape the pointer takes; without one it stays
        std::optional<QRect> announced;        ///< the selection as the dialog is to be told it
        bool repaint = false;                  ///< the picture has changed
    };

    /// A rectangle can not be stretched to less than this between its edges, in pixels.
    static constexpr int minimumStretch = 18;
    /// From this distance on, in pixels on one axis, a press and a release are a drag.
    static constexpr int dragDistance = 6;
    /// Side of a handle square, in pixels.
    static constexpr int handleSide = 6;

    Selection();

    /// @param area where the picture lies from now on; until the first call nothing limits the
    /// right
    ///        and bottom
    /// @param shown whether the picture has a size on screen
    void setArea(const ImageArea& area, bool shown);
    const ImageArea& area() const { return imageArea; }

    Reaction press(const QPoint& point, Qt::MouseButton button);
    /// @param held buttons that are down during the move
    Reaction move(const QPoint& point, Qt::MouseButtons held);
    Reaction release(const QPoint& point, Qt::MouseButton button);
    /// Moves a resting rectangle by so many pixels, within the picture.
    Reaction nudge(const QPoint& offset);
    /// Moves right and bottom edge of a resting rectangle by so many pixels, within the picture.
    Reaction grow(const QPoint& offset);
    /// Drops the selection.
    Reaction clear();

    /// Puts the corners to @p first and @p second, unless the user is dragging.
    /// @return whether it was done
    bool setCorners(const QPoint& first, const QPoint& second);
    /// Moves a resting rectangle so that the corner where it was begun comes to @p target.
    /// @return whether there was one
    bool moveFirstCornerTo(const QPoint& target);
    /// Puts the second corner of a resting rectangle this far from the first.
    /// @return whether there was one
    bool setExtent(const QPoint& extent);

    SelectionState state() const { return current; }
    bool contains(const QPoint& point) const;
    /// @return the handle at @p point as last laid out by selectRect()
    preView::DTAG_STATUS handleAt(const QPoint& point) const;
    /// @return the handle squares, [handle - 1]
    const std::array<QRect, 8>& handles() const { return handleSquares; }

    /// @return how far the drag moves the rectangle, within the picture
    QPoint moveOffset() const;
    /// @return the moved rectangle; takes it over when it has been let go
    QRect moveRect();
    /// @return the stretched rectangle; takes it over when it has been let go
    QRect stretchRect();
    /// @return the rectangle as it stands; takes over what has been let go and lays out the
    /// handles.
    ///         While nothing is selected it is a fixed 100 x 200 at the origin
    QRect selectRect();
    /// @return the rectangle last given by selectRect(), null when nothing is selected
    const QRect& selected() const { return selectedRect; }

private:
    QPoint limited(const QPoint& point) const;
    Qt::CursorShape hoverCursor(const QPoint& point) const;
    void takeOver(const QRect& rect);
    void layOutHandles(const QRect& rect);
    void forget();

    ImageArea imageArea;
    bool pictureShown = false;
    SelectionState current = SelectionState::Idle;
    preView::DTAG_STATUS handle = preView::NoHandle;
    QPoint start;
    QPoint end;
    QPoint pressPoint;
    QPoint currentPoint;
    bool dragged = false; ///< currentPoint belongs to this press
    QRect selectedRect;
    std::array<QRect, 8> handleSquares;
};

} // namespace kestrel
