// The selection on the preview box, by mouse, keyboard and the dialog's numbers.
#include "rules/selection_model.h"
#include "widgets/preview_box.h"

#include <QDialog>
#include <QShortcut>
#include <QTest>

#include <gtest/gtest.h>

#include <map>
#include <random>

using kestrel::test::Box;
using kestrel::test::Button;
using kestrel::test::Edges;
using kestrel::test::SelectionModel;

namespace {

const QRect kIdleRect(0, 0, 100, 200);

const std::map<Button, Qt::MouseButton> kButtons{{Button::Left, Qt::LeftButton},
                                                 {Button::Middle, Qt::MiddleButton},
                                                 {Button::Right, Qt::RightButton}};

const std::map<std::string, Qt::CursorShape> kCursors{
    {"arrow", Qt::ArrowCursor},     {"all", Qt::SizeAllCursor}, {"fdiag", Qt::SizeFDiagCursor},
    {"bdiag", Qt::SizeBDiagCursor}, {"hor", Qt::SizeHorCursor}, {"ver", Qt::SizeVerCursor}};

QRect rect(const Edges& edges)
{
    return {QPoint(edges.left, edges.top), QPoint(edges.right, edges.bottom)};
}

/// A box whose picture reaches to (199, 299), with a selection at rest.
class PreviewSelection : public testing::Test
{
protected:
    PreviewSelection()
    {
        box.load({200, 300});
        box.drag({50, 60}, {150, 160});
        box.announced.clear();
    }

    Box box;
    const QRect drawn{50, 60, 100, 100};
};

} // namespace

