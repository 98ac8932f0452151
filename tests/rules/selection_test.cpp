#include "rules/selection.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

using namespace kestrel;
using preView::DTAG_STATUS;
using State = SelectionState;

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

/// A selection at rest with these edges, as drawn with the mouse and painted.
Selection resting(const QRect& rect)
{
    Selection selection;
    selection.setArea(kArea);
    selection.setPictureShown(true);
    selection.press(rect.topLeft(), Qt::LeftButton);
    selection.move(rect.bottomRight() + QPoint(1, 1), Qt::LeftButton);
    selection.release(rect.bottomRight() + QPoint(1, 1), Qt::LeftButton);
    EXPECT_EQ(selection.selectRect(), rect);
    return selection;
}

QRect dragged(Selection& selection, const QPoint& from, const QPoint& to)
{
    selection.press(from, Qt::LeftButton);
    selection.move(to, Qt::LeftButton);
    selection.release(to, Qt::LeftButton);
    return selection.selectRect();
}

} // namespace

TEST(Selection, BeginsIdleWithAFixedRectangleAndNoHandles)
{
    Selection selection;
    EXPECT_EQ(selection.state(), State::Idle);
    EXPECT_EQ(selection.selectRect(), edges(0, 0, 99, 199));
    EXPECT_EQ(selection.state(), State::Idle);
    EXPECT_EQ(selection.handleAt({0, 0}), preView::NoHandle);
}

TEST(Selection, IsDrawnFromPressToRelease)
{
    Selection selection;
    selection.setArea(kArea);
    const auto pressed = selection.press({50, 60}, Qt::LeftButton);
    EXPECT_EQ(selection.state(), State::Drawing);
    EXPECT_FALSE(pressed.announced);
    EXPECT_EQ(selection.selectRect(), QRect(50, 60, 1, 1));
    const auto moved = selection.move({80, 100}, Qt::LeftButton);
    EXPECT_EQ(moved.announced, QRect(50, 60, 30, 40));
    EXPECT_TRUE(moved.repaint);
    EXPECT_EQ(selection.state(), State::Drawing);
    const auto released = selection.release({90, 110}, Qt::LeftButton);
    EXPECT_FALSE(released.announced);
    EXPECT_TRUE(released.repaint);
    EXPECT_EQ(selection.state(), State::Finished);
    EXPECT_EQ(selection.selectRect(), QRect(50, 60, 40, 50));
}

TEST(Selection, MiddleButtonDrawsToo)
{
    Selection selection;
    selection.setArea(kArea);
    selection.press({50, 60}, Qt::MiddleButton);
    selection.release({70, 80}, Qt::MiddleButton);
    EXPECT_EQ(selection.state(), State::Finished);
    EXPECT_EQ(selection.selectRect(), QRect(50, 60, 20, 20));
}

TEST(Selection, DrawnPastTheEdgeEndsOnTheLastPixel)
{
    Selection selection;
    selection.setArea(kArea);
    selection.press({250, 350}, Qt::LeftButton);
    selection.release({1000, 1000}, Qt::LeftButton);
    EXPECT_EQ(selection.selectRect(), edges(250, 350, 299, 399));
    selection.press({100, 100}, Qt::LeftButton);
    selection.release({-50, -50}, Qt::LeftButton);
    EXPECT_EQ(selection.selectRect(), edges(0, 0, 99, 99));
}

TEST(Selection, PressInTheCornerStartsARectangleOnlyOnAPictureWithAScale)
{
    // While nothing is selected, the corner counts as inside.
    Selection selection;
    selection.setArea(kArea);
    selection.press({0, 0}, Qt::LeftButton);
    EXPECT_EQ(selection.state(), State::Moving);
    selection.clear();
    selection.setPictureShown(true);
    selection.press({0, 0}, Qt::LeftButton);
    EXPECT_EQ(selection.state(), State::Drawing);
    selection.clear();
    selection.press({0, 0}, Qt::MiddleButton);
    EXPECT_EQ(selection.state(), State::Idle);
}

