// The ruler around the preview: its scale, and its lines and labels by pixels at several device
// pixel ratios.
#include "widgets/painted.h"
#include "widgets/previewui.h"

#include <QGuiApplication>
#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <string>

using kestrel::test::kUnpainted;
using kestrel::test::Painted;

namespace {

constexpr QRgb kBlack = qRgb(0, 0, 0);
constexpr QRgb kWhite = qRgb(255, 255, 255);

class Ruler : public PreViewUI
{
public:
    using PreViewUI::canvas;
    using PreViewUI::maximumHeight;
    using PreViewUI::ready;

    Ruler() { resize(421, 601); }
};

struct Scale
{
    float mm;
    int standard;
};

std::ostream& operator<<(std::ostream& out, const Scale& scale)
{
    return out << scale.mm << " mm";
}

class RulerScale : public testing::TestWithParam<Scale>
{
};

/// Scales whose ticks end before the frame.
class CoarseRulerScale : public RulerScale
{
};

/// Where the ticks of an axis are, counted from the corner.
struct Ticks
{
    std::vector<int> major;
    std::vector<int> all;
    std::vector<int> labels; ///< millimetres
};

Ticks ticks(int length, int standard)
{
    Ticks result;
    if (standard == 0) {
        return result;
    }
    // Two of the whole intervals that fit are left over for the margins.
    for (int mm = 4; mm <= 20 * ((length - 10) / standard - 2); mm += 4) {
        const int at = mm * standard / 20;
        result.all.push_back(at);
        if (mm % 20 == 0) {
            result.major.push_back(at);
        }
        if (mm % 100 == 0) {
            result.labels.push_back(mm);
        }
    }
    return result;
}

/// Checks that the lines along an axis are at @p positions from its origin on; between the labels
/// and the far side of the frame, where fine scales run over the edge.
void expectLines(const std::vector<Painted::Run>& found, const std::vector<int>& positions,
                 int origin, double ratio)
{
    const double near = ratio / 2 + 0.5;
    const double end = (origin == 35 ? 388.5 : 588.5) * ratio;
    std::vector<double> expected;
    for (const int position : positions) {
        if ((origin + position) * ratio < end) {
            expected.push_back((origin + position) * ratio);
        }
    }
    std::vector<Painted::Run> lines;
    for (const Painted::Run& run : found) {
        if (run.first > (origin + 1) * ratio && run.first < end) {
            lines.push_back(run);
        }
    }
    ASSERT_EQ(lines.size(), expected.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_NEAR(lines[i].first, expected[i], near);
        EXPECT_NEAR(lines[i].length, ratio, 0.5);
    }
}

/// How much of the ink of @p text, written at @p at, is on @p painted, from 0 to 1.
double inkOf(const QString& text, const QPoint& at, const Painted& painted)
{
    QImage paper(painted.image().size(), QImage::Format_RGB32);
    paper.setDevicePixelRatio(painted.ratio());
    paper.fill(Qt::white);
    {
        QPainter painter(&paper);
        QFont font = painter.font();
        font.setPixelSize(10);
        painter.setFont(font);
        painter.drawText(at, text);
    }
    int ink = 0;
    int met = 0;
    for (int y = 0; y < paper.height(); ++y) {
        for (int x = 0; x < paper.width(); ++x) {
            if (qGray(paper.pixel(x, y)) < 128) {
                ++ink;
                met += static_cast<int>(qGray(painted.image().pixel(x, y)) < 128);
            }
        }
    }
    return ink == 0 ? 0 : static_cast<double>(met) / ink;
}

} // namespace

TEST(RulerStandard, IsRaisedToTheNextMultipleOfFive)
{
    for (const Scale& scale :
         {Scale{356, 30}, Scale{400, 25}, Scale{401, 25}, Scale{399, 25}, Scale{384, 30},
          Scale{297, 35}, Scale{500, 20}, Scale{2000, 5}, Scale{9999, 5}, Scale{10000, 5},
          Scale{10001, 0}, Scale{100, 100}, Scale{3000, 5}, Scale{216, 50}, Scale{1, 10000}}) {
        Ruler ruler;
        ruler.setMaxHeight(scale.mm);
        EXPECT_EQ(ruler.getStandard(), scale.standard) << scale;
        EXPECT_EQ(ruler.maximumHeight, scale.mm);
    }
}

TEST(RulerStandard, HostileLengthsAreHarmless)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (const float mm : {0.0F, -0.0F, -356.0F, -kInfinity, kInfinity, std::nanf("")}) {
        Ruler ruler;
        ruler.setMaxHeight(mm);
        EXPECT_EQ(ruler.getStandard(), 0) << mm;
    }
    Ruler ruler;
    ruler.setMaxHeight(std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(ruler.getStandard(), 1000000);
}

TEST(RulerPainting, ShowsNothingBeforeTheFirstLength)
{
    Ruler ruler;
    EXPECT_EQ(ruler.getStandard(), 0);
    EXPECT_EQ(ruler.canvas.size(), QSize(400, 600));
    EXPECT_EQ(ruler.canvas.pixel(200, 300), kWhite);
    EXPECT_EQ(Painted(ruler).colours(), (std::set<QRgb>{kUnpainted}));
    ruler.Paint();
    EXPECT_EQ(Painted(ruler).colours(), (std::set<QRgb>{kUnpainted}));
    ruler.setMaxHeight(356);
    EXPECT_GT(Painted(ruler).colours().size(), 1U);
}