TEST(PreviewSelectionModel, AgreesOverLongRandomSequencesOfMouseEvents)
{
    for (unsigned int seed = 1; seed <= 12; ++seed) {
        std::mt19937 random(seed);
        const auto pick = [&random](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        Box box;
        box.load({200, 300}); // 1 pixel each, the box around it is larger
        SelectionModel model(199, 299);
        QPoint last;
        for (int i = 0; i < 1500; ++i) {
            QPoint point(pick(-40, 400), pick(-40, 600));
            if (pick(0, 1) == 0) {
                const QRect now = box.getSelectRect();
                const QPoint corner(pick(0, 1) == 0 ? now.left() : now.right(),
                                    pick(0, 1) == 0 ? now.top() : now.bottom());
                point = (pick(0, 2) == 0 ? last : corner) + QPoint(pick(-7, 7), pick(-7, 7));
            }
            const int kind = pick(0, 9);
            const int any = pick(0, 9);
            const Button button = any < 7 ? Button::Left : any < 9 ? Button::Middle : Button::Right;
            if (kind < 3) {
                point = {std::max(point.x(), 0), std::max(point.y(), 0)};
                box.press(point, kButtons.at(button));
                model.press(point.x(), point.y(), button);
            } else if (kind < 7) {
                box.move(point);
                // Mouse tracking is off: without a button there are no moves.
                if (box.held() != Qt::NoButton) {
                    model.move(point.x(), point.y(), box.held().testFlag(Qt::RightButton));
                }
            } else {
                box.release(point, kButtons.at(button));
                model.release(point.x(), point.y(), button);
            }
            ASSERT_EQ(box.announced.size(), model.told.size()) << "seed " << seed << " step " << i;
            if (!model.told.empty()) {
                ASSERT_EQ(box.announced.back(), std::make_pair(rect(model.told.back()), 30))
                    << "seed " << seed << " step " << i;
            }
            ASSERT_EQ(box.cursor().shape(), kCursors.at(model.cursor))
                << "seed " << seed << " step " << i;
            ASSERT_EQ(box.getSelectRect(), rect(model.query())) << "seed " << seed << " step " << i;
            last = point;
        }
    }
}

TEST(PreviewSelectionEvents, ComeThroughTheWindowToo)
{
    Box box;
    box.load({200, 300});
    box.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
    QTest::mousePress(box.windowHandle(), Qt::LeftButton, {}, {50, 60});
    QTest::mouseMove(box.windowHandle(), {120, 130});
    QTest::mouseRelease(box.windowHandle(), Qt::LeftButton, {}, {120, 130});
    EXPECT_EQ(box.getSelectRect(), QRect(50, 60, 70, 70));
    ASSERT_FALSE(box.announced.empty());
    EXPECT_EQ(box.announced.back(), std::make_pair(QRect(50, 60, 70, 70), 30));
    EXPECT_FALSE(box.hasMouseTracking());
}

TEST(PreviewSelectionEvents, PositionsAreRoundedHalvesAwayFromZero)
{
    Box box;
    box.load({200, 300});
    box.drag({49.5, 60.4}, {99.6, 100.5});
    EXPECT_EQ(box.getSelectRect(), QRect(50, 60, 50, 41));
}

TEST(PreviewSelectionEvents, WithoutAPictureTheMouseAndTheKeysDoNothing)
{
    Box box;
    box.setMaxHeightAndStandrad(200, 20);
    box.setRect(10, 10, 100, 100);
    box.drag({20, 20}, {80, 80});
    box.drag({200, 200}, {300, 300});
    box.press({20, 20}, Qt::RightButton);
    box.release({20, 20}, Qt::RightButton);
    EXPECT_TRUE(box.key(Qt::Key_Right));
    EXPECT_TRUE(box.key(Qt::Key_Escape));
    EXPECT_TRUE(box.announced.empty());
    EXPECT_EQ(box.getSelectRect(), QRect(10, 10, 100, 100));
}

TEST(PreviewSelectionEvents, OnAPictureWithoutAScaleTheyDoNoHarm)
{
    Box box;
    box.load({200, 300}, Qt::white, 200, 0);
    box.drag({50, 60}, {120, 130});
    EXPECT_EQ(box.getSelectRect(), QRect(0, 0, 50, 60));
    box.drag({10, 10}, {30, 30});
    box.key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_TRUE(box.getSelectRect().isValid());
}

TEST_F(PreviewSelection, IsDrawnMovedAndStretched)
{
    EXPECT_EQ(box.getSelectRect(), drawn);
    box.drag({100, 100}, {110, 120});
    EXPECT_EQ(box.getSelectRect(), drawn.translated(10, 20));
    box.drag({159, 179}, {180, 200});
    EXPECT_EQ(box.getSelectRect(), QRect(QPoint(60, 80), QPoint(180, 200)));
}

TEST_F(PreviewSelection, TakesOverAMoveAlsoWhenNothingIsPainted)
{
    box.drag({100, 100}, {110, 110});
    box.drag({110, 110}, {130, 120});
    EXPECT_EQ(box.getSelectRect(), drawn.translated(30, 20));
}

TEST_F(PreviewSelection, PressesAndReleasesAnnounceNothing)
{
    box.press({100, 100});
    EXPECT_TRUE(box.announced.empty());
    box.move({110, 100});
    EXPECT_EQ(box.announced.size(), 1U);
    box.release({120, 100});
    EXPECT_EQ(box.announced.size(), 1U);
    EXPECT_EQ(box.announced.back(), std::make_pair(drawn.translated(10, 0), 30));
}

TEST_F(PreviewSelection, RightClickAnywhereClearsIt)
{
    for (const QPoint& point : {QPoint(100, 100), QPoint(350, 500)}) {
        box.drag({50, 60}, {150, 160});
        box.setCursor(Qt::SizeAllCursor);
        box.announced.clear();
        box.press(point, Qt::RightButton);
        ASSERT_EQ(box.announced.size(), 1U);
        EXPECT_EQ(box.announced.back(), std::make_pair(QRect(), 30));
        EXPECT_EQ(box.cursor().shape(), Qt::ArrowCursor);
        EXPECT_EQ(box.getSelectRect(), kIdleRect);
        box.release(point, Qt::RightButton);
        EXPECT_EQ(box.announced.size(), 1U);
    }
}

TEST_F(PreviewSelection, CancelClearsAndAnnouncesIt)
{
    box.setCursor(Qt::SizeAllCursor);
    box.cancelManualRectSet();
    ASSERT_EQ(box.announced.size(), 1U);
    EXPECT_EQ(box.announced.back(), std::make_pair(QRect(), 30));
    EXPECT_EQ(box.cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(box.getSelectRect(), kIdleRect);
    EXPECT_FALSE(box.isPressPointInSelectRect({100, 100}));
    box.cancelManualRectSet();
    EXPECT_EQ(box.announced.size(), 2U);
}

TEST_F(PreviewSelection, StandardIsPassedThroughUnchanged)
{
    box.setMaxHeightAndStandrad(356, -7);
    box.press({100, 100});
    box.move({100, 100});
    EXPECT_EQ(box.announced.back(), std::make_pair(drawn, -7));
}

TEST_F(PreviewSelection, AnswersForItsGeometry)
{
    EXPECT_EQ(box.getRect({10, 20}, {-5, 40}), QRect(0, 20, 10, 20));
    EXPECT_TRUE(box.isPressPointInSelectRect({50, 60}));
    EXPECT_TRUE(box.isPressPointInSelectRect({149, 159}));
    EXPECT_FALSE(box.isPressPointInSelectRect({150, 159}));
    EXPECT_EQ(box.getStrethRectState({48, 58}), preView::TopLeft);
    EXPECT_EQ(box.getStrethRectState({100, 100}), preView::NoHandle);
    box.press({100, 100});
    box.move({500, 90});
    EXPECT_EQ(box.getMovePoint(), QPoint(50, -10));
    EXPECT_EQ(box.getMoveRect(), drawn.translated(50, -10));
    box.release({500, 90});
    box.press({101, 60});
    box.move({101, 70});
    EXPECT_EQ(box.getStretchRect(), drawn.translated(50, -10))
        << "a press outside stretches nothing";
}

TEST_F(PreviewSelection, StretchCursorsAreThoseOfTheHandles)
{
    box.setCursor(Qt::CrossCursor);
    box.setStretchCursorStyle(preView::NoHandle);
    EXPECT_EQ(box.cursor().shape(), Qt::CrossCursor);
    for (const auto& [handle, shape] : {std::make_pair(preView::TopLeft, Qt::SizeFDiagCursor),
                                        std::make_pair(preView::TopRight, Qt::SizeBDiagCursor),
                                        std::make_pair(preView::BottomLeft, Qt::SizeBDiagCursor),
                                        std::make_pair(preView::BottomRight, Qt::SizeFDiagCursor),
                                        std::make_pair(preView::LeftMiddle, Qt::SizeHorCursor),
                                        std::make_pair(preView::TopMiddle, Qt::SizeVerCursor),
                                        std::make_pair(preView::RightMiddle, Qt::SizeHorCursor),
                                        std::make_pair(preView::BottomMiddle, Qt::SizeVerCursor)}) {
        box.setStretchCursorStyle(handle);
        EXPECT_EQ(box.cursor().shape(), shape) << handle;
    }
}

TEST_F(PreviewSelection, IsPlacedInMillimetresWithoutAWord)
{
    box.setRect(10, 20, 30, 40);
    EXPECT_EQ(box.getSelectRect(), QRect(15, 30, 45, 60));
    // Cut off one by one: 1.5 and 1.5 make 1 and 1.
    box.setRect(1, 1, 21, 21);
    EXPECT_EQ(box.getSelectRect(), QRect(1, 1, 31, 31));
    box.setRect(5, 5, 0, 0);
    EXPECT_EQ(box.getSelectRect(), QRect(1, 1, 31, 31)) << "no width and no height is ignored";
    box.setRect(2, 2, 0, 20);
    EXPECT_EQ(box.getSelectRect(), QRect(3, 3, 1, 30));
    box.cancelManualRectSet();
    box.announced.clear();
    box.setRect(10, 20, 30, 40);
    EXPECT_EQ(box.getSelectRect(), QRect(15, 30, 45, 60));
    EXPECT_TRUE(box.announced.empty());
}

TEST_F(PreviewSelection, NumbersDoNotInterruptADrag)
{
    box.press({100, 100});
    box.setRect(10, 20, 30, 40);
    box.setMoveRect(0, 0);
    box.setSelectedRect(10, 10);
    EXPECT_EQ(box.getSelectRect(), drawn);
    box.release({100, 100});
    EXPECT_EQ(box.getSelectRect(), drawn);
}

TEST_F(PreviewSelection, NumbersMoveAndSizeItAtRest)
{
    box.setMoveRect(20, 10);
    EXPECT_EQ(box.getSelectRect(), QRect(30, 15, 100, 100));
    box.setMoveRect(10, 20);
    box.setMoveRect(12, 22);
    EXPECT_EQ(box.getSelectRect(), QRect(18, 33, 100, 100));
    box.setMoveRect(1000, 1000);
    EXPECT_EQ(box.getSelectRect(), QRect(100, 200, 100, 100));
    box.setSelectedRect(40, 60);
    EXPECT_EQ(box.getSelectRect(), QRect(100, 200, 60, 90));
    EXPECT_TRUE(box.announced.empty());
    box.cancelManualRectSet();
    box.setMoveRect(20, 10);
    box.setSelectedRect(40, 60);
    EXPECT_EQ(box.getSelectRect(), kIdleRect);
}

TEST_F(PreviewSelection, StandardOfNothingIsNoMillimetres)
{
    box.setMaxHeightAndStandrad(200, 0);
    box.setRect(10, 20, 30, 40);
    EXPECT_EQ(box.getSelectRect(), QRect(0, 0, 1, 1));
    box.setMoveRect(20, 10);
    box.setSelectedRect(40, 60);
    EXPECT_EQ(box.getSelectRect(), QRect(0, 0, 1, 1));
}

TEST_F(PreviewSelection, ArrowsMoveItByOnePixel)
{
    EXPECT_TRUE(box.key(Qt::Key_Right));
    EXPECT_EQ(box.announced.back(), std::make_pair(drawn.translated(1, 0), 30));
    EXPECT_TRUE(box.key(Qt::Key_Down));
    EXPECT_EQ(box.announced.back(), std::make_pair(drawn.translated(1, 1), 30));
    EXPECT_TRUE(box.key(Qt::Key_Left, Qt::KeypadModifier));
    EXPECT_EQ(box.announced.back(), std::make_pair(drawn.translated(0, 1), 30));
    EXPECT_TRUE(box.key(Qt::Key_Up));
    EXPECT_EQ(box.announced.back(), std::make_pair(drawn, 30));
    EXPECT_EQ(box.announced.size(), 4U);
    EXPECT_EQ(box.getSelectRect(), drawn);
}

TEST_F(PreviewSelection, ArrowsStopAtThePicturesEdge)
{
    for (int i = 0; i < 200; ++i) {
        box.key(Qt::Key_Right);
        box.key(Qt::Key_Up);
    }
    EXPECT_EQ(box.getSelectRect(), QRect(100, 0, 100, 100));
}

TEST_F(PreviewSelection, ShiftAndArrowsStretchRightAndBottomEdge)
{
    box.key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(box.announced.back(), std::make_pair(QRect(50, 60, 101, 100), 30));
    box.key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(box.announced.back(), std::make_pair(QRect(50, 60, 101, 101), 30));
    box.key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(box.announced.back(), std::make_pair(QRect(50, 60, 100, 101), 30));
    box.key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(box.announced.back(), std::make_pair(drawn, 30));
    for (int i = 0; i < 200; ++i) {
        box.key(Qt::Key_Left, Qt::ShiftModifier);
        box.key(Qt::Key_Down, Qt::ShiftModifier);
    }
    EXPECT_EQ(box.getSelectRect(), QRect(QPoint(50, 60), QPoint(68, 299)));
}

TEST_F(PreviewSelection, EscapeClearsItAlsoDuringADrag)
{
    EXPECT_TRUE(box.key(Qt::Key_Escape));
    EXPECT_EQ(box.announced.back(), std::make_pair(QRect(), 30));
    EXPECT_EQ(box.getSelectRect(), kIdleRect);
    box.press({50, 60});
    box.move({150, 160});
    EXPECT_TRUE(box.key(Qt::Key_Escape));
    EXPECT_EQ(box.announced.back(), std::make_pair(QRect(), 30));
    EXPECT_EQ(box.getSelectRect(), kIdleRect);
}

TEST_F(PreviewSelection, ArrowsWithoutASelectionAnnounceNothingAndStayHere)
{
    box.cancelManualRectSet();
    box.announced.clear();
    EXPECT_TRUE(box.key(Qt::Key_Right));
    EXPECT_TRUE(box.key(Qt::Key_Right, Qt::ShiftModifier));
    EXPECT_TRUE(box.announced.empty());
}

TEST_F(PreviewSelection, OtherKeysAreLeftToTheDialog)
{
    EXPECT_FALSE(box.key(Qt::Key_Return));
    EXPECT_FALSE(box.key(Qt::Key_A));
    EXPECT_FALSE(box.key(Qt::Key_Right, Qt::ControlModifier));
    EXPECT_FALSE(box.key(Qt::Key_Right, Qt::ShiftModifier | Qt::AltModifier));
    EXPECT_FALSE(box.key(Qt::Key_Escape, Qt::ControlModifier));
    EXPECT_TRUE(box.announced.empty());
}

TEST(PreviewSelectionKeys, DoNotReachTheDialogsEscapeNorAShortcut)
{
    QDialog dialog;
    auto* box = new Box(&dialog);
    box->load({200, 300});
    box->drag({50, 60}, {150, 160});
    int shortcuts = 0;
    for (const int key :
         {int{Qt::Key_Right}, int{Qt::SHIFT} + int{Qt::Key_Down}, int{Qt::Key_Escape}}) {
        auto* shortcut = new QShortcut(QKeySequence(key), &dialog);
        QObject::connect(shortcut, &QShortcut::activated, &dialog, [&shortcuts] { ++shortcuts; });
    }
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    box->setFocus();
    ASSERT_TRUE(box->hasFocus());
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Right);
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(box->getSelectRect(), QRect(51, 60, 100, 101));
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(box->getSelectRect(), kIdleRect);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(shortcuts, 0);
}

TEST(PreviewSelectionKeys, BoxIsReachedByTabAndClickAndHasAName)
{
    const Box box;
    EXPECT_EQ(box.focusPolicy(), Qt::StrongFocus);
    EXPECT_FALSE(box.accessibleName().isEmpty());
}
