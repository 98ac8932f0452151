#include "widgets/picturebox.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <optional>

namespace {

std::optional<QPoint> arrowStep(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return QPoint(-1, 0);
    case Qt::Key_Right:
        return QPoint(1, 0);
    case Qt::Key_Up:
        return QPoint(0, -1);
    case Qt::Key_Down:
        return QPoint(0, 1);
    default:
        return std::nullopt;
    }
}

bool isSelectionKey(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (event.key() == Qt::Key_Escape) {
        return modifiers == Qt::NoModifier;
    }
    return arrowStep(event.key()) &&
           (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier);
}

} // namespace

QRect PreviewBoxUI::getRect(const QPoint& a, const QPoint& b) const
{
    return kestrel::rectBetween(a, b);
}

bool PreviewBoxUI::isPressPointInSelectRect(QPoint point) const
{
    return selection.contains(point);
}

preView::DTAG_STATUS PreviewBoxUI::getStrethRectState(QPoint point) const
{
    return selection.handleAt(point);
}

void PreviewBoxUI::setStretchCursorStyle(preView::DTAG_STATUS status)
{
    if (const auto shape = kestrel::handleCursor(status)) {
        setCursor(*shape);
    }
}

QPoint PreviewBoxUI::getMovePoint() const
{
    return selection.moveOffset();
}

QRect PreviewBoxUI::getMoveRect()
{
    return selection.moveRect();
}

QRect PreviewBoxUI::getStretchRect()
{
    return selection.stretchRect();
}

QRect PreviewBoxUI::getSelectRect()
{
    return selection.selectRect();
}

void PreviewBoxUI::cancelManualRectSet()
{
    follow(selection.clear());
}

void PreviewBoxUI::setRect(double x, double y, double w, double h)
{
    if (w == 0 && h == 0) {
        return;
    }
    const auto pixels = [this](double mm) { return kestrel::mmToPixels(mm, standard); };
    const QPoint first(pixels(x), pixels(y));
    if (selection.setCorners(first, first + QPoint(pixels(w), pixels(h)))) {
        update();
    }
}

void PreviewBoxUI::setMoveRect(double x, double y)
{
    if (selection.moveFirstCornerTo(
            {kestrel::mmToPixels(x, standard), kestrel::mmToPixels(y, standard)})) {
        update();
    }
}

void PreviewBoxUI::setSelectedRect(double w, double h)
{
    if (selection.setExtent({kestrel::mmToPixels(w, standard), kestrel::mmToPixels(h, standard)})) {
        update();
    }
}

bool PreviewBoxUI::event(QEvent* event)
{
    // Neither the dialog's Escape nor a host's shortcut on an arrow may take these keys away.
    if (event->type() == QEvent::ShortcutOverride &&
        isSelectionKey(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void PreviewBoxUI::mousePressEvent(QMouseEvent* event)
{
    if (!source.isNull()) {
        follow(selection.press(kestrel::roundedPoint(event->localPos()), event->button()));
    }
}

void PreviewBoxUI::mouseMoveEvent(QMouseEvent* event)
{
    if (!source.isNull()) {
        follow(selection.move(kestrel::roundedPoint(event->localPos()), event->buttons()));
    }
}

void PreviewBoxUI::mouseReleaseEvent(QMouseEvent* event)
{
    if (!source.isNull()) {
        follow(selection.release(kestrel::roundedPoint(event->localPos()), event->button()));
        // Taken over now: the next event may come before the next frame.
        selection.selectRect();
    }
}

void PreviewBoxUI::keyPressEvent(QKeyEvent* event)
{
    if (!isSelectionKey(*event)) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    if (source.isNull()) {
        return;
    }
    const auto step = arrowStep(event->key());
    if (!step) {
        follow(selection.clear());
    } else if (event->modifiers().testFlag(Qt::ShiftModifier)) {
        follow(selection.grow(*step));
    } else {
        follow(selection.nudge(*step));
    }
}

void PreviewBoxUI::focusInEvent(QFocusEvent* event)
{
    keyboardFocus = event->reason() == Qt::TabFocusReason ||
                    event->reason() == Qt::BacktabFocusReason ||
                    event->reason() == Qt::ShortcutFocusReason;
    QWidget::focusInEvent(event);
}

void PreviewBoxUI::focusOutEvent(QFocusEvent* event)
{
    keyboardFocus = false;
    QWidget::focusOutEvent(event);
}

void PreviewBoxUI::follow(const kestrel::Selection::Reaction& reaction)
{
    if (reaction.cursor) {
        setCursor(*reaction.cursor);
    }
    if (reaction.repaint) {
        update();
    }
    if (reaction.announced) {
        emit selected(*reaction.announced, standard);
    }
}
