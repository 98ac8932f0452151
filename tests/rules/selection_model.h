/// @file
/// A second selection, made of edges and numbers only: what the first is compared with.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kestrel::test {

/// Edges of a rectangle, all within it.
struct Edges
{
    int left, top, right, bottom;
    bool holds(int x, int y) const { return left <= x && x <= right && top <= y && y <= bottom; }
};

enum class Button
{
    Left,
    Middle,
    Right
};

/// Follows presses, moves and releases by the rules as a user would tell them.
class SelectionModel
{
public:
    SelectionModel(int maximumX, int maximumY) : m_maxX(maximumX), m_maxY(maximumY) {}

    int state = 0; ///< 0 none, 1 drawing, 2 at rest, 3 moving, 5 stretching
    std::string cursor = "arrow";
    std::vector<Edges> told; ///< what was announced; no selection is 0, 0, -1, -1

    void press(int x, int y, Button button)
    {
        if (button == Button::Right) {
            clear();
            told.push_back({0, 0, -1, -1});
            return;
        }
        m_grip = gripAt(x, y);
        const bool fromNothing = state == 0 && button == Button::Left;
        if (fromNothing || !box().holds(x, y)) {
            state = 1;
            m_ax = m_bx = x;
            m_ay = m_by = y;
            return;
        }
        if (m_grip == 0 && button != Button::Left) {
            return;
        }
        state = m_grip == 0 ? 3 : 5;
        cursor = m_grip == 0 ? "all" : gripCursor(m_grip);
        m_fromX = x;
        m_fromY = y;
        m_toX = x;
        m_toY = y;
        m_pulling = false;
    }

    void move(int x, int y, bool rightHeld)
    {
        if (rightHeld) {
            return;
        }
        if (state == 1) {
            drawTo(x, y);
        } else if (state == 3 || state == 5) {
            m_toX = x;
            m_toY = y;
            m_pulling = true;
        } else {
            const int grip = gripAt(x, y);
            cursor = grip != 0 ? gripCursor(grip) : box().holds(x, y) ? "all" : "arrow";
        }
        told.push_back(query());
    }

    void release(int x, int y, Button button)
    {
        if (state == 1) {
            drawTo(x, y);
            state = 2;
        } else if (state == 3 || state == 5) {
            const bool near =
                x - m_fromX > -6 && x - m_fromX < 6 && y - m_fromY > -6 && y - m_fromY < 6;
            m_pulling = !near;
            m_toX = x;
            m_toY = y;
            const Edges result = dragged();
            m_ax = result.left;
            m_ay = result.top;
            m_bx = result.right + 1;
            m_by = result.bottom + 1;
            state = 2;
            cursor = "arrow";
        }
        if (button == Button::Right) {
            clear();
        } else if (state != 0) {
            query();
        }
    }

    /// The selection as it stands.
    Edges query()
    {
        if (state == 0) {
            return {0, 0, 99, 199};
        }
        m_drawn = state == 3 || state == 5 ? dragged() : box();
        return *m_drawn;
    }

private:
    void clear()
    {
        state = 0;
        m_ax = m_ay = m_bx = m_by = 0;
        cursor = "arrow";
    }

    /// From one corner to the other, the second never left of or above the picture.
    Edges box() const
    {
        const int bx = m_bx < 0 ? 0 : m_bx;
        const int by = m_by < 0 ? 0 : m_by;
        Edges edges{m_ax < bx ? m_ax : bx, m_ay < by ? m_ay : by, m_ax < bx ? bx - 1 : m_ax - 1,
                    m_ay < by ? by - 1 : m_ay - 1};
        if (m_ax == bx) {
            edges.right = edges.left;
        }
        if (m_ay == by) {
            edges.bottom = edges.top;
        }
        return edges;
    }

    void drawTo(int x, int y)
    {
        const bool onPicture = x >= 0 && x <= m_maxX && y >= 0 && y <= m_maxY;
        const auto held = [](int value, int most) {
            return value < 1 ? 0 : value > most ? most + 1 : value;
        };
        m_bx = onPicture ? x : held(x, m_maxX);
        m_by = onPicture ? y : held(y, m_maxY);
    }

    /// What the drag makes of the rectangle.
    Edges dragged() const
    {
        Edges edges = box();
        if (!m_pulling) {
            return edges;
        }
        if (state == 3) {
            int dx = m_toX - m_fromX;
            int dy = m_toY - m_fromY;
            dx = edges.left + dx < 0 ? -edges.left : dx;
            dx = edges.right + dx > m_maxX ? m_maxX - edges.right : dx;
            dy = edges.top + dy < 0 ? -edges.top : dy;
            dy = edges.bottom + dy > m_maxY ? m_maxY - edges.bottom : dy;
            return {edges.left + dx, edges.top + dy, edges.right + dx, edges.bottom + dy};
        }
        const Edges old = edges;
        const auto pull = [](int& edge, int to, int low, int high) {
            if (low <= high) {
                edge = to < low ? low : to > high ? high : to;
            }
        };
        if (m_grip == 1 || m_grip == 3 || m_grip == 5) {
            pull(edges.left, m_toX, 0, old.right - 18);
        }
        if (m_grip == 2 || m_grip == 4 || m_grip == 7) {
            pull(edges.right, m_toX, old.left + 18, m_maxX);
        }
        if (m_grip == 1 || m_grip == 2 || m_grip == 6) {
            pull(edges.top, m_toY, 0, old.bottom - 18);
        }
        if (m_grip == 3 || m_grip == 4 || m_grip == 8) {
            pull(edges.bottom, m_toY, old.top + 18, m_maxY);
        }
        return edges;
    }

    /// The handle there, on the rectangle as it was last seen.
    int gripAt(int x, int y) const
    {
        if (!m_drawn) {
            return 0;
        }
        const auto at = [](int value, int edge) { return edge - 3 <= value && value <= edge + 2; };
        const Edges& e = *m_drawn;
        const bool l = at(x, e.left);
        const bool r = at(x, e.right);
        const bool t = at(y, e.top);
        const bool b = at(y, e.bottom);
        const bool cx = at(x, (e.left + e.right) / 2);
        const bool cy = at(y, (e.top + e.bottom) / 2);
        return l && t    ? 1
               : cx && t ? 6
               : r && t  ? 2
               : r && cy ? 7
               : r && b  ? 4
               : cx && b ? 8
               : l && b  ? 3
               : l && cy ? 5
                         : 0;
    }

    static std::string gripCursor(int grip)
    {
        return std::vector<std::string>{"",    "fdiag", "bdiag", "bdiag", "fdiag",
                                        "hor", "ver",   "hor",   "ver"}
            .at(static_cast<std::size_t>(grip));
    }

    int m_maxX, m_maxY;
    int m_ax = 0, m_ay = 0, m_bx = 0, m_by = 0;
    int m_fromX = 0, m_fromY = 0, m_toX = 0, m_toY = 0;
    int m_grip = 0;
    bool m_pulling = false;
    std::optional<Edges> m_drawn;
};

/// One step of a random sequence of mouse events.
struct MouseStep
{
    enum class Kind
    {
        Press,
        Move,
        Release
    } kind;
    int x, y;
    Button button; ///< for press and release
};

} // namespace kestrel::test