TEST(Selection, IsMovedByAPressInside)
{
    Selection selection = resting(edges(50, 60, 149, 159));
    const auto pressed = selection.press({100, 100}, Qt::LeftButton);
    EXPECT_EQ(selection.state(), State::Moving);
    EXPECT_EQ(pressed.cursor, Qt::SizeAllCursor);
    EXPECT_EQ(selection.selectRect(), edges(50, 60, 149, 159));
    EXPECT_EQ(selection.move({110, 80}, Qt::LeftButton).announced, edges(60, 40, 159, 139));
    const auto released = selection.release({120, 80}, Qt::LeftButton);
    EXPECT_EQ(selection.state(), State::Moved);
    EXPECT_EQ(released.cursor, Qt::ArrowCursor);
    EXPECT_FALSE(released.announced);
    EXPECT_EQ(selection.selectRect(), edges(70, 40, 169, 139));
    EXPECT_EQ(selection.state(), State::Finished);
    // Taken over once and not twice.
    EXPECT_EQ(selection.selectRect(), edges(70, 40, 169, 139));
    EXPECT_EQ(selection.moveOffset(), QPoint(0, 0));
}

TEST(Selection, MovedAgainstTheEdgeKeepsItsSize)
{
    Selection selection = resting(edges(50, 60, 149, 159));
    EXPECT_EQ(dragged(selection, {100, 100}, {290, 390}), edges(200, 300, 299, 399));
    EXPECT_EQ(dragged(selection, {250, 350}, {-300, -300}), edges(0, 0, 99, 99));
}

TEST(Selection, ClickInsideLeavesItWhereItWas)
{
    const QRect rect = edges(50, 60, 149, 159);
    for (const QPoint& distance : {QPoint(0, 0), QPoint(5, 5), QPoint(-5, 5), QPoint(5, -5)}) {
        Selection selection = resting(rect);
        EXPECT_EQ(dragged(selection, {100, 100}, QPoint(100, 100) + distance), rect);
    }
    Selection selection = resting(rect);
    EXPECT_EQ(dragged(selection, {100, 100}, {106, 100}), rect.translated(6, 0));
    EXPECT_EQ(dragged(selection, {100, 100}, {101, 94}), rect.translated(7, -6));
}

TEST(Selection, MoveBackToWhereItBeganIsAClick)
{
    Selection selection = resting(edges(50, 60, 149, 159));
    selection.press({100, 100}, Qt::LeftButton);
    EXPECT_EQ(selection.move({200, 200}, Qt::LeftButton).announced, edges(150, 160, 249, 259));
    selection.release({103, 97}, Qt::LeftButton);
    EXPECT_EQ(selection.selectRect(), edges(50, 60, 149, 159));
}

TEST(Selection, IsStretchedByEachHandle)
{
    const QRect rect = edges(50, 60, 150, 160);
    // The inner half of each square, because only that is inside.
    const std::vector<std::pair<QPoint, QRect>> drags{
        {{51, 61}, edges(71, 91, 150, 160)},   {{149, 61}, edges(50, 91, 169, 160)},
        {{51, 159}, edges(71, 60, 150, 189)},  {{149, 159}, edges(50, 60, 169, 189)},
        {{51, 110}, edges(71, 60, 150, 160)},  {{100, 61}, edges(50, 91, 150, 160)},
        {{149, 110}, edges(50, 60, 169, 160)}, {{100, 159}, edges(50, 60, 150, 189)}};
    for (std::size_t i = 0; i < drags.size(); ++i) {
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton, Qt::BackButton}) {
            Selection selection = resting(rect);
            const auto [from, result] = drags[i];
            const auto pressed = selection.press(from, button);
            EXPECT_EQ(selection.state(), State::Stretching);
            EXPECT_EQ(pressed.cursor, handleCursor(static_cast<DTAG_STATUS>(i + 1)));
            EXPECT_EQ(selection.selectRect(), rect) << "jumped before the first move";
            EXPECT_EQ(selection.move(from + QPoint(20, 30), button).announced, result);
            const auto released = selection.release(from + QPoint(20, 30), button);
            EXPECT_EQ(released.cursor, Qt::ArrowCursor);
            EXPECT_EQ(selection.state(), State::Stretched);
            EXPECT_EQ(selection.stretchRect(), result);
            EXPECT_EQ(selection.selectRect(), result);
            EXPECT_EQ(selection.state(), State::Finished);
            EXPECT_EQ(selection.selectRect(), result);
        }
    }
}

TEST(Selection, ClickOnAHandleChangesNothing)
{
    const QRect rect = edges(50, 60, 150, 160);
    for (const QPoint& distance : {QPoint(0, 0), QPoint(5, 5), QPoint(-5, -5)}) {
        Selection selection = resting(rect);
        EXPECT_EQ(dragged(selection, {52, 62}, QPoint(52, 62) + distance), rect);
    }
}