TEST(RulerPainting, CanvasHasThePixelsOfTheScreen)
{
    Ruler ruler;
    ruler.setMaxHeight(356);
    const double ratio = ruler.devicePixelRatioF();
    EXPECT_DOUBLE_EQ(ratio,
                     qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble());
    EXPECT_EQ(ruler.canvas.size(), (QSizeF(400, 600) * ratio).toSize());
    EXPECT_DOUBLE_EQ(ruler.canvas.devicePixelRatio(), ratio);
    const Painted painted(ruler);
    EXPECT_EQ(painted.at(399, 599), kWhite);
    EXPECT_EQ(painted.at(400, 300), kUnpainted);
    EXPECT_EQ(painted.at(200, 600), kUnpainted);
}

TEST(RulerPainting, StartsFromWhiteEachTime)
{
    Ruler once;
    once.setMaxHeight(400);
    Ruler twice;
    twice.setMaxHeight(356);
    twice.setMaxHeight(400);
    EXPECT_EQ(once.canvas, twice.canvas);
}

TEST_P(CoarseRulerScale, FrameAndAxesAreThere)
{
    Ruler ruler;
    ruler.setMaxHeight(GetParam().mm);
    const Painted painted(ruler);
    const double ratio = painted.ratio();
    // Beyond the last tick, where nothing else is: frame, axis, frame.
    for (const auto& [runs, positions] :
         {std::make_pair(painted.runsInRow(587, kBlack), std::vector<int>{5, 35, 394}),
          std::make_pair(painted.runsInColumn(385, kBlack), std::vector<int>{5, 30, 594})}) {
        ASSERT_EQ(runs.size(), positions.size());
        for (std::size_t i = 0; i < runs.size(); ++i) {
            EXPECT_NEAR(runs[i].first, positions[i] * ratio, ratio / 2 + 0.5);
        }
    }
    // The axes end ten pixels before the edge.
    EXPECT_EQ(painted.runsInColumn(391.5, kBlack).size(), 2U);
    EXPECT_EQ(painted.runsInRow(591.5, kBlack).size(), 2U);
}

TEST_P(RulerScale, TicksStandEveryFourAndTwentyMillimetres)
{
    Ruler ruler;
    ruler.setMaxHeight(GetParam().mm);
    ASSERT_EQ(ruler.getStandard(), GetParam().standard);
    const Painted painted(ruler);
    const double ratio = painted.ratio();
    const Ticks top = ticks(400, GetParam().standard);
    const Ticks left = ticks(600, GetParam().standard);
    // Through all ticks, and through those that only the major ones reach.
    expectLines(painted.runsInRow(27.7, kBlack), top.all, 35, ratio);
    expectLines(painted.runsInRow(22.7, kBlack), top.major, 35, ratio);
    expectLines(painted.runsInRow(20.6, kBlack), {}, 35, ratio);
    expectLines(painted.runsInColumn(32.7, kBlack), left.all, 30, ratio);
    expectLines(painted.runsInColumn(30.4, kBlack), left.major, 30, ratio);
    expectLines(painted.runsInColumn(8, kBlack), {}, 30, ratio);
}

TEST_P(RulerScale, LabelsStandEveryHundredMillimetres)
{
    Ruler ruler;
    ruler.setMaxHeight(GetParam().mm);
    const int standard = GetParam().standard;
    const Painted painted(ruler);
    EXPECT_GT(inkOf(QStringLiteral("0"), {25, 25}, painted), 0.99);
    for (const int mm : ticks(400, standard).labels) {
        const int interval = mm / 20 - 1;
        const QPoint at(static_cast<int>((interval + 0.6) * standard + 35), 20);
        EXPECT_GT(inkOf(QString::number(mm), at, painted), 0.99) << mm << " above";
    }
    for (const int mm : ticks(600, standard).labels) {
        const int interval = mm / 20 - 1;
        const QPoint at(10, static_cast<int>((interval + 0.9) * standard + 30));
        EXPECT_GT(inkOf(QString::number(mm), at, painted), 0.99) << mm << " beside";
    }
}

TEST_P(RulerScale, NothingIsWrittenWhereNoLabelBelongs)
{
    Ruler ruler;
    ruler.setMaxHeight(GetParam().mm);
    const int standard = GetParam().standard;
    const Painted painted(ruler);
    // The strip above the ticks, where the upper labels are: as many groups of ink as labels.
    const auto labels = ticks(400, standard).labels;
    int groups = 0;
    int blank = 100;
    const int rowTop = static_cast<int>(8 * painted.ratio());
    const int rowBottom = static_cast<int>(20.5 * painted.ratio());
    for (int x = static_cast<int>(36 * painted.ratio()); x < 390 * painted.ratio(); ++x) {
        bool ink = false;
        for (int y = rowTop; y < rowBottom; ++y) {
            ink = ink || qGray(painted.image().pixel(x, y)) < 128;
        }
        if (ink && blank > 5 * painted.ratio()) {
            ++groups;
        }
        blank = ink ? 0 : blank + 1;
    }
    EXPECT_EQ(groups, static_cast<int>(labels.size()));
}

INSTANTIATE_TEST_SUITE_P(Lengths, RulerScale,
                         testing::Values(Scale{356, 30}, Scale{400, 25}, Scale{297, 35},
                                         Scale{500, 20}, Scale{700, 15}, Scale{100, 100},
                                         Scale{50, 200}, Scale{20000, 0}));

INSTANTIATE_TEST_SUITE_P(Lengths, CoarseRulerScale,
                         testing::Values(Scale{356, 30}, Scale{400, 25}, Scale{297, 35},
                                         Scale{500, 20}, Scale{100, 100}, Scale{20000, 0}));
