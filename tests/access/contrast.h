/// @file
/// How well what a widget shows can be told from its ground.
#pragma once

#include <QColor>
#include <QHash>
#include <QImage>
#include <QPixmap>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace kestrel::test {

/// What is asked for of texts, and of large or bold ones.
constexpr double enoughContrast = 4.5;
constexpr double enoughForLargeText = 3.0;

/// @return the relative luminance, 0 (black) to 1 (white)
inline double luminance(QRgb color)
{
    const auto linear = [](int channel) {
        const double part = channel / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
           0.0722 * linear(qBlue(color));
}

/// @return 1 (the same) to 21 (black and white)
inline double contrast(QRgb one, QRgb other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

/// @return the largest contrast of a pixel with the most frequent colour; an area of at least 4
/// pixels of a screen at scale 1 has it
inline double contrastIn(const QImage& picture)
{
    const int enough = qRound(4 * picture.devicePixelRatio() * picture.devicePixelRatio());
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    QRgb ground = 0;
    int most = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() > most) {
            ground = it.key();
            most = it.value();
        }
    }
    std::vector<double> found;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        found.insert(found.end(), static_cast<std::size_t>(std::min(it.value(), enough)),
                     contrast(it.key(), ground));
    }
    if (found.size() < static_cast<std::size_t>(enough)) {
        return 1;
    }
    std::nth_element(found.begin(), found.begin() + enough - 1, found.end(), std::greater<>());
    return found[static_cast<std::size_t>(enough - 1)];
}

/// @return the contrast of what the widget shows at a place in it, at whatever scale
inline double contrastAt(QWidget& widget, const QRect& place)
{
    return contrastIn(widget.grab(place).toImage().convertToFormat(QImage::Format_RGB32));
}

/// @return the contrast of what the widget shows on its ground, a frame of @p frame pixels aside
inline double contrastOf(QWidget& widget, int frame = 3)
{
    QWidget& window = *widget.window();
    const QRect inner = widget.rect().adjusted(frame, frame, -frame, -frame);
    const QPoint corner = widget.mapTo(&window, inner.topLeft());
    return contrastAt(window, {corner, inner.size()});
}

} // namespace kestrel::test
