/// @file
/// The selection rectangle on the preview as the mouse, the keyboard and the dialog's numbers
/// change it; without a widget.
#pragma once

#include "rules/selection_geometry.h"

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

/// The state machine of the selection. Points are pixels of the widget.
///
///     Idle -- setCorners() --------------------------+
///      |                                             v
///      +-- press --> Drawing -- release ---------> Finished
///                       ^                           | | |  ^
///                       +----- press outside -------+ | |  |
///                                                     | |  |
///        Moved <-- release -- Moving <-- press left --+ |  |
///          |                             inside         |  |
///          +-------- selectRect() ----------------------|--+
///                                                       |  |
///        Stretched <-- release -- Stretching <-- press -+  |
///          |                                on a handle    |
///          +-------- selectRect() -------------------------+
///
///     every state -- press right, release right, clear() --> Idle
///
/// A press counts as inside by the rectangle alone: on the outer half of a handle it starts a new
/// one. A move or stretch that was let go becomes the rectangle with the first selectRect() after
/// it.
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

    /// @param area where the picture lies from now on
    void setArea(const ImageArea& area) { m_area = area; }
    const ImageArea& area() const { return m_area; }
    /// @param shown whether the picture has a scale; without one a press does not start a rectangle
    ///        in the corner, which counts as inside while there is none
    void setPictureShown(bool shown) { m_pictureShown = shown; }

    Reaction press(const QPoint& point, Qt::MouseButton button);
    /// @param held buttons that are down during the move
    Reaction move(const QPoint& point, Qt::MouseButtons held);
    Reaction release(const QPoint& point, Qt::MouseButton button);
    /// Moves a resting rectangle by so many pixels, within the picture.
    Reaction nudge(const QPoint& offset);
    /// Moves the right and bottom edge of a resting rectangle by so many pixels, within the
    /// picture.
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

    SelectionState state() const { return m_state; }
    /// @return whether @p point is in the rectangle between the two corners
    bool contains(const QPoint& point) const;
    /// @return the handle at @p point, as last laid out by selectRect()
    preView::DTAG_STATUS handleAt(const QPoint& point) const;
    const HandleSquares& handles() const { return m_handles; }

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

private:
    void beginDrag(SelectionState state, const QPoint& point);
    void takeOver(const QRect& rect);
    void forget();

    ImageArea m_area;
    bool m_pictureShown = false;
    SelectionState m_state = SelectionState::Idle;
    preView::DTAG_STATUS m_handle = preView::NoHandle; ///< what the last press hit
    QPoint m_start;                                    ///< corner where the rectangle was begun
    QPoint m_end;
    QPoint m_press;         ///< where a move or stretch began
    QPoint m_pointer;       ///< where it has got to
    bool m_dragged = false; ///< m_pointer is worth following: not before a move, nor after a click
    HandleSquares m_handles;
};

} // namespace kestrel
