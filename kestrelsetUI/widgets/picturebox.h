/// @file
/// The preview picture with the selection on it.
#pragma once

#include "rules/selection.h"

#include <QBrush>
#include <QImage>
#include <QPainter>
#include <QWidget>

/// Shows the preview and lets the user draw, move and stretch one selection on it, with the mouse
/// or, while it has the focus, with the keyboard: arrows move by one pixel, Shift and arrows move
/// the right and bottom edge, Escape clears.
///
/// Lengths are pixels of the widget unless said otherwise; "standard" is pixels per 20 mm.
class Q_DECL_EXPORT PreviewBoxUI : public QWidget
{
    Q_OBJECT

public:
    /// @param parent owner; may be null.
    explicit PreviewBoxUI(QWidget* parent = nullptr);
    ~PreviewBoxUI() override;
    Q_DISABLE_COPY_MOVE(PreviewBoxUI)

    // Picture

    /// Shows a picture, fitted to the height of the paper. The rotation goes back to 0.
    /// @param img the picture, which is copied
    /// @return false for a null image, which leaves the picture as it was
    bool setImage(QImage& img);
    /// Shows the picture with these adjustments, without keeping them.
    /// @param brightness added to each channel
    /// @param contrast 1 to 99 spread, 100 black or white, others in proportion
    void setimage_pix(int brightness, int contrast);
    /// Keeps the brightness and shows it with the contrast that is kept.
    /// @param brightness added to each channel
    void setBrightness(int brightness);
    /// Keeps the contrast and shows it with the brightness that is kept.
    /// @param contrast as for setimage_pix()
    void AdjustContrast(int contrast);
    /// Keeps the flag and repaints; nothing else depends on it.
    /// @param enable the flag
    void setRipewhiteEnable(int enable);
    /// Enlarges by 0.1, staying below 3.
    void zoomout();
    /// Reduces by 0.1, staying above 0.
    void zoomin();
    /// Sets the scale in quarters, between 0.01 and 100.
    /// @param step one less than the number of quarters
    void setScale(int step);
    /// Keeps the rotation; a zoomed widget takes the size of the turned picture.
    /// @param degrees 0, 90, 180 or 270
    void setRotate(int degrees);
    /// @return degrees
    int getRotate() const;
    /// Back to the fitted mode, when there is a picture.
    void setautosize();
    /// Paints the picture over with grey; the next adjustment brings it back.
    void clearpaint();
    /// Sets what is painted where the picture is not.
    /// @param brush the brush, which is copied
    void setBackground(QBrush brush);
    /// Does nothing.
    /// @param path not used
    /// @param format not used
    /// @param quality not used
    void save_image(char* path, int format, unsigned int quality);
    /// @param newMode 0 fitted, 1 zoomed, 2 kept; others only repaint
    void setMode(int newMode);
    /// Sets the scale of the next picture and of every conversion from millimetres.
    /// @param maxHeight height of the paper in millimetres
    /// @param newStandard pixels per 20 mm; 0 while no scanner is bound
    void setMaxHeightAndStandrad(float maxHeight, int newStandard);

    // Selection

    /// @param a a corner
    /// @param b the corner across
    /// @return the rectangle between them
    QRect getRect(const QPoint& a, const QPoint& b) const;
    /// @param point a point of the widget
    /// @return whether it lies in the selection
    bool isPressPointInSelectRect(QPoint point) const;
    /// @param point a point of the widget
    /// @return the handle of the selection that lies there, if any
    preView::DTAG_STATUS getStrethRectState(QPoint point) const;
    /// Gives the pointer the shape of a handle.
    /// @param status the handle; NoHandle leaves the pointer as it is
    void setStretchCursorStyle(preView::DTAG_STATUS status);
    /// @return how far the selection has been dragged
    QPoint getMovePoint() const;
    /// @return the selection where it has been dragged to
    QRect getMoveRect();
    /// @return the selection as it has been stretched
    QRect getStretchRect();
    /// @return the selection; takes over a move or stretch that has ended. Without one 100 x 200
    QRect getSelectRect();
    /// Clears the selection and announces a null rectangle.
    void cancelManualRectSet();
    /// Places the selection, unless the user is dragging. Nothing is announced. A width and height
    /// of 0 are ignored.
    /// @param x left edge in millimetres
    /// @param y top edge in millimetres
    /// @param w width in millimetres
    /// @param h height in millimetres
    void setRect(double x, double y, double w, double h);
    /// Moves the selection so that its first corner comes to this point.
    /// @param x millimetres from the left
    /// @param y millimetres from the top
    void setMoveRect(double x, double y);
    /// Gives the selection this size from its first corner on.
    /// @param w width in millimetres
    /// @param h height in millimetres
    void setSelectedRect(double w, double h);

signals:
    /// @param rect the selection, null when it was cleared
    /// @param standard pixels per 20 mm
    void selected(QRect rect, int standard);

    /// @cond INTERNAL
protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

    // Protected so that tests can look at it through a subclass.
    QImage source; ///< the picture as delivered, 32 bits; null until there is one
    QImage shown;  ///< what is painted, before scaling
    QBrush background;
    double scale = 0; ///< pixels shown per pixel of the picture
    int mode = 0;     ///< 0 fitted, 1 zoomed, 2 kept
    int rotation = 0; ///< degrees
    int brightness = 0;
    int contrast = 0;
    int ripeWhite = 0;
    float maximumHeight = 0; ///< mm
    int standard = 0;        ///< pixels per 20 mm
    kestrel::Selection selection;

private:
    void pictureChanged();
    void showAdjusted(int addedBrightness, int addedContrast);
    Q_DECL_HIDDEN void remakeShown();
    void buildShown(const QImage& picture, bool resample);
    void zoomTo(double newScale);
    void setScaledSize(bool turned);
    QSize scaledSize() const;
    static QSize roundedSize(const QSize& size, double factor);
    void drawPicture(const QRect& exposed);
    void drawSelection(const QRect& exposed);
    void drawKeyboardFocus();
    void follow(const kestrel::Selection::Reaction& reaction);

    QPainter painter;
    QImage scaledPart;       ///< what is on screen of the scaled picture, kept between frames
    QRect scaledPartWindow;  ///< where it lies, in device pixels; null when out of date
    double shownRatio = 1.0; ///< the device pixel ratio that `shown` was made for
    int shownBrightness = 0; ///< the adjustments that `shown` was made with
    int shownContrast = 0;
    bool shownResampled = false; ///< `shown` has been scaled to its size on screen and back
    bool cleared = true;         ///< `shown` is one colour and not made from the picture
    bool keyboardFocus = false;  ///< the focus came by the keyboard, so its place has to be seen
    /// @endcond
};
