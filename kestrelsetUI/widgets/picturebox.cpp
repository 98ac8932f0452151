#include "widgets/picturebox.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr QSize kEmptyPictureSize(1, 1);
constexpr QRgb kBackgroundColour = qRgb(245, 245, 245);
constexpr QRgb kClearedColour = qRgb(216, 216, 216);

constexpr double kZoomStep = 0.1;
constexpr double kZoomLimit = 3.0;
// Ten steps of 0.1 do not quite make 1: without it the last step depended on where one came from.
constexpr double kZoomSlack = 1e-9;
constexpr double kMinimumScale = 0.01;
constexpr double kMaximumScale = 100.0;

constexpr int kZoomedMode = 1;

int limitedSize(double value)
{
    return static_cast<int>(std::clamp(value, 0.0, double{QWIDGETSIZE_MAX}));
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

} // namespace

PreviewBoxUI::PreviewBoxUI(QWidget* parent)
    : QWidget(parent), shown(kEmptyPictureSize, QImage::Format_RGB32), background(kBackgroundColour)
{
    shown.fill(kBackgroundColour);
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
    selection.setArea({QPoint(0, 0), maximum});
    selection.setPictureShown(scale > 0);
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
    if (!source.isNull() && scale + kZoomStep < kZoomLimit - kZoomSlack) {
        zoomTo(scale + kZoomStep);
    }
}

void PreviewBoxUI::zoomin()
{
    if (!source.isNull() && scale - kZoomStep > kZoomSlack) {
        zoomTo(scale - kZoomStep);
    }
}

void PreviewBoxUI::setScale(int step)
{
    scale = std::clamp((step + 1.0) * 0.25, kMinimumScale, kMaximumScale);
    selection.setPictureShown(true);
    if (mode == kZoomedMode) {
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
    shown.fill(kClearedColour);
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

void PreviewBoxUI::zoomTo(double newScale)
{
    if (mode != kZoomedMode) {
        setMode(kZoomedMode);
    }
    scale = newScale;
    selection.setPictureShown(true);
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

QSize PreviewBoxUI::roundedSize(const QSize& size, double factor)
{
    return {limitedSize(std::round(size.width() * factor)),
            limitedSize(std::round(size.height() * factor))};
}
