#include "widgets/picturebox.h"

#include "rules/pixels.h"
#include "rules/tone.h"

#include <QPaintEvent>
#include <QStyleOptionFocusRect>

#include <cmath>

namespace {

constexpr QRgb kHandleColour = qRgb(0, 174, 255);
constexpr int kVeilAlpha = 100;

// A thin strip fitted to a page's height would take gigabytes on the way to the same picture.
constexpr double kMaximumResampledPixels = 32.0 * 1024 * 1024;

// Scratch for the adjustments, shared by all boxes: a slider that is dragged makes dozens of
// pictures.
QImage workingImage;

QPen linePen(Qt::GlobalColor colour)
{
    return {colour, 1, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin};
}

} // namespace

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

/// Makes `shown` once more, the way it was made last.
void PreviewBoxUI::remakeShown()
{
    if (shownBrightness == 0 && shownContrast == 0) {
        buildShown(source, shownResampled);
    } else {
        showAdjusted(shownBrightness, shownContrast);
    }
}

void PreviewBoxUI::buildShown(const QImage& picture, bool resample)
{
    shownRatio = devicePixelRatioF();
    shownResampled = resample;
    cleared = false;
    shown = picture;
    const QSize small = roundedSize(picture.size(), scale * shownRatio).expandedTo(QSize(1, 1));
    if (resample && scale > 0 && 1.0 * small.width() * small.height() <= kMaximumResampledPixels) {
        shown = picture.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                    .scaled(picture.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    if (shown.hasAlphaChannel()) {
        shown = shown.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }
    pictureChanged();
}

void PreviewBoxUI::paintEvent(QPaintEvent* event)
{
    if (!cleared && !qFuzzyCompare(shownRatio, devicePixelRatioF())) {
        // The window has come to another screen.
        remakeShown();
    }
    painter.begin(this);
    painter.setPen(linePen(Qt::red));
    drawPicture(event->rect());
    if (!source.isNull()) {
        const kestrel::ImageArea& area = selection.area();
        painter.fillRect(QRect(area.origin, area.maximum), QColor(0, 0, 0, kVeilAlpha));
    }
    if (selection.state() != kestrel::SelectionState::Idle) {
        drawSelection(event->rect());
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
        // Who renders a far part of a large picture gets that part, not all that lies between.
        const QRect visible = visibleRegion().boundingRect();
        const QRect window = onScreen(visible.contains(exposed) ? visible : exposed);
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

void PreviewBoxUI::drawSelection(const QRect& exposed)
{
    const QRect rect = selection.selectRect();
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    drawPicture(rect & exposed);
    painter.restore();
    painter.drawRect(rect);
    painter.setPen(linePen(Qt::blue));
    painter.setBrush(QColor(kHandleColour));
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
    option.state |= QStyle::State_KeyboardFocusChange;
    option.backgroundColor = palette().color(QPalette::Window);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}
