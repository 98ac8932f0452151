// The four boxes beside the preview: what is typed there moves the selection.
#include "preview_dialog.h"

#include <gtest/gtest.h>

using namespace kestrel::test;

namespace {

class PreviewOffsets : public PreviewTest
{
protected:
    PreviewOffsets()
    {
        start();
        scan(colourFrame(64, 88));
        drag({35, 70}, {210, 350}); // 20, 40, 100 x 160 mm at 1.75 pixels each
        m_width = real("offset_w").maximum();
        m_height = real("offset_h").maximum();
    }

    void set(const char* name, double value) { real(name).setValue(value); }
    void expectSelected(int x, int y, int w, int h) const
    {
        EXPECT_EQ(selected(), QRect(x, y, w, h));
        EXPECT_FALSE(const_cast<PreviewOffsets*>(this)->dialog().updating);
    }

    double m_width = 0;
    double m_height = 0;
};

} // namespace

TEST_F(PreviewOffsets, TheScannerLimitsThem)
{
    EXPECT_DOUBLE_EQ(m_width, 215.9);
    EXPECT_GE(m_height, 297.0);
}

TEST_F(PreviewOffsets, AnOffsetMovesTheSelection)
{
    set("offset_x", 50.3); // 88.025 pixels
    expectSelected(88, 70, 175, 280);
    set("offset_y", 10.9); // 19.075 pixels
    expectSelected(88, 19, 175, 280);
    expectOffsets(50.3, 10.9, 100.0, 160.0);
    set("offset_x", 0.0);
    expectSelected(0, 19, 175, 280);
}

TEST_F(PreviewOffsets, AnExtentMovesTheFarCorner)
{
    set("offset_w", 40.7); // 71.225 pixels
    expectSelected(35, 70, 71, 280);
    set("offset_h", 200.0);
    expectSelected(35, 70, 71, 350);
    expectOffsets(20.0, 40.0, 40.7, 200.0);
}

TEST_F(PreviewOffsets, TypingThemWorksTheSame)
{
    type(real("offset_x"), QStringLiteral("50"));
    type(real("offset_w"), QStringLiteral("80"));
    expectOffsets(50.0, 40.0, 80.0, 160.0);
    expectSelected(87, 70, 140, 280);
}

TEST_F(PreviewOffsets, AnOffsetBeyondTheEdgeIsHeldAndTheSelectionStays)
{
    set("offset_x", m_width - 50.0);
    expectOffsets(m_width - 100.0, 40.0, 100.0, 160.0);
    expectSelected(35, 70, 175, 280);
    set("offset_y", m_height);
    expectOffsets(m_width - 100.0, m_height - 160.0, 100.0, 160.0);
    expectSelected(35, 70, 175, 280);
}

TEST_F(PreviewOffsets, TypingAnOffsetBeyondTheEdgeIsHeldToo)
{
    type(real("offset_x"), QStringLiteral("200"));
    EXPECT_DOUBLE_EQ(real("offset_x").value(), m_width - 100.0);
}

TEST_F(PreviewOffsets, AnOffsetExactlyAtTheEdgeStandsAndTheSelectionStays)
{
    set("offset_x", m_width - 100.0);
    set("offset_y", m_height - 160.0);
    expectOffsets(m_width - 100.0, m_height - 160.0, 100.0, 160.0);
    expectSelected(35, 70, 175, 280);
}

TEST_F(PreviewOffsets, WhereverTheEdgeLiesANumberHeldThereIsAtTheEdge)
{
    // Differences of doubles are a hair off the decimals in the boxes, to either side.
    for (int tenths = 100; tenths < 2100; tenths += 7) {
        const double extent = tenths / 10.0;
        dialog().updating = true;
        set("offset_w", extent);
        set("offset_h", extent);
        dialog().updating = false;
        set("offset_x", m_width);
        set("offset_y", m_height);
        ASSERT_EQ(selected(), QRect(35, 70, 175, 280)) << extent;
        ASSERT_NEAR(real("offset_x").value(), m_width - extent, 0.001);
        ASSERT_NEAR(real("offset_y").value(), m_height - extent, 0.001);
    }
}

