#include "printing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace kestrel::sim {
namespace {

constexpr Rgb black = rgb(20, 20, 24);
constexpr Rgb red = rgb(200, 30, 36);
constexpr Rgb green = rgb(24, 140, 60);
constexpr Rgb blue = rgb(32, 64, 180);
constexpr Rgb whitePaper = rgb(250, 249, 245);
constexpr Rgb yellowPaper = rgb(255, 236, 150);

constexpr std::array<const char*, 8> sentences{
    "THE KESTREL HANGS IN THE WIND ABOVE THE FIELD AND WAITS.",
    "EACH LINE OF THIS PAGE IS DRAWN, NOT TYPED.",
    "INVOICE 2041 - 12 REAMS OF PAPER, 80 G - 48.60",
    "PLEASE FILE UNDER: SCANNERS / SIMULATED / NO PAPER WAS HARMED",
    "DELIVERED ON THE 14TH, SIGNED BY R. FALK, STORE ROOM 3",
    "SMALL PRINT STAYS READABLE AT 200 DOTS PER INCH AND MORE.",
    "SUM OF ALL ITEMS: 1 234.50 - DUE WITHIN 30 DAYS",
    "END OF PARAGRAPH."};

/// The same noise on every machine: a picture must not depend on the C library.
class Noise
{
public:
    explicit Noise(std::uint32_t seed) : state_(seed * 2654435761U + 1) {}
    int below(int bound)
    {
        state_ = state_ * 1664525U + 1013904223U;
        return static_cast<int>((state_ >> 8) % static_cast<std::uint32_t>(bound));
    }

private:
    std::uint32_t state_;
};

Rgb shaded(Rgb color, int by)
{
    const auto shade = [by](int level) { return std::clamp(level + by, 0, 255); };
    return rgb(shade(redOf(color)), shade(greenOf(color)), shade(blueOf(color)));
}

void grainPaper(Canvas& canvas, Rgb paper)
{
    Noise noise(7);
    std::array<Rgb, 4> tones{};
    for (int i = 0; i < 4; ++i) {
        tones[static_cast<std::size_t>(i)] = shaded(paper, -i);
    }
    for (int y = 0; y < canvas.height(); ++y) {
        for (int x = 0; x < canvas.width(); ++x) {
            canvas.pixel(x, y) = tones[static_cast<std::size_t>(noise.below(4))];
        }
    }
}

void drawLines(Canvas& canvas, double top, double bottom)
{
    constexpr double capHeight = 2.4;
    constexpr double pitch = 5.4;
    constexpr double left = 22;
    const double room = std::max(0.0, canvas.size().width - left - 12);
    const auto letters = static_cast<std::size_t>(room / Canvas::textWidth(capHeight, "X"));
    double y = top;
    for (std::size_t line = 0; y + capHeight < bottom; ++line) {
        const std::string words = sentences[line % sentences.size()];
        canvas.text(left, y, capHeight, words.substr(0, letters), black);
        const bool endsParagraph = (line + 1) % sentences.size() == 0;
        y += endsParagraph ? 2 * pitch : pitch;
    }
}

/// Sky, hills or lake at the point (@p u, @p v) of the photo, both from 0 to 1.
Rgb landscape(double u, double v)
{
    const auto color = [](double red, double green, double blue) {
        return rgb(static_cast<int>(red), static_cast<int>(green), static_cast<int>(blue));
    };
    const double hill = 0.55 + 0.1 * std::sin(u * 9) + 0.06 * std::sin(u * 23 + 1);
    if (v > 0.82) {
        return color(20 + 40 * u, 50 + 60 * u, 90 + 100 * u);
    }
    if (v > hill) {
        return color(110 * (1 - v) + 30 * u, 190 * (1 - v) + 60, 40 * u);
    }
    return color(70 + 170 * v, 130 + 110 * v, 210 + 30 * v);
}

/// A photo: every tone and hue somewhere.
void drawPhoto(Canvas& canvas, double x, double y, double width, double height)
{
    constexpr double step = 0.25;
    const int rows = static_cast<int>(height / step);
    const int columns = static_cast<int>(width / step);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            canvas.fillRect(
                x + column * step, y + row * step, step, step,
                landscape(static_cast<double>(column) / columns, static_cast<double>(row) / rows));
        }
    }
    canvas.fillDisc(x + width * 0.78, y + height * 0.22, height * 0.1, rgb(255, 226, 90));
}

