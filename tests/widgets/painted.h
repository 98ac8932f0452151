/// @file
/// What a widget paints, pixel by pixel, at whatever device pixel ratio the program runs.
#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>

#include <set>
#include <vector>

namespace kestrel::test {

/// Shows where nothing was painted.
constexpr QRgb kUnpainted = qRgb(255, 0, 255);

class Painted
{
public:
    explicit Painted(QWidget& widget)
        : m_ratio(widget.devicePixelRatioF()),
          m_image((QSizeF(widget.size()) * m_ratio).toSize(), QImage::Format_RGB32)
    {
        m_image.fill(kUnpainted);
        m_image.setDevicePixelRatio(m_ratio);
        widget.render(&m_image, {}, {}, QWidget::RenderFlags());
    }

    double ratio() const { return m_ratio; }
    const QImage& image() const { return m_image; }

    /// @return the colour in the middle of a pixel of the widget
    QRgb at(int x, int y) const
    {
        return m_image.pixel(static_cast<int>((x + 0.5) * m_ratio),
                             static_cast<int>((y + 0.5) * m_ratio));
    }

    /// Stretches of device pixels of a colour in a row or column.
    struct Run
    {
        int first;
        int length;
    };

    /// @return the runs of @p colour along the row at @p y
    std::vector<Run> runsInRow(double y, QRgb colour) const
    {
        const int row = static_cast<int>(y * m_ratio);
        return runs(m_image.width(), [&](int x) { return m_image.pixel(x, row) == colour; });
    }

    /// @return the runs of @p colour along the column at @p x
    std::vector<Run> runsInColumn(double x, QRgb colour) const
    {
        const int column = static_cast<int>(x * m_ratio);
        return runs(m_image.height(), [&](int y) { return m_image.pixel(column, y) == colour; });
    }

    /// @return every colour that is there
    std::set<QRgb> colours() const
    {
        std::set<QRgb> found;
        for (int y = 0; y < m_image.height(); ++y) {
            for (int x = 0; x < m_image.width(); ++x) {
                found.insert(m_image.pixel(x, y));
            }
        }
        return found;
    }

private:
    template <typename Matches>
    static std::vector<Run> runs(int length, Matches matches)
    {
        std::vector<Run> found;
        for (int i = 0; i < length; ++i) {
            if (!matches(i)) {
                continue;
            }
            if (!found.empty() && found.back().first + found.back().length == i) {
                ++found.back().length;
            } else {
                found.push_back({i, 1});
            }
        }
        return found;
    }

    double m_ratio;
    QImage m_image;
};

} // namespace kestrel::test
