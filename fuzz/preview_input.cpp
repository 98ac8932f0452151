#include "preview_input.h"

#include <array>
#include <vector>

namespace kestrel::fuzz {

QPointF anyPoint(Input& input, const QRect& selection)
{
    switch (input.byte() % 4) {
    case 0: {
        const double x = input.real();
        return {x, input.real()};
    }
    case 1: { // where the handles are
        const std::array<QPoint, 4> corners = {selection.topLeft(), selection.topRight(),
                                               selection.bottomLeft(), selection.bottomRight()};
        const QPoint corner = corners.at(static_cast<std::size_t>(input.below(4)));
        const double x = corner.x() + input.below(24) - 12.0;
        return {x, corner.y() + input.below(24) - 12.0};
    }
    default: {
        const double x = input.below(440) - 20.5;
        return {x, input.below(640) - 20.0};
    }
    }
}

Qt::MouseButton anyButton(Input& input)
{
    switch (input.byte() % 8) {
    case 0:
        return Qt::RightButton;
    case 1:
        return Qt::MiddleButton;
    case 2:
        return static_cast<Qt::MouseButton>(1U << static_cast<unsigned>(input.below(27)));
    default:
        return Qt::LeftButton;
    }
}

QImage anyPicture(Input& input)
{
    static const std::vector<QImage::Format> kFormats = {
        QImage::Format_RGB32, QImage::Format_ARGB32,  QImage::Format_ARGB32_Premultiplied,
        QImage::Format_Mono,  QImage::Format_RGB888,  QImage::Format_Grayscale8,
        QImage::Format_RGB16, QImage::Format_Indexed8};
    const bool small = input.flag();
    const int width = input.below(small ? 64 : 2000);
    const int height = input.below(small ? 96 : 6);
    QImage image(width, height, input.pick(kFormats));
    image.fill(input.word());
    return image;
}

} // namespace kestrel::fuzz
