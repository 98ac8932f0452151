/// @file
/// Labels of a fixed width under any host's font.
#pragma once

#include <QFontInfo>
#include <QFontMetrics>
#include <QLabel>

namespace kestrel {

/// Makes the label's font smaller, pixel by pixel, until its text has room. A font that fits
/// already stays as the host chose it.
inline void fitText(QLabel& label)
{
    constexpr int smallestPixels = 9;
    QFont font = label.font();
    int pixels = QFontInfo(font).pixelSize();
    while (pixels > smallestPixels &&
           QFontMetrics(font).horizontalAdvance(label.text()) > label.width()) {
        font.setPixelSize(--pixels);
    }
    label.setFont(font);
}

} // namespace kestrel
