#include "rules/selection.h"
#include "rules/selection_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

using namespace kestrel;
using test::Button;
using test::Edges;

namespace {

const std::map<Button, Qt::MouseButton> kButtons{{Button::Left, Qt::LeftButton},
                                                 {Button::Middle, Qt::MiddleButton},
                                                 {Button::Right, Qt::RightButton}};

const std::map<Qt::CursorShape, std::string> kCursors{
    {Qt::ArrowCursor, "arrow"},     {Qt::SizeAllCursor, "all"}, {Qt::SizeFDiagCursor, "fdiag"},
    {Qt::SizeBDiagCursor, "bdiag"}, {Qt::SizeHorCursor, "hor"}, {Qt::SizeVerCursor, "ver"}};

QRect rect(const Edges& edges)
{
    return {QPoint(edges.left, edges.top), QPoint(edges.right, edges.bottom)};
}

/// Both selections side by side, over random events.
class Pair
{
public:
    explicit Pair(unsigned int seed)
        : m_random(seed), m_maxX(pick(40, 300)), m_maxY(pick(40, 400)), m_model(m_maxX, m_maxY)
    {
        m_selection.setArea({QPoint(0, 0), QPoint(m_maxX, m_maxY)});
        m_selection.setPictureShown(true);
    }

    void step()
    {
        QPoint point = somewhere();
        const int kind = pick(0, 9);
        if (kind < 3) {
            // A widget gets the presses that are on it; moves and releases come from everywhere.
            point = {std::max(point.x(), 0), std::max(point.y(), 0)};
            const Button button = someButton();
            m_held |= kButtons.at(button);
            note(m_selection.press(point, kButtons.at(button)));
            m_model.press(point.x(), point.y(), button);
        } else if (kind < 7) {
            note(m_selection.move(point, m_held));
            m_model.move(point.x(), point.y(), m_held.testFlag(Qt::RightButton));
        } else {
            const Button button = someButton();
            m_held &= ~Qt::MouseButtons(kButtons.at(button));
            note(m_selection.release(point, kButtons.at(button)));
            m_model.release(point.x(), point.y(), button);
        }
        ASSERT_EQ(m_told.size(), m_model.told.size());
        if (!m_told.empty()) {
            ASSERT_EQ(m_told.back(), rect(m_model.told.back()));
        }
        ASSERT_EQ(m_cursor, m_model.cursor);
        ASSERT_EQ(m_selection.selectRect(), rect(m_model.query()));
        ASSERT_EQ(static_cast<int>(m_selection.state()), m_model.state);
        m_last = point;
    }

    /// States that were gone through, as a sign that the sequences reach all of them.
    int state() const { return m_model.state; }

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }

    Button someButton()
    {
        const int any = pick(0, 9);
        return any < 7 ? Button::Left : any < 9 ? Button::Middle : Button::Right;
    }

    /// Anywhere on and around the picture, often close to the last place or to the selection's
    /// edges.
    QPoint somewhere()
    {
        const QRect selected = m_selection.selectRect();
        switch (pick(0, 4)) {
        case 0:
            return m_last + QPoint(pick(-7, 7), pick(-7, 7));
        case 1:
            return QPoint(pick(0, 1) == 0 ? selected.left() : selected.right(),
                          pick(0, 1) == 0 ? selected.top() : selected.bottom()) +
                   QPoint(pick(-4, 4), pick(-4, 4));
        case 2:
            return selected.center() +
                   QPoint(pick(-4, 4), pick(-selected.height(), selected.height()));
        default:
            return {pick(-30, m_maxX + 30), pick(-30, m_maxY + 30)};
        }
    }

    void note(const Selection::Reaction& reaction)
    {
        if (reaction.announced) {
            m_told.push_back(*reaction.announced);
        }
        if (reaction.cursor) {
            m_cursor = kCursors.at(*reaction.cursor);
        }
    }

    std::mt19937 m_random;
    int m_maxX;
    int m_maxY;
    Selection m_selection;
    test::SelectionModel m_model;
    Qt::MouseButtons m_held;
    QPoint m_last;
    std::vector<QRect> m_told;
    std::string m_cursor = "arrow";
};

} // namespace

TEST(SelectionModel, AgreesOverLongRandomSequences)
{
    std::map<int, int> visits;
    for (unsigned int seed = 1; seed <= 60; ++seed) {
        Pair pair(seed);
        for (int i = 0; i < 2000; ++i) {
            pair.step();
            if (testing::Test::HasFatalFailure()) {
                FAIL() << "seed " << seed << " step " << i;
            }
            ++visits[pair.state()];
        }
    }
    for (const int state : {0, 1, 2, 3, 5}) {
        EXPECT_GT(visits[state], 100) << "state " << state << " was hardly reached";
    }
}