TEST_F(PreviewOffsets, AnOffsetShortOfTheEdgeMovesTheSelection)
{
    set("offset_x", m_width - 100.1); // 115.8 mm
    EXPECT_DOUBLE_EQ(real("offset_x").value(), m_width - 100.1);
    expectSelected(202, 70, 175, 280);
}

TEST_F(PreviewOffsets, AnExtentBeyondTheEdgeIsHeldAndTheSelectionStays)
{
    set("offset_w", m_width);
    set("offset_h", m_height);
    expectOffsets(20.0, 40.0, m_width - 20.0, m_height - 40.0);
    expectSelected(35, 70, 175, 280);
}

TEST_F(PreviewOffsets, AnExtentExactlyAtTheEdgeStandsAndTheSelectionStays)
{
    set("offset_w", m_width - 20.0);
    set("offset_h", m_height - 40.0);
    expectOffsets(20.0, 40.0, m_width - 20.0, m_height - 40.0);
    expectSelected(35, 70, 175, 280);
}

TEST_F(PreviewOffsets, AnExtentShortOfTheEdgeMovesTheFarCorner)
{
    set("offset_w", m_width - 20.1); // 195.8 mm
    EXPECT_DOUBLE_EQ(real("offset_w").value(), m_width - 20.1);
    expectSelected(35, 70, 342, 280);
}

TEST_F(PreviewOffsets, UnderTheGuardNothingFollows)
{
    dialog().updating = true;
    set("offset_x", 200.0);
    set("offset_y", m_height - 1.0);
    set("offset_w", m_width);
    set("offset_h", m_height);
    EXPECT_TRUE(dialog().updating);
    dialog().updating = false;
    expectOffsets(200.0, m_height - 1.0, m_width, m_height);
    expectSelected(35, 70, 175, 280);
}

TEST_F(PreviewOffsets, WithoutASelectionTheNumbersAloneChange)
{
    dialog().reset_preview();
    set("offset_w", 50.0);
    set("offset_h", 60.0);
    set("offset_x", 10.0);
    set("offset_y", 20.0);
    expectOffsets(10.0, 20.0, 50.0, 60.0);
    EXPECT_EQ(state(), kestrel::SelectionState::Idle);
}

TEST_F(PreviewOffsets, WhileTheUserDragsTheNumbersAloneChange)
{
    mouse(QEvent::MouseButtonPress, {100, 200});
    ASSERT_EQ(state(), kestrel::SelectionState::Moving);
    dialog().setMoveRect();
    dialog().setSelectedRect();
    set("offset_x", 50.0);
    EXPECT_EQ(selected(), QRect(35, 70, 175, 280));
    mouse(QEvent::MouseButtonRelease, {100, 200});
    EXPECT_EQ(selected(), QRect(35, 70, 175, 280));
}

TEST_F(PreviewOffsets, MovingTheSelectionTakesTheOffsets)
{
    dialog().updating = true;
    set("offset_x", 60.0);
    set("offset_y", 20.0);
    set("offset_w", 10.0);
    dialog().updating = false;
    dialog().setMoveRect();
    expectSelected(105, 35, 175, 280);
}

TEST_F(PreviewOffsets, SizingTheSelectionTakesTheExtents)
{
    dialog().updating = true;
    set("offset_x", 60.0);
    set("offset_w", 10.0);
    set("offset_h", 80.0);
    dialog().updating = false;
    dialog().setSelectedRect();
    expectSelected(35, 70, 17, 140);
}

TEST_F(PreviewOffsets, EditsFollowEachOtherWhileNothingIsPainted)
{
    dialog().hide();
    set("offset_x", 30.0);
    set("offset_x", 40.0);
    set("offset_w", 60.0);
    set("offset_y", 10.0);
    expectSelected(70, 17, 105, 280);
}

TEST_F(PreviewOffsets, UnboundNothingDividesByTheMissingStandard)
{
    destroy();
    const DialogProbe fresh;
    child<QDoubleSpinBox>(fresh, "offset_w").setValue(50.0);
    child<QDoubleSpinBox>(fresh, "offset_x").setValue(5.0);
    EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>(fresh, "offset_x").value(), 5.0);
}
