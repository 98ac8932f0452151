// The selection on the preview in millimetres, and what becomes of it.
#include "preview_dialog.h"
#include "support/message_boxes.h"

#include <kestrelsettingui.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

using namespace kestrel::test;

namespace {

class PreviewArea : public PreviewTest
{
protected:
    PreviewArea()
    {
        start();
        scan(colourFrame(64, 88)); // 377 x 519 pixels on the tab
        scanner.clearJournal();
        EXPECT_EQ(standard(), 35);
    }
};

struct Free
{
    void operator()(unsigned char* memory) const { std::free(memory); }
};
using Pixels = std::unique_ptr<unsigned char, Free>;

} // namespace

TEST_F(PreviewArea, IsShownInMillimetres)
{
    dialog().preview_selected = false;
    dialog().getSelectedRect(QRect(35, 70, 175, 280), 35);
    expectOffsets(20.0, 40.0, 100.0, 160.0);
    EXPECT_TRUE(dialog().preview_selected);
    EXPECT_EQ(dialog().preview_rect, QRect(35, 70, 175, 280));
}

TEST_F(PreviewArea, FollowsTheStandardThatComesWithIt)
{
    dialog().getSelectedRect(QRect(10, 20, 40, 60), 20);
    expectOffsets(10.0, 20.0, 40.0, 60.0);
    dialog().getSelectedRect(QRect(10, 20, 40, 60), 40);
    expectOffsets(5.0, 10.0, 20.0, 30.0);
    dialog().getSelectedRect(QRect(1, 2, 3, 4), 35); // 0.57, 1.14, 1.71, 2.29
    expectOffsets(0.6, 1.1, 1.7, 2.3);
}

TEST_F(PreviewArea, WithoutAStandardItIsZero)
{
    dialog().getSelectedRect(QRect(35, 70, 175, 280), 35);
    for (const int none : {0, -35}) {
        dialog().getSelectedRect(QRect(10, 20, 40, 60), none);
        expectOffsets(0.0, 0.0, 0.0, 0.0);
        EXPECT_EQ(dialog().preview_rect, QRect(10, 20, 40, 60));
    }
}

TEST_F(PreviewArea, WritesUnderTheGuardAndLeavesItAsItWas)
{
    drag({35, 70}, {210, 350});
    const QRect before = selected();
    for (const bool guard : {false, true}) {
        dialog().updating = guard;
        // Beyond every edge: the slots would mend the numbers and move the selection.
        dialog().getSelectedRect(QRect(300, 400, 350, 480), 35);
        EXPECT_EQ(dialog().updating, guard);
        EXPECT_EQ(selected(), before);
        EXPECT_DOUBLE_EQ(real("offset_x").value(), 171.4);
        EXPECT_DOUBLE_EQ(real("offset_w").value(), 200.0);
        EXPECT_DOUBLE_EQ(real("offset_h").value(), 274.3);
    }
    dialog().updating = false;
}

TEST_F(PreviewArea, ADragShowsAtOnce)
{
    mouse(QEvent::MouseButtonPress, {35, 70});
    expectOffsets(0.0, 0.0, 0.0, 0.0);
    mouse(QEvent::MouseMove, {70, 140});
    expectOffsets(20.0, 40.0, 20.0, 40.0);
    mouse(QEvent::MouseMove, {210, 350});
    expectOffsets(20.0, 40.0, 100.0, 160.0);
    mouse(QEvent::MouseButtonRelease, {210, 350});
    expectOffsets(20.0, 40.0, 100.0, 160.0);
    EXPECT_EQ(dialog().preview_rect, QRect(35, 70, 175, 280));
    EXPECT_FALSE(dialog().updating);
}

TEST_F(PreviewArea, MovingItWithTheMouseShowsToo)
{
    drag({35, 70}, {210, 350});
    drag({100, 200}, {135, 270});
    expectOffsets(40.0, 80.0, 100.0, 160.0);
    EXPECT_EQ(selected(), QRect(70, 140, 175, 280));
}

