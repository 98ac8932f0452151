#include "widgets/picturebox.h"

#include "rules/pixels.h"
#include "rules/tone.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

using kestrel::Selection;

constexpr QSize emptyPictureSize(1, 1);
constexpr QRgb backgroundColour = qRgb(245, 245, 245);
constexpr QRgb clearedColour = qRgb(216, 216, 216);
constexpr QRgb handleColour = qRgb(0, 174, 255);
constexpr int veilAlpha = 100;

constexpr double zoomStep = 0.1;
constexpr double zoomLimit = 3.0;
// Ten steps of 0.1 do not quite make 1: without it the last step depended on where one came from.
constexpr double zoomSlack = 1e-9;
constexpr double minimumScale = 0.01;
constexpr double maximumScale = 100.0;

constexpr int zoomedMode = 1;

// A thin strip fitted to a page's height would take gigabytes on the way to the same picture.
constexpr double maximumResampledPixels = 32.0 * 1024 * 1024;

// Scratch for the adjustments, shared by all boxes: a slider that is dragged makes dozens of
// pictures.
QImage workingImage;

int limitedSize(double value)
{
    return static_cast<int>(std::clamp(value, 0.0, double{QWIDGETSIZE_MAX}));
}

QSize roundedSize(const QSize& size, double factor)
{
    return {limitedSize(std::round(size.width() * factor)),
            limitedSize(std::round(size.height() * factor))};
}

/// An own copy of a picture, in 32 bits.
QImage ownCopy(const QImage& picture)
{
    // Also for an opaque picture by way of alpha, because the scanner's pixels carry 0 there.
    QImage copy = picture.format() == QImage::Format_ARGB32
                      ? picture.copy()
                      : picture.convertToFormat(QImage::Format_ARGB32);
    if (!picture.hasAlphaChannel() && !copy.isNull()) {
        copy.reinterpretAsFormat(QImage::Format_RGB32);
    }
    return copy;
}

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

PreviewBoxUI::PreviewBoxUI(QWidget* parent)
    : QWidget(parent), shown(emptyPictureSize, QImage::Format_RGB32), background(backgroundColour)
{
    shown.fill(backgroundColour);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("预览图像"));
}

PreviewBoxUI::~PreviewBoxUI() = default;

bool PreviewBoxUI::setImage(QImage& img)
{
    rotation = 0;
    QImage copy = img.isNull() ? QImage() : ownCopy(img);
    if (copy.isNull()) {
        return false;
    }
    source = std::move(copy);
    const float heightOnScreen = static_cast<float>(standard) * (maximumHeight / 20.0F);
    const double fitted = static_cast<double>(heightOnScreen) / source.height();
    scale = std::isfinite(fitted) && fitted > 0 ? fitted : 0;
    shownBrightness = shownContrast = 0;
    buildShown(source, scale > 0);
    const QPoint maximum(limitedSize(shown.width() * scale) - 1,
                         limitedSize(shown.height() * scale) - 1);
    selection.setArea({QPoint(0, 0), maximum}, scale > 0);
    setMode(mode);
    return true;
}

void PreviewBoxUI::setimage_pix(int newBrightness, int newContrast)
{
    if (!source.isNull()) {
        showAdjusted(newBrightness, newContrast);
    }
    update();
}

void PreviewBoxUI::setBrightness(int newBrightness)
{
    brightness = newBrightness;
    setimage_pix(brightness, contrast);
}

void PreviewBoxUI::AdjustContrast(int newContrast)
{
    contrast = newContrast;
    setimage_pix(brightness, contrast);
}

void PreviewBoxUI::setRipewhiteEnable(int enable)
{
    ripeWhite = enable;
    update();
}

void PreviewBoxUI::zoomout()
{
    if (!source.isNull() && scale + zoomStep < zoomLimit - zoomSlack) {
        zoomTo(scale + zoomStep);
    }
}

void PreviewBoxUI::zoomin()
{
    if (!source.isNull() && scale - zoomStep > zoomSlack) {
        zoomTo(scale - zoomStep);
    }
}

void PreviewBoxUI::setScale(int step)
{
    scale = std::clamp((step + 1.0) * 0.25, minimumScale, maximumScale);
    selection.setArea(selection.area(), true);
    if (mode == zoomedMode) {
        setScaledSize(rotation == 90 || rotation == 270);
    }
    pictureChanged();
}

void PreviewBoxUI::setRotate(int degrees)
{
    rotation = degrees;
    if (mode != 0) {
        setScaledSize(rotation == 90 || rotation == 270);
    }
    update();
}

int PreviewBoxUI::getRotate() const
{
    return rotation;
}

void PreviewBoxUI::setautosize()
{
    if (!source.isNull()) {
        setMode(0);
    }
}

void PreviewBoxUI::clearpaint()
{
    shown.fill(clearedColour);
    cleared = true;
    pictureChanged();
}

void PreviewBoxUI::setBackground(QBrush brush)
{
    background = std::move(brush);
    update();
}

void PreviewBoxUI::save_image(char* /*path*/, int /*format*/, unsigned int /*quality*/) {}

void PreviewBoxUI::setMode(int newMode)
{
    if (newMode >= 0 && newMode <= 2) {
        mode = newMode;
    }
    update();
}