TEST(Selection, PressOnTheOuterHalfOfAHandleStartsANewRectangle)
{
    Selection selection = resting(edges(50, 60, 150, 160));
    ASSERT_EQ(selection.handleAt({48, 58}), preView::TopLeft);
    selection.press({48, 58}, Qt::LeftButton);
    EXPECT_EQ(selection.state(), State::Drawing);
    EXPECT_EQ(selection.selectRect(), QRect(48, 58, 1, 1));
}

TEST(Selection, MiddleButtonInsideButOnNoHandleDoesNothing)
{
    Selection selection = resting(edges(50, 60, 150, 160));
    const auto pressed = selection.press({100, 90}, Qt::MiddleButton);
    EXPECT_FALSE(pressed.cursor);
    EXPECT_EQ(selection.state(), State::Finished);
    selection.move({120, 120}, Qt::MiddleButton);
    selection.release({130, 130}, Qt::MiddleButton);
    EXPECT_EQ(selection.selectRect(), edges(50, 60, 150, 160));
}

TEST(Selection, CursorFollowsThePointerWhileNothingIsDragged)
{
    Selection selection = resting(edges(50, 60, 150, 160));
    EXPECT_EQ(selection.move({48, 58}, Qt::NoButton).cursor, Qt::SizeFDiagCursor);
    EXPECT_EQ(selection.move({152, 110}, Qt::NoButton).cursor, Qt::SizeHorCursor);
    EXPECT_EQ(selection.move({80, 90}, Qt::NoButton).cursor, Qt::SizeAllCursor);
    EXPECT_EQ(selection.move({10, 10}, Qt::NoButton).cursor, Qt::ArrowCursor);
    EXPECT_EQ(selection.state(), State::Finished);
}

TEST(Selection, EveryMoveIsAnnouncedWhateverTheState)
{
    Selection selection;
    selection.setArea(kArea);
    EXPECT_EQ(selection.move({10, 10}, Qt::NoButton).announced, edges(0, 0, 99, 199));
    selection = resting(edges(50, 60, 150, 160));
    EXPECT_EQ(selection.move({10, 10}, Qt::NoButton).announced, edges(50, 60, 150, 160));
}

TEST(Selection, MovesWithTheRightButtonHeldDoNothing)
{
    Selection selection = resting(edges(50, 60, 150, 160));
    selection.press({100, 100}, Qt::LeftButton);
    const auto moved = selection.move({200, 200}, Qt::LeftButton | Qt::RightButton);
    EXPECT_FALSE(moved.announced);
    EXPECT_FALSE(moved.cursor);
    EXPECT_FALSE(moved.repaint);
    EXPECT_EQ(selection.selectRect(), edges(50, 60, 150, 160));
}

TEST(Selection, RightPressClearsFromEveryState)
{
    for (int state = 0; state <= 6; ++state) {
        Selection selection;
        selection.setArea(kArea);
        if (state == 1) {
            selection.press({20, 20}, Qt::LeftButton);
        } else if (state >= 2) {
            selection = resting(edges(50, 60, 150, 160));
        }
        if (state >= 3) {
            selection.press(state <= 4 ? QPoint(100, 90) : QPoint(52, 62), Qt::LeftButton);
        }
        if (state == 4 || state == 6) {
            selection.release({120, 120}, Qt::LeftButton);
        }
        ASSERT_EQ(static_cast<int>(selection.state()), state);
        const auto reaction = selection.press({80, 80}, Qt::RightButton);
        EXPECT_EQ(reaction.announced, QRect());
        EXPECT_EQ(reaction.cursor, Qt::ArrowCursor);
        EXPECT_TRUE(reaction.repaint);
        EXPECT_EQ(selection.state(), State::Idle);
        EXPECT_FALSE(selection.contains({80, 80}));
        EXPECT_EQ(selection.selectRect(), edges(0, 0, 99, 199));
    }
}

TEST(Selection, RightReleaseClearsWithoutAWord)
{
    Selection selection = resting(edges(50, 60, 150, 160));
    const auto reaction = selection.release({80, 80}, Qt::RightButton);
    EXPECT_FALSE(reaction.announced);
    EXPECT_EQ(reaction.cursor, Qt::ArrowCursor);
    EXPECT_TRUE(reaction.repaint);
    EXPECT_EQ(selection.state(), State::Idle);
}

TEST(Selection, CornersAreSetUnlessTheUserIsDragging)
{
    Selection selection;
    EXPECT_TRUE(selection.setCorners({10, 20}, {110, 220}));
    EXPECT_EQ(selection.state(), State::Finished);
    EXPECT_EQ(selection.selectRect(), QRect(10, 20, 100, 200));
    EXPECT_TRUE(selection.setCorners({0, 0}, {10, 10}));
    selection = resting(edges(50, 60, 150, 160));
    selection.press({100, 90}, Qt::LeftButton);
    EXPECT_FALSE(selection.setCorners({0, 0}, {10, 10}));
    EXPECT_EQ(selection.selectRect(), edges(50, 60, 150, 160));
    selection.clear();
    selection.press({200, 200}, Qt::LeftButton);
    EXPECT_FALSE(selection.setCorners({0, 0}, {10, 10}));
}