void drawStamp(Canvas& canvas, double x, double y)
{
    canvas.ring(x, y, 15, 13.6, red);
    canvas.ring(x, y, 12.4, 11.8, red);
    canvas.text(x - Canvas::textWidth(3.6, "PAID") / 2, y - 1.8, 3.6, "PAID", red);
}

/// A gray wedge, six colours and an unmistakable corner each: for measuring.
void drawChart(Canvas& canvas)
{
    const SizeMm& size = canvas.size();
    const double edge = std::min(size.width, size.height) / 10;
    canvas.fillRect(0, 0, edge, edge, rgb(255, 0, 0));
    canvas.fillRect(size.width - edge, 0, edge, edge, rgb(0, 255, 0));
    canvas.fillRect(0, size.height - edge, edge, edge, rgb(0, 0, 255));
    canvas.fillRect(size.width - edge, size.height - edge, edge, edge, rgb(0, 0, 0));
    const double width = (size.width - 4 * edge) / 9;
    for (int i = 0; i < 9; ++i) {
        const int level = std::min(255, i * 32);
        canvas.fillRect(2 * edge + i * width, size.height / 2, width, edge,
                        rgb(level, level, level));
    }
    const std::array<Rgb, 6> hues{rgb(220, 0, 0),   rgb(0, 180, 0),   rgb(0, 0, 220),
                                  rgb(0, 180, 180), rgb(180, 0, 180), rgb(220, 200, 0)};
    for (std::size_t i = 0; i < hues.size(); ++i) {
        canvas.fillRect(2 * edge + static_cast<double>(i) * width, size.height / 2 + 2 * edge,
                        width, edge, hues[i]);
    }
}

void drawForm(Canvas& canvas)
{
    const SizeMm& size = canvas.size();
    const int fields = std::max(0, static_cast<int>((size.height - 70) / 12));
    for (int field = 0; field < fields; ++field) {
        const double y = 50 + 12 * field;
        canvas.fillRect(20, y, size.width - 32, 0.6, red);
        canvas.fillRect(20, y, 0.6, 8, red);
        canvas.text(22, y + 2, 2.4, "FIELD", red);
        canvas.text(size.width * 0.3, y + 4, 3, "FILLED IN BY HAND", black);
    }
    canvas.fillRect(20, 34, 30, 10, green);
    canvas.fillRect(54, 34, 30, 10, blue);
    canvas.fillRect(88, 34, 30, 10, red);
}

void drawFold(Canvas& canvas)
{
    constexpr double step = 0.4;
    constexpr int steps = 35; // 14 mm to either side
    const double middle = canvas.size().width / 2;
    for (int i = 0; i < steps; ++i) {
        const Rgb shade = shaded(whitePaper, -200 * (steps - i) / steps);
        canvas.fillRect(middle - (i + 1) * step, 0, step, canvas.size().height, shade);
        canvas.fillRect(middle + i * step, 0, step, canvas.size().height, shade);
    }
}

void drawNumber(Canvas& canvas, Side side, int number)
{
    const SizeMm& size = canvas.size();
    const std::string label = std::to_string(number) + (side == Side::Front ? "F" : "B");
    const double capHeight = std::min({20.0, size.height / 5, size.width / 8});
    canvas.text(size.width - Canvas::textWidth(capHeight, label) - 12, 10, capHeight, label, black);
    if (size.width >= 140) { // elsewhere it would run into the number
        canvas.text(22, 12, 6, "KESTREL", blue);
    }
}

void drawSpecks(Canvas& canvas, Side side, int number, const Cleaning& cleaning)
{
    Noise noise(static_cast<std::uint32_t>(number * 2 + (side == Side::Back ? 1 : 0)));
    for (int i = 0; i < 18; ++i) {
        const int width = 1 + i % 3;
        const int x = noise.below(canvas.width());
        const int y = noise.below(canvas.height());
        const bool removed =
            width * width <= cleaning.largestSpeck && width <= 2 * cleaning.speckRadius;
        if (removed || x + width > canvas.width() || y + width > canvas.height()) {
            continue;
        }
        for (int dot = 0; dot < width * width; ++dot) {
            canvas.pixel(x + dot % width, y + dot / width) = black;
        }
    }
}

