// What the preview box paints, by pixels. Runs at several device pixel ratios: positions are those
// of the widget, and the same picture has to come out sharp with more pixels behind it.
#include "widgets/painted.h"
#include "widgets/preview_box.h"

#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

using kestrel::test::Box;
using kestrel::test::kUnpainted;
using kestrel::test::Painted;

namespace {

constexpr QRgb kPicture = qRgb(200, 100, 50);
constexpr QRgb kRed = qRgb(255, 0, 0);
constexpr QRgb kBlue = qRgb(0, 0, 255);
constexpr QRgb kHandle = qRgb(0, 174, 255);

/// kPicture under black at an alpha of 100.
bool isVeiled(QRgb colour)
{
    const auto near = [](int is, int was) { return std::abs(is - was * 155 / 255) <= 1; };
    return near(qRed(colour), qRed(kPicture)) && near(qGreen(colour), qGreen(kPicture)) &&
           near(qBlue(colour), qBlue(kPicture));
}

/// A box that shows a picture over (0, 0) to (199, 299), as many pixels as the screen has there.
class PreviewPainting : public testing::Test
{
protected:
    PreviewPainting()
    {
        const QSize size = (QSizeF(200, 300) * box.devicePixelRatioF()).toSize();
        box.load(size, QColor::fromRgb(kPicture));
    }

    /// Places the selection at whole pixels.
    void select(const QRect& rect)
    {
        box.setRect(rect.left() / 1.5, rect.top() / 1.5, rect.width() / 1.5, rect.height() / 1.5);
        ASSERT_EQ(box.getSelectRect(), rect);
    }

    /// Whether there is one line of about a pixel of the widget in width at @p position.
    static void expectLine(const std::vector<Painted::Run>& runs, std::size_t index, int position,
                           double ratio)
    {
        ASSERT_LT(index, runs.size());
        // A line lies around its coordinate, and a screen has no halves of pixels.
        EXPECT_NEAR(runs[index].first, position * ratio, ratio / 2 + 0.5);
        EXPECT_NEAR(runs[index].length, ratio, 0.5);
    }

    Box box;
};

} // namespace

TEST_F(PreviewPainting, RunsAtTheRatioAsked)
{
    const double asked = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble();
    EXPECT_DOUBLE_EQ(box.devicePixelRatioF(), asked);
}

TEST(PreviewPaintingEmpty, PaintsNothingBeforeThePicture)
{
    Box box;
    const Painted painted(box);
    EXPECT_EQ(painted.colours(), (std::set<QRgb>{kUnpainted}));
}

TEST_F(PreviewPainting, WholePictureLiesUnderAVeil)
{
    const Painted painted(box);
    const std::set<QRgb> colours = painted.colours();
    ASSERT_EQ(colours.size(), 2U) << "nothing but picture under the veil and its surroundings";
    EXPECT_TRUE(isVeiled(painted.at(0, 0)));
    EXPECT_TRUE(isVeiled(painted.at(199, 299)));
    EXPECT_TRUE(isVeiled(painted.at(100, 150)));
    EXPECT_EQ(painted.at(200, 100), kUnpainted);
    EXPECT_EQ(painted.at(100, 300), kUnpainted);
    EXPECT_EQ(painted.at(370, 560), kUnpainted);
}

