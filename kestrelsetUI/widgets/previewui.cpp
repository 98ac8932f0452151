#include "widgets/previewui.h"

#include <QPainter>

namespace {

constexpr QSize kCanvasSize(400, 600);
// Where the two axes meet, and how long the ticks are.
constexpr QPoint kCorner(35, 30);
constexpr int kMajorTick = 8;
constexpr int kMinorTick = 4;
constexpr int kMinorTicksPerMajor = 5;
constexpr int kMajorTicksPerLabel = 5;
constexpr int kMmPerMajor = 20;
// In pixels: three digits have to fit beside the ticks, whatever the desktop's font is.
constexpr int kLabelSize = 10;

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
    return (pixels + kMinorTicksPerMajor - 1) / kMinorTicksPerMajor * kMinorTicksPerMajor;
}

void drawTopRuler(QPainter& painter, int standard)
{
    const int step = standard / kMinorTicksPerMajor;
    const int intervals = (kCanvasSize.width() - 10) / standard - 2;
    for (int i = 0; i < intervals; ++i) {
        const int major = kCorner.x() + (i + 1) * standard;
        painter.drawLine(major, kCorner.y(), major, kCorner.y() - kMajorTick);
        for (int k = 0; k < kMinorTicksPerMajor; ++k) {
            const int minor = kCorner.x() + step + i * standard + k * step;
            painter.drawLine(minor, kCorner.y(), minor, kCorner.y() - kMinorTick);
        }
        if ((i + 1) % kMajorTicksPerLabel == 0) {
            painter.drawText(static_cast<int>((i + 0.6) * standard + kCorner.x()), 20,
                             QString::number((i + 1) * kMmPerMajor));
        }
    }
}

void drawLeftRuler(QPainter& painter, int standard)
{
    const int step = standard / kMinorTicksPerMajor;
    const int intervals = (kCanvasSize.height() - 10) / standard - 2;
    for (int i = 0; i < intervals; ++i) {
        const int major = kCorner.y() + (i + 1) * standard;
        painter.drawLine(kCorner.x(), major, kCorner.x() - kMajorTick, major);
        for (int k = 0; k < kMinorTicksPerMajor; ++k) {
            const int minor = kCorner.y() + step + i * standard + k * step;
            painter.drawLine(kCorner.x(), minor, kCorner.x() - kMinorTick, minor);
        }
        if ((i + 1) % kMajorTicksPerLabel == 0) {
            painter.drawText(10, static_cast<int>((i + 0.9) * standard + kCorner.y()),
                             QString::number((i + 1) * kMmPerMajor));
        }
    }
}

} // namespace

PreViewUI::PreViewUI(QWidget* parent) : QWidget(parent), canvas(kCanvasSize, QImage::Format_RGB32)
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
    canvas = QImage((QSizeF(kCanvasSize) * ratio).toSize(), QImage::Format_RGB32);
    canvas.setDevicePixelRatio(ratio);
    canvas.fill(Qt::white);

    QPainter painter(&canvas);
    QFont font = painter.font();
    font.setPixelSize(kLabelSize);
    painter.setFont(font);
    const int right = kCanvasSize.width();
    const int bottom = kCanvasSize.height();
    painter.drawRect(5, 5, right - 11, bottom - 11);
    painter.drawLine(kCorner.x(), kCorner.y(), right - 10, kCorner.y());
    painter.drawLine(kCorner.x(), kCorner.y(), kCorner.x(), bottom - 10);
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
