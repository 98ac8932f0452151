#include "canvas.h"

#include <algorithm>
#include <cmath>

#include "font.h"

namespace kestrel::sim {
namespace {

constexpr double fullScale = 150 / 25.4;
constexpr double mostPixels =
    24e6; // an A4 side has two millions; only paper of many metres is coarser

double scaleFor(const SizeMm& size)
{
    return std::min(fullScale, std::sqrt(mostPixels / (size.width * size.height)));
}

} // namespace

Canvas::Canvas(const SizeMm& size, Rgb paper)
    : size_(size), scale_(scaleFor(size)),
      width_(std::max(1, static_cast<int>(std::lround(size.width * scale_)))),
      height_(std::max(1, static_cast<int>(std::lround(size.height * scale_)))),
      pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), paper)
{
}

int Canvas::toPixel(double mm) const
{
    return static_cast<int>(std::lround(std::clamp(mm * scale_, -1e6, 1e6)));
}

void Canvas::fillRect(double x, double y, double width, double height, Rgb color)
{
    const int left = std::max(0, toPixel(x));
    const int right = std::min(width_, toPixel(x + width));
    const int bottom = std::min(height_, toPixel(y + height));
    if (left >= right) {
        return;
    }
    for (int row = std::max(0, toPixel(y)); row < bottom; ++row) {
        const auto begin = pixels_.begin() + static_cast<std::ptrdiff_t>(index(left, row));
        std::fill(begin, begin + (right - left), color);
    }
}

void Canvas::fillDisc(double x, double y, double radius, Rgb color)
{
    ring(x, y, radius, 0, color);
}

void Canvas::ring(double x, double y, double outer, double inner, Rgb color)
{
    const int top = std::max(0, toPixel(y - outer));
    const int bottom = std::min(height_, toPixel(y + outer) + 1);
    const int left = std::max(0, toPixel(x - outer));
    const int right = std::min(width_, toPixel(x + outer) + 1);
    for (int row = top; row < bottom; ++row) {
        for (int column = left; column < right; ++column) {
            const double distance =
                std::hypot((column + 0.5) / scale_ - x, (row + 0.5) / scale_ - y);
            if (distance < outer && distance >= inner) {
                pixel(column, row) = color;
            }
        }
    }
}

void Canvas::text(double x, double y, double capHeight, const std::string& text, Rgb color)
{
    const double dot = capHeight / glyphHeight;
    for (const char letter : text) {
        const Glyph& glyph = glyphFor(letter);
        for (int row = 0; row < glyphHeight; ++row) {
            for (int column = 0; column < glyphWidth; ++column) {
                if ((glyph[static_cast<std::size_t>(row)] >> (glyphWidth - 1 - column) & 1) != 0) {
                    fillRect(x + column * dot, y + row * dot, dot, dot, color);
                }
            }
        }
        x += (glyphWidth + 1) * dot;
    }
}

double Canvas::textWidth(double capHeight, const std::string& text)
{
    return static_cast<double>(text.size()) * (glyphWidth + 1) * capHeight / glyphHeight;
}

} // namespace kestrel::sim