void drawHoles(Canvas& canvas, Side side, Rgb backing)
{
    const SizeMm& size = canvas.size();
    const double x = side == Side::Front ? 10 : size.width - 10;
    canvas.fillDisc(x, size.height / 2 - 40, 3, backing);
    canvas.fillDisc(x, size.height / 2 + 40, 3, backing);
}

void drawPrint(Canvas& canvas, Print print, const Cleaning& cleaning)
{
    const SizeMm& size = canvas.size();
    switch (print) {
    case Print::Text:
    case Print::Tinted:
        drawLines(canvas, 42, size.height - 20);
        break;
    case Print::Form:
        drawForm(canvas);
        break;
    case Print::Photo:
        drawPhoto(canvas, 10, size.height * 0.2, size.width - 20, size.height * 0.7);
        break;
    case Print::Mixed:
        drawLines(canvas, 42, size.height * 0.45);
        drawPhoto(canvas, 22, size.height * 0.48, size.width * 0.5, size.height * 0.25);
        drawLines(canvas, size.height * 0.76, size.height - 20);
        drawStamp(canvas, size.width - 36, size.height * 0.6);
        break;
    case Print::Chart:
        drawChart(canvas);
        break;
    case Print::Book:
        drawLines(canvas, 42, size.height - 20);
        if (!cleaning.bookFold) {
            drawFold(canvas);
        }
        break;
    case Print::Blank:
    case Print::Sparse:
        break;
    }
}

void measure(PrintedSide& side)
{
    const Canvas& canvas = side.canvas;
    const auto farFrom = [](Rgb a, Rgb b, int limit) {
        return std::abs(redOf(a) - redOf(b)) > limit || std::abs(greenOf(a) - greenOf(b)) > limit ||
               std::abs(blueOf(a) - blueOf(b)) > limit;
    };
    int seen = 0;
    int ink = 0;
    int colored = 0;
    int printColored = 0;
    for (int y = 1; y < canvas.height(); y += 3) {
        for (int x = 1; x < canvas.width(); x += 3) {
            const Rgb pixel = canvas.pixel(x, y);
            const auto [low, high] = std::minmax({redOf(pixel), greenOf(pixel), blueOf(pixel)});
            const bool isInk = farFrom(pixel, side.paper, 60);
            const bool isColor = high - low > 60;
            ++seen;
            ink += isInk ? 1 : 0;
            colored += isColor ? 1 : 0;
            printColored += isColor && isInk ? 1 : 0;
        }
    }
    const auto percent = [seen](int count) { return seen == 0 ? 0 : 100.0 * count / seen; };
    side.inkPercent = percent(ink);
    side.colorPercent = percent(colored);
    side.printColorPercent = percent(printColored);
}

} // namespace

PrintedSide printSide(const Sheet& sheet, Side side, int number, const Cleaning& cleaning)
{
    const Print print = side == Side::Front ? sheet.front : sheet.back;
    const bool tinted = (sheet.front == Print::Tinted || sheet.back == Print::Tinted);
    const Rgb paper = tinted ? yellowPaper : whitePaper;
    PrintedSide result{Canvas(sheet.size, paper), paper};
    Canvas& canvas = result.canvas;
    if (print == Print::Chart) {
        // Measured against, so nothing else is on it.
        canvas.fillRect(0, 0, sheet.size.width, sheet.size.height, rgb(255, 255, 255));
        drawChart(canvas);
        measure(result);
        return result;
    }
    grainPaper(canvas, paper);
    drawPrint(canvas, print, cleaning);
    if (print != Print::Blank) {
        drawNumber(canvas, side, number);
    }
    measure(result);
    drawSpecks(canvas, side, number, cleaning);
    if (!cleaning.punchHoles && sheet.size.height >= 200) {
        drawHoles(canvas, side, cleaning.backing);
    }
    return result;
}

} // namespace kestrel::sim
