#include "page_view.h"

#include <QPainter>

namespace kestrel {

namespace {

constexpr int margin = 24;
// Enough for any screen; a page in full resolution would only cost memory.
constexpr int largestEdge = 2400;

} // namespace

PageView::PageView(QWidget* parent) : QWidget(parent)
{
    setAccessibleName(tr("页面"));
    setMinimumSize(240, 240);
}

QSize PageView::sizeHint() const
{
    return {520, 640};
}

void PageView::setPage(const Page& page)
{
    m_picture = QImage(page.file, "png");
    if (m_picture.isNull()) {
        m_picture = page.thumbnail;
    }
    if (std::max(m_picture.width(), m_picture.height()) > largestEdge) {
        m_picture = m_picture.scaled(largestEdge, largestEdge, Qt::KeepAspectRatio,
                                     Qt::SmoothTransformation);
    }
    m_fitted = QImage();
    update();
}

void PageView::clear()
{
    m_picture = m_fitted = QImage();
    update();
}

void PageView::resizeEvent(QResizeEvent* event)
{
    m_fitted = QImage();
    QWidget::resizeEvent(event);
}

void PageView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    if (m_picture.isNull()) {
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                         tr("还没有页面\n\n选择扫描仪，在“设置”中调整，然后点“扫描”"));
        return;
    }
    const qreal ratio = devicePixelRatioF();
    if (m_fitted.isNull()) {
        const QSize room = (QSizeF(size() - QSize(2 * margin, 2 * margin)) * ratio).toSize();
        m_fitted = m_picture.scaled(room.expandedTo({1, 1}), Qt::KeepAspectRatio,
                                    Qt::SmoothTransformation);
        m_fitted.setDevicePixelRatio(ratio);
    }
    QRect sheet(QPoint(), (QSizeF(m_fitted.size()) / ratio).toSize());
    sheet.moveCenter(rect().center());
    painter.fillRect(sheet.translated(3, 3), QColor(0, 0, 0, 50));
    painter.drawImage(sheet.topLeft(), m_fitted);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(sheet.adjusted(-1, -1, 0, 0));
}

} // namespace kestrel