TEST_F(PreviewPainting, SelectionIsClearInARedOutlineWithEightHandles)
{
    const QRect rect(30, 60, 90, 120);
    select(rect);
    const Painted painted(box);
    for (const QRgb colour : painted.colours()) {
        EXPECT_TRUE(colour == kPicture || colour == kRed || colour == kBlue || colour == kHandle ||
                    colour == kUnpainted || isVeiled(colour))
            << "not sharp: " << std::hex << colour;
    }
    EXPECT_EQ(painted.at(60, 90), kPicture);
    EXPECT_EQ(painted.at(35, 70), kPicture);
    EXPECT_EQ(painted.at(115, 170), kPicture);
    for (const QPoint& outside :
         {QPoint(20, 90), QPoint(130, 90), QPoint(60, 50), QPoint(60, 190)}) {
        EXPECT_TRUE(isVeiled(painted.at(outside.x(), outside.y())));
    }
    // The outline of a rectangle runs along its first and one past its last pixels.
    const auto across = painted.runsInRow(80, kRed);
    EXPECT_EQ(across.size(), 2U);
    expectLine(across, 0, 30, painted.ratio());
    expectLine(across, 1, 120, painted.ratio());
    const auto down = painted.runsInColumn(50, kRed);
    EXPECT_EQ(down.size(), 2U);
    expectLine(down, 0, 60, painted.ratio());
    expectLine(down, 1, 180, painted.ratio());
}

TEST_F(PreviewPainting, ClearAreaIsExactlyTheRectangle)
{
    select(QRect(30, 60, 90, 120));
    const Painted painted(box);
    const auto clear = painted.runsInRow(80, kPicture);
    ASSERT_EQ(clear.size(), 1U);
    EXPECT_NEAR(clear[0].first, 30 * painted.ratio(), painted.ratio() + 0.5);
    EXPECT_NEAR(clear[0].first + clear[0].length, 120 * painted.ratio(), painted.ratio() / 2 + 0.5);
}

TEST_F(PreviewPainting, HandlesAreFilledSquaresInABlueLine)
{
    select(QRect(30, 60, 91, 121));
    const Painted painted(box);
    const double ratio = painted.ratio();
    for (const QPoint& centre :
         {QPoint(30, 60), QPoint(120, 60), QPoint(30, 180), QPoint(120, 180), QPoint(30, 120),
          QPoint(75, 60), QPoint(120, 120), QPoint(75, 180)}) {
        EXPECT_EQ(painted.at(centre.x(), centre.y()), kHandle);
        // From three before the centre to three after it, where the line closes.
        std::vector<Painted::Run> line;
        for (const Painted::Run& run : painted.runsInRow(centre.y() + 0.5, kBlue)) {
            if (std::abs(run.first - centre.x() * ratio) < 6 * ratio) {
                line.push_back(run);
            }
        }
        ASSERT_EQ(line.size(), 2U) << centre.x() << ',' << centre.y();
        expectLine(line, 0, centre.x() - 3, ratio);
        expectLine(line, 1, centre.x() + 3, ratio);
    }
    EXPECT_EQ(painted.at(117, 90), kPicture) << "no handle between the corner and the middle";
}

TEST_F(PreviewPainting, SelectionIsPaintedInEveryStateButIdle)
{
    const auto reds = [this] { return Painted(box).colours().count(kRed); };
    EXPECT_EQ(reds(), 0U);
    box.press({30, 60});
    box.move({100, 100});
    EXPECT_EQ(reds(), 1U);
    box.release({100, 100});
    EXPECT_EQ(reds(), 1U);
    box.press({60, 80});
    box.move({70, 80});
    EXPECT_EQ(reds(), 1U);
    box.release({70, 80});
    box.press({41, 61});
    box.move({50, 70});
    EXPECT_EQ(reds(), 1U);
    box.release({50, 70});
    EXPECT_EQ(reds(), 1U);
    box.cancelManualRectSet();
    EXPECT_EQ(reds(), 0U);
}

TEST_F(PreviewPainting, PaintingTakesAMoveOver)
{
    select(QRect(30, 60, 90, 120));
    box.press({60, 90});
    box.move({80, 95});
    const Painted during(box);
    expectLine(during.runsInRow(100, kRed), 0, 50, during.ratio());
    box.release({80, 95});
    const Painted after(box);
    expectLine(after.runsInRow(100, kRed), 0, 50, after.ratio());
    EXPECT_EQ(box.getStrethRectState({50, 65}), preView::TopLeft);
}