TEST_F(PreviewArea, StretchingItWithTheMouseShowsToo)
{
    drag({35, 70}, {210, 350});
    drag({35, 210}, {70, 210}); // the left edge, from its middle
    expectOffsets(40.0, 40.0, 80.0, 160.0);
}

TEST_F(PreviewArea, ARightClickGivesZeros)
{
    drag({35, 70}, {210, 350});
    mouse(QEvent::MouseButtonPress, {5, 5}, Qt::RightButton);
    expectOffsets(0.0, 0.0, 0.0, 0.0);
    EXPECT_TRUE(dialog().preview_rect.isNull());
    EXPECT_EQ(state(), kestrel::SelectionState::Idle);
}

TEST_F(PreviewArea, ResettingThePreviewGivesZeros)
{
    drag({35, 70}, {210, 350});
    dialog().use_preview_area = true;
    dialog().reset_preview();
    expectOffsets(0.0, 0.0, 0.0, 0.0);
    EXPECT_FALSE(dialog().use_preview_area);
    EXPECT_EQ(state(), kestrel::SelectionState::Idle);
}

TEST_F(PreviewArea, ANewPictureLeavesTheSelection)
{
    drag({35, 70}, {210, 350});
    scan(colourFrame(32, 44));
    expectOffsets(20.0, 40.0, 100.0, 160.0);
    EXPECT_EQ(selected(), QRect(35, 70, 175, 280));
}

TEST_F(PreviewArea, WhatWasDrawnIsWhatIsScanned)
{
    mouse(QEvent::MouseButtonPress, {35, 70});
    mouse(QEvent::MouseMove, {210, 350});
    mouse(QEvent::MouseButtonRelease, {210, 350});
    MessageBoxes boxes;
    boxes.answer(QMessageBox::Yes);
    click(button("sure"));
    EXPECT_EQ(boxes.shown().size(), 1U);
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_TRUE(dialog().use_preview_area);

    scanner.takeTexts();
    scanner.clearJournal();
    setAllParamBySettingUI(dialog().host());
    const kestrel::test::Journal journal = scanner.journal();
    EXPECT_EQ(journal.setsOf("tl-x"), (Strings{"20"}));
    EXPECT_EQ(journal.setsOf("tl-y"), (Strings{"40"}));
    EXPECT_EQ(journal.setsOf("br-x"), (Strings{"120"}));
    EXPECT_EQ(journal.setsOf("br-y"), (Strings{"200"}));
    EXPECT_EQ(journal.setsOf("center-alignment"), (Strings{"0"}));
}

TEST_F(PreviewArea, WhatWasDrawnAndDeclinedIsNotScanned)
{
    drag({35, 70}, {210, 350});
    MessageBoxes boxes;
    boxes.answer(QMessageBox::No);
    click(button("sure"));
    expectOffsets(0.0, 0.0, 0.0, 0.0);
    scanner.takeTexts();
    scanner.clearJournal();
    setAllParamBySettingUI(dialog().host());
    EXPECT_EQ(scanner.journal().setsOf("br-x"), (Strings{"210"}));
}

TEST(Rgb24To32Export, GivesThePixelsAndLeavesTheLastRow)
{
    unsigned char rgb[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    const Pixels pixels(RGB24TO32(rgb, 2, 2));
    ASSERT_NE(pixels, nullptr);
    const std::vector<int> first(pixels.get(), pixels.get() + 8);
    EXPECT_EQ(first, (std::vector<int>{3, 2, 1, 0, 6, 5, 4, 0}));
}

TEST(Rgb24To32Export, ReadsNothingOfASingleRow)
{
    EXPECT_NE(Pixels(RGB24TO32(nullptr, 5, 1)), nullptr);
    EXPECT_NE(Pixels(RGB24TO32(nullptr, 0, 7)), nullptr);
    EXPECT_EQ(Pixels(RGB24TO32(nullptr, -1, 2)), nullptr);
    EXPECT_EQ(Pixels(RGB24TO32(nullptr, 2, -1)), nullptr);
}
