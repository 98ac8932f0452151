#include "widgets/previewui.h"

#include <QPainter>

namespace {

constexpr QSize canvasSize(400, 600);
// Where the two axes meet, and how long the ticks are.
constexpr QPoint corner(35, 30);
constexpr int majorTick = 8;
constexpr int minorTick = 4;
constexpr int minorTicksPerMajor = 5;
constexpr int majorTicksPerLabel = 5;
constexpr int mmPerMajor = 20;

/// Pixels per 20 mm for a ruler of this length, with a whole number of them per minor tick.
int standardFor(float mm)
{
    if (!(mm > 0.0F)) {
        return 0;
    }
    // A hair's breadth would ask for more pixels than an int can count.
    constexpr float most = 1.0e6F;
    const float exact = 10000.0F / mm;
    const int pixels = static_cast<int>(exact < most ? exact : most);
    return (pixels + minorTicksPerMajor - 1) / minorTicksPerMajor * minorTicksPerMajor;
}

void drawTopRuler(QPainter& painter, int standard)
{
    const int step = standard / minorTicksPerMajor;
    const int intervals = (canvasSize.width() - 10) / standard - 2;
    for (int i = 0; i < intervals; ++i) {
        const int major = corner.x() + (i + 1) * standard;
        painter.drawLine(major, corner.y(), major, corner.y() - majorTick);
        for (int k = 0; k < minorTicksPerMajor; ++k) {
            const int minor = corner.x() + step + i * standard + k * step;
            painter.drawLine(minor, corner.y(), minor, corner.y() - minorTick);
        }
        if ((i + 1) % majorTicksPerLabel == 0) {
            painter.drawText(static_cast<int>((i + 0.6) * standard + corner.x()), 20,
                             QString::number((i + 1) * mmPerMajor));
        }
    }
}

void drawLeftRuler(QPainter& painter, int standard)
{
    const int step = standard / minorTicksPerMajor;
    const int intervals = (canvasSize.height() - 10) / standard - 2;
    for (int i = 0; i < intervals; ++i) {
        const int major = corner.y() + (i + 1) * standard;
        painter.drawLine(corner.x(), major, corner.x() - majorTick, major);
        for (int k = 0; k < minorTicksPerMajor; ++k) {
            const int minor = corner.y() + step + i * standard + k * step;
            painter.drawLine(corner.x(), minor, corner.x() - minorTick, minor);
        }
        if ((i + 1) % majorTicksPerLabel == 0) {
            painter.drawText(10, static_cast<int>((i + 0.9) * standard + corner.y()),
                             QString::number((i + 1) * mmPerMajor));
        }
    }
}

} // namespace

PreViewUI::PreViewUI(QWidget* parent) : QWidget(parent), canvas(canvasSize, QImage::Format_RGB32)
{
    canvas.fill(Qt::white);
}

PreViewUI::~PreViewUI() = default;

void PreViewUI::setMaxHeight(float mm)
{
    maximumHeight = mm;
    standard = standardFor(mm);
    ready = true;
    Paint();
    update();
}

int PreViewUI::getStandard() const
{
    return standard;
}

void PreViewUI::Paint()
{
    const qreal ratio = devicePixelRatioF();
    canvas = QImage((QSizeF(canvasSize) * ratio).toSize(), QImage::Format_RGB32);
    canvas.setDevicePixelRatio(ratio);
    canvas.fill(Qt::white);

    QPainter painter(&canvas);
    const int right = canvasSize.width();
    const int bottom = canvasSize.height();
    painter.drawRect(5, 5, right - 11, bottom - 11);
    painter.drawLine(corner.x(), corner.y(), right - 10, corner.y());
    painter.drawLine(corner.x(), corner.y(), corner.x(), bottom - 10);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawText(25, 25, QStringLiteral("0"));
    if (standard > 0) {
        drawTopRuler(painter, standard);
        drawLeftRuler(painter, standard);
    }
}

void PreViewUI::paintEvent(QPaintEvent* /*event*/)
{
    if (!ready) {
        return;
    }
    // The window may have come to another screen since.
    if (!qFuzzyCompare(canvas.devicePixelRatio(), devicePixelRatioF())) {
        Paint();
    }
    QPainter painter(this);
    painter.drawImage(QPoint(0, 0), canvas);
}