TEST_F(PreviewPainting, EveryPixelOfTheSourceIsOnePixelOfTheScreen)
{
    // Stripes as fine as the screen: what is not sharp comes out gray.
    QImage stripes((QSizeF(200, 300) * box.devicePixelRatioF()).toSize(), QImage::Format_RGB32);
    for (int y = 0; y < stripes.height(); ++y) {
        for (int x = 0; x < stripes.width(); ++x) {
            stripes.setPixel(x, y, (x + y) % 2 == 0 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
        }
    }
    box.setImage(stripes);
    select(QRect(30, 60, 90, 120));
    const Painted painted(box);
    const double ratio = painted.ratio();
    const int left = static_cast<int>(std::ceil(35 * ratio));
    const int right = static_cast<int>(115 * ratio);
    const int top = static_cast<int>(std::ceil(66 * ratio));
    const int bottom = static_cast<int>(110 * ratio);
    for (int y = top; y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            ASSERT_EQ(painted.image().pixel(x, y), stripes.pixel(x, y)) << x << ',' << y;
        }
    }
}

TEST_F(PreviewPainting, ScalesByTheNearestPixel)
{
    QImage halves(2, 2, QImage::Format_RGB32);
    halves.setPixel(0, 0, qRgb(255, 255, 255));
    halves.setPixel(1, 0, qRgb(0, 255, 0));
    halves.setPixel(0, 1, qRgb(0, 0, 0));
    halves.setPixel(1, 1, qRgb(255, 255, 0));
    box.setImage(halves);
    box.setScale(399); // 100: 200 x 200
    box.setimage_pix(0, 0);
    select(QRect(3, 3, 150, 150));
    const Painted painted(box);
    EXPECT_EQ(painted.at(20, 20), qRgb(255, 255, 255));
    EXPECT_EQ(painted.at(98, 98), qRgb(255, 255, 255));
    EXPECT_EQ(painted.at(102, 98), qRgb(0, 255, 0));
    EXPECT_EQ(painted.at(98, 102), qRgb(0, 0, 0));
    EXPECT_EQ(painted.at(140, 140), qRgb(255, 255, 0));
}

TEST_F(PreviewPainting, PaintsAfreshWhenThePictureChanges)
{
    select(QRect(30, 60, 90, 120));
    EXPECT_EQ(Painted(box).at(60, 90), kPicture);
    box.setBrightness(20);
    EXPECT_EQ(Painted(box).at(60, 90), qRgb(220, 120, 70));
    box.clearpaint();
    EXPECT_EQ(Painted(box).at(60, 90), qRgb(216, 216, 216));
    const QSize size = (QSizeF(200, 300) * box.devicePixelRatioF()).toSize();
    box.load(size, Qt::yellow);
    EXPECT_EQ(Painted(box).at(60, 90), qRgb(255, 255, 0));
    box.zoomin();
    EXPECT_EQ(Painted(box).at(60, 90), qRgb(255, 255, 0));
    box.setimage_pix(-255, 0);
    EXPECT_EQ(Painted(box).at(60, 90), qRgb(0, 0, 0));
}

TEST_F(PreviewPainting, PartsOfTheWidgetPaintLikeTheWhole)
{
    select(QRect(30, 60, 90, 120));
    const Painted whole(box);
    QImage pieces(whole.image().size(), QImage::Format_RGB32);
    pieces.setDevicePixelRatio(whole.ratio());
    pieces.fill(kUnpainted);
    for (int y = 0; y < box.height(); y += 80) {
        for (int x = 0; x < box.width(); x += 60) {
            box.render(&pieces, {x, y}, QRect(x, y, 60, 80), QWidget::RenderFlags());
        }
    }
    EXPECT_EQ(pieces, whole.image());
}

TEST_F(PreviewPainting, WhatIsPaintedAfterASmallPartIsNotCutToIt)
{
    select(QRect(30, 60, 90, 120));
    const QImage whole = Painted(box).image();
    box.setimage_pix(0, 0); // what was painted is forgotten
    QImage piece(whole.size(), QImage::Format_RGB32);
    box.render(&piece, {}, QRect(40, 70, 10, 10), QWidget::RenderFlags());
    EXPECT_EQ(Painted(box).image(), whole);
}