TEST(Selection, FirstCornerIsMovedOnlyAtRest)
{
    Selection idle;
    EXPECT_FALSE(idle.moveFirstCornerTo({5, 5}));
    Selection selection = resting(edges(50, 60, 149, 159));
    EXPECT_TRUE(selection.moveFirstCornerTo({70, 10}));
    EXPECT_EQ(selection.state(), State::Finished);
    EXPECT_EQ(selection.selectRect(), edges(70, 10, 169, 109));
    EXPECT_TRUE(selection.moveFirstCornerTo({1000, 1000}));
    EXPECT_EQ(selection.selectRect(), edges(200, 300, 299, 399));
    selection.press({250, 350}, Qt::LeftButton);
    EXPECT_FALSE(selection.moveFirstCornerTo({5, 5}));
}

TEST(Selection, FirstCornerIsWhereItWasBegun)
{
    Selection selection;
    selection.setArea(kArea);
    dragged(selection, {150, 160}, {100, 100});
    EXPECT_TRUE(selection.moveFirstCornerTo({200, 200}));
    EXPECT_EQ(selection.selectRect(), QRect(150, 140, 50, 60));
}

TEST(Selection, WithoutAPictureOnlyTheOriginLimits)
{
    Selection selection;
    selection.setCorners({10, 10}, {110, 210});
    EXPECT_TRUE(selection.moveFirstCornerTo({2000, 3000}));
    EXPECT_EQ(selection.selectRect(), QRect(2000, 3000, 100, 200));
    EXPECT_TRUE(selection.moveFirstCornerTo({-5, -5}));
    EXPECT_EQ(selection.selectRect(), QRect(0, 0, 100, 200));
}

TEST(Selection, ExtentIsSetFromTheFirstCornerOnlyAtRest)
{
    Selection idle;
    EXPECT_FALSE(idle.setExtent({5, 5}));
    Selection selection = resting(edges(50, 60, 149, 159));
    EXPECT_TRUE(selection.setExtent({30, 40}));
    EXPECT_EQ(selection.selectRect(), QRect(50, 60, 30, 40));
    EXPECT_TRUE(selection.setExtent({0, 0}));
    EXPECT_EQ(selection.selectRect(), QRect(50, 60, 1, 1));
}

TEST(Selection, NudgeMovesByPixelsAndAnnounces)
{
    Selection selection = resting(edges(1, 60, 100, 159));
    EXPECT_EQ(selection.nudge({-1, 0}).announced, edges(0, 60, 99, 159));
    EXPECT_EQ(selection.nudge({-1, 0}).announced, edges(0, 60, 99, 159));
    EXPECT_EQ(selection.nudge({0, 1}).announced, edges(0, 61, 99, 160));
    EXPECT_EQ(selection.state(), State::Finished);
}

TEST(Selection, GrowMovesRightAndBottomEdgeAndAnnounces)
{
    Selection selection = resting(edges(280, 300, 298, 398));
    EXPECT_EQ(selection.grow({1, 0}).announced, edges(280, 300, 299, 398));
    EXPECT_EQ(selection.grow({1, 0}).announced, edges(280, 300, 299, 398));
    EXPECT_EQ(selection.grow({0, 1}).announced, edges(280, 300, 299, 399));
    EXPECT_EQ(selection.grow({-1, 0}).announced, edges(280, 300, 298, 399));
    EXPECT_EQ(selection.grow({-1, 0}).announced, edges(280, 300, 298, 399));
    EXPECT_EQ(selection.grow({0, -1}).announced, edges(280, 300, 298, 398));
    EXPECT_EQ(selection.state(), State::Finished);
}

TEST(Selection, KeysDoNothingUnlessItRests)
{
    Selection selection;
    selection.setArea(kArea);
    EXPECT_FALSE(selection.nudge({1, 0}).announced);
    EXPECT_FALSE(selection.grow({1, 0}).announced);
    selection.press({20, 20}, Qt::LeftButton);
    EXPECT_FALSE(selection.nudge({1, 0}).announced);
    EXPECT_FALSE(selection.grow({1, 0}).announced);
    EXPECT_EQ(selection.state(), State::Drawing);
}