void PreviewBoxUI::setMaxHeightAndStandrad(float maxHeight, int newStandard)
{
    maximumHeight = maxHeight;
    standard = newStandard;
}

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

void PreviewBoxUI::follow(const Selection::Reaction& reaction)
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

void PreviewBoxUI::pictureChanged()
{
    scaledPartWindow = QRect();
    update();
}

void PreviewBoxUI::showAdjusted(int addedBrightness, int addedContrast)
{
    if (workingImage.size() != source.size() || workingImage.format() != source.format() ||
        !workingImage.isDetached()) {
        workingImage = QImage(source.size(), source.format());
    }
    if (workingImage.isNull()) {
        return;
    }
    const auto count = static_cast<std::size_t>(source.sizeInBytes()) / sizeof(std::uint32_t);
    kestrel::applyTone(kestrel::toneTable(addedBrightness, addedContrast),
                       reinterpret_cast<const std::uint32_t*>(source.constBits()),
                       reinterpret_cast<std::uint32_t*>(workingImage.bits()), count);
    shownBrightness = addedBrightness;
    shownContrast = addedContrast;
    buildShown(workingImage, scale < 1.0);
}

void PreviewBoxUI::buildShown(const QImage& picture, bool resample)
{
    shownRatio = devicePixelRatioF();
    cleared = false;
    shown = picture;
    const QSize small = roundedSize(picture.size(), scale * shownRatio).expandedTo(QSize(1, 1));
    if (resample && scale > 0 && 1.0 * small.width() * small.height() <= maximumResampledPixels) {
        shown = picture.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                    .scaled(picture.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    if (shown.hasAlphaChannel()) {
        shown = shown.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }
    pictureChanged();
}

void PreviewBoxUI::zoomTo(double newScale)
{
    if (mode != zoomedMode) {
        setMode(zoomedMode);
    }
    scale = newScale;
    selection.setArea(selection.area(), true);
    shownBrightness = shownContrast = 0;
    buildShown(source, scale < 1.0);
    setScaledSize(false);
}

void PreviewBoxUI::setScaledSize(bool turned)
{
    if (turned) {
        setFixedSize(limitedSize(shown.height() * scale), limitedSize(shown.width() * scale));
    } else {
        setFixedSize(scaledSize());
    }
}

QSize PreviewBoxUI::scaledSize() const
{
    return roundedSize(shown.size(), scale);
}

void PreviewBoxUI::paintEvent(QPaintEvent* event)
{
    if (!cleared && !qFuzzyCompare(shownRatio, devicePixelRatioF())) {
        // The window has come to another screen.
        showAdjusted(shownBrightness, shownContrast);
    }
    painter.begin(this);
    painter.setPen(QPen(Qt::red, 1, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
    drawPicture(event->rect());
    if (!source.isNull()) {
        const kestrel::ImageArea& area = selection.area();
        painter.fillRect(QRect(area.origin, area.maximum), QColor(0, 0, 0, veilAlpha));
    }
    if (selection.state() != kestrel::SelectionState::Idle) {
        drawSelection();
    }
    drawKeyboardFocus();
    painter.end();
}

void PreviewBoxUI::drawPicture(const QRect& exposed)
{
    const double ratio = devicePixelRatioF();
    const QSize size = scaledSize();
    const QSizeF full = QSizeF(size) * ratio;
    const QRect everything(0, 0, qRound(full.width()), qRound(full.height()));
    const auto onScreen = [&](const QRect& rect) {
        return QRectF(QPointF(rect.topLeft()) * ratio, QSizeF(rect.size()) * ratio)
                   .toAlignedRect() &
               everything;
    };
    const QRect wanted = onScreen(exposed);
    if (wanted.isEmpty() || shown.isNull()) {
        return;
    }
    if (!scaledPartWindow.contains(wanted)) {
        // Only what can be seen is kept, so that no zoom asks for more memory than the screen does.
        const QRect window = onScreen(exposed | visibleRegion().boundingRect());
        scaledPart = QImage(window.size(), shown.format());
        if (scaledPart.isNull()) {
            scaledPartWindow = QRect();
            return;
        }
        kestrel::scaleNearest(reinterpret_cast<const std::uint32_t*>(shown.constBits()),
                              static_cast<std::size_t>(shown.bytesPerLine()) / 4,
                              reinterpret_cast<std::uint32_t*>(scaledPart.bits()),
                              static_cast<std::size_t>(scaledPart.bytesPerLine()) / 4,
                              {shown.width(), shown.height(), everything.width(),
                               everything.height(), window.left(), window.top(), window.width(),
                               window.height()});
        scaledPart.setDevicePixelRatio(ratio);
        scaledPartWindow = window;
    }
    painter.drawImage(QPointF(scaledPartWindow.topLeft()) / ratio, scaledPart);
}

void PreviewBoxUI::drawSelection()
{
    const QRect rect = selection.selectRect();
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    drawPicture(rect);
    painter.restore();
    painter.drawRect(rect);
    painter.setPen(QPen(Qt::blue, 1, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
    painter.setBrush(QColor(handleColour));
    for (const QRect& handle : selection.handles()) {
        painter.drawRect(handle);
    }
}

void PreviewBoxUI::drawKeyboardFocus()
{
    if (!keyboardFocus || !hasFocus()) {
        return;
    }
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.backgroundColor = palette().color(QPalette::Window);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}