TEST_F(PreviewPainting, AScaleIsPaintedAtOnce)
{
    QImage halves(1, 2, QImage::Format_RGB32);
    halves.setPixel(0, 0, qRgb(255, 255, 255));
    halves.setPixel(0, 1, qRgb(0, 0, 0));
    Box fresh;
    for (Box* const each : {&box, &fresh}) {
        each->setMaxHeightAndStandrad(200, 30);
        each->setImage(halves);
    }
    const QImage before = Painted(box).image();
    box.setScale(99);
    fresh.setScale(99);
    EXPECT_NE(Painted(fresh).image(), before);
    EXPECT_EQ(Painted(box).image(), Painted(fresh).image());
}

TEST_F(PreviewPainting, FocusIsShownToWhoeverCameByKeyboard)
{
    box.show();
    box.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
    box.clearFocus();
    const QImage without = Painted(box).image();
    box.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(Painted(box).image(), without);
    box.clearFocus();
    for (const auto reason :
         {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason}) {
        box.setFocus(reason);
        EXPECT_NE(Painted(box).image(), without) << reason;
        box.clearFocus();
        EXPECT_EQ(Painted(box).image(), without) << reason;
    }
}

namespace {

/// A box on a screen of any ratio.
class WanderingBox : public Box
{
public:
    double ratio = 1.0;

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmDevicePixelRatio:
            return static_cast<int>(ratio);
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(ratio * devicePixelRatioFScale());
        default:
            return Box::metric(metric);
        }
    }
};

} // namespace

TEST(PreviewOnAnotherScreen, ASmallPictureIsSmoothedAsItWasAtFirst)
{
    WanderingBox box;
    QImage chequered(40, 40, QImage::Format_RGB32);
    for (int y = 0; y < chequered.height(); ++y) {
        for (int x = 0; x < chequered.width(); ++x) {
            chequered.setPixel(x, y, (x + y) % 2 == 0 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
        }
    }
    box.setMaxHeightAndStandrad(200, 30);
    box.setImage(chequered);
    ASSERT_GT(box.scale, 1.0);
    const QImage first = box.shown;
    ASSERT_NE(first, chequered);

    box.ratio = 2.0;
    const Painted finer(box);
    EXPECT_NE(box.shown, first);
    EXPECT_NE(box.shown, chequered);
    box.ratio = 1.0;
    const Painted back(box);
    EXPECT_EQ(box.shown, first);
}

TEST(PreviewOnAnotherScreen, AClearedPictureStaysCleared)
{
    WanderingBox box;
    box.load({40, 40}, Qt::white);
    box.clearpaint();
    const QImage cleared = box.shown;
    ASSERT_EQ(cleared.pixel(20, 20), qRgb(216, 216, 216));
    box.ratio = 2.0;
    const Painted painted(box);
    EXPECT_EQ(box.shown, cleared);
}

// A zoom shows the picture as it was scanned, and so does the next screen.
TEST(PreviewOnAnotherScreen, AZoomedPictureStaysWithoutItsAdjustments)
{
    for (const bool anew : {false, true}) {
        WanderingBox box;
        box.load({40, 40}, QColor(100, 100, 100));
        box.setBrightness(20);
        ASSERT_EQ(box.shown.pixel(20, 20), qRgb(120, 120, 120));
        if (anew) {
            box.load({40, 40}, QColor(100, 100, 100), 10);
        } else {
            box.setScale(3);
            box.zoomout();
        }
        ASSERT_EQ(box.shown.pixel(20, 20), qRgb(100, 100, 100)) << anew;
        box.ratio = 2.0;
        const Painted painted(box);
        EXPECT_EQ(box.shown.pixel(20, 20), qRgb(100, 100, 100)) << anew;
    }
}
