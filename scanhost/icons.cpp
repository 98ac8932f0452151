#include "icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace kestrel {

namespace {

// All shapes are drawn on a field of 24 x 24.
constexpr qreal field = 24.0;

void drawRefresh(QPainter& painter)
{
    painter.drawArc(QRectF(4, 4, 16, 16), 40 * 16, 280 * 16);
    QPainterPath head;
    head.moveTo(20.5, 3.5);
    head.lineTo(20.0, 9.0);
    head.lineTo(14.8, 7.6);
    head.closeSubpath();
    painter.fillPath(head, painter.pen().color());
}

void drawSettings(QPainter& painter)
{
    const qreal knobs[] = {15.5, 8.5, 13.0};
    qreal y = 6.0;
    for (const qreal x : knobs) {
        painter.drawLine(QPointF(3, y), QPointF(21, y));
        painter.setBrush(painter.pen().color());
        painter.drawEllipse(QPointF(x, y), 2.1, 2.1);
        y += 6.0;
    }
}

void drawScan(QPainter& painter)
{
    painter.drawLine(QPointF(5, 3), QPointF(19, 10));
    painter.drawRoundedRect(QRectF(3, 11, 18, 9), 2, 2);
    painter.drawLine(QPointF(6.5, 16.5), QPointF(13.5, 16.5));
    painter.setBrush(painter.pen().color());
    painter.drawEllipse(QPointF(17.3, 16.5), 0.7, 0.7);
}

void drawStop(QPainter& painter)
{
    painter.drawEllipse(QRectF(3, 3, 18, 18));
    painter.fillRect(QRectF(8.5, 8.5, 7, 7), painter.pen().color());
}

void drawSave(QPainter& painter)
{
    painter.drawLine(QPointF(12, 3), QPointF(12, 14));
    painter.drawPolyline(QPolygonF({{7.5, 10}, {12, 14.5}, {16.5, 10}}));
    painter.drawPolyline(QPolygonF({{4, 15}, {4, 20}, {20, 20}, {20, 15}}));
}

void drawRemove(QPainter& painter)
{
    painter.drawLine(QPointF(4, 6.5), QPointF(20, 6.5));
    painter.drawPolyline(QPolygonF({{9, 6}, {9, 3.5}, {15, 3.5}, {15, 6}}));
    painter.drawPolyline(QPolygonF({{6, 7}, {7, 20.5}, {17, 20.5}, {18, 7}}));
    painter.drawLine(QPointF(10.3, 10), QPointF(10.3, 17.5));
    painter.drawLine(QPointF(13.7, 10), QPointF(13.7, 17.5));
}

QPixmap drawn(IconKind kind, int size, const QColor& colour)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / field, size / field);
    painter.setPen(QPen(colour, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    switch (kind) {
    case IconKind::Refresh:
        drawRefresh(painter);
        break;
    case IconKind::Settings:
        drawSettings(painter);
        break;
    case IconKind::Scan:
        drawScan(painter);
        break;
    case IconKind::Stop:
        drawStop(painter);
        break;
    case IconKind::Save:
        drawSave(painter);
        break;
    case IconKind::Remove:
        drawRemove(painter);
        break;
    }
    return pixmap;
}

} // namespace

QIcon makeIcon(IconKind kind, const QPalette& palette)
{
    QIcon icon;
    for (const int size : {24, 36, 48, 72}) {
        icon.addPixmap(drawn(kind, size, palette.color(QPalette::Active, QPalette::ButtonText)));
        icon.addPixmap(drawn(kind, size, palette.color(QPalette::Disabled, QPalette::ButtonText)),
                       QIcon::Disabled);
    }
    return icon;
}

QIcon applicationIcon()
{
    QIcon icon;
    for (const int size : {48, 128}) {
        icon.addFile(QStringLiteral(":/scanhost/kestrel-scan-%1.png").arg(size));
    }
    return icon;
}

} // namespace kestrel
