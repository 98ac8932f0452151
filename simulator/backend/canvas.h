#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model.h"

namespace kestrel::sim {

/// 0x00RRGGBB.
using Rgb = std::uint32_t;

constexpr Rgb rgb(int red, int green, int blue)
{
    return static_cast<Rgb>(red) << 16 | static_cast<Rgb>(green) << 8 | static_cast<Rgb>(blue);
}

constexpr int redOf(Rgb pixel)
{
    return static_cast<int>(pixel >> 16 & 0xff);
}
constexpr int greenOf(Rgb pixel)
{
    return static_cast<int>(pixel >> 8 & 0xff);
}
constexpr int blueOf(Rgb pixel)
{
    return static_cast<int>(pixel & 0xff);
}

/// One printed side of a sheet as pixels. All drawing is in millimetres from the upper left corner
/// and is cut off at the edges.
class Canvas
{
public:
    /// A side of @p size in plain @p paper, at 150 pixels per inch or, for very large sheets,
    /// fewer.
    Canvas(const SizeMm& size, Rgb paper);

    int width() const { return width_; }
    int height() const { return height_; }
    double pixelsPerMm() const { return scale_; }
    const SizeMm& size() const { return size_; }
    const std::vector<Rgb>& pixels() const { return pixels_; }
    Rgb& pixel(int x, int y) { return pixels_[index(x, y)]; }
    Rgb pixel(int x, int y) const { return pixels_[index(x, y)]; }

    void fillRect(double x, double y, double width, double height, Rgb color);
    void fillDisc(double x, double y, double radius, Rgb color);
    void ring(double x, double y, double outer, double inner, Rgb color);

    /// Text in capitals, digits and a few signs. @p capHeight is the height of the letters.
    void text(double x, double y, double capHeight, const std::string& text, Rgb color);

    /// How wide text() makes @p text.
    static double textWidth(double capHeight, const std::string& text);

private:
    std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }
    int toPixel(double mm) const;

    SizeMm size_;
    double scale_;
    int width_;
    int height_;
    std::vector<Rgb> pixels_;
};

} // namespace kestrel::sim
