/// @file
/// The millimetre ruler around the preview.
#pragma once

#include <QImage>
#include <QWidget>

/// Draws a ruler along its top and left edge, scaled so that the longest page fits, and says how
/// many pixels 20 mm are on it.
class Q_DECL_EXPORT PreViewUI : public QWidget
{
    Q_OBJECT

public:
    /// @param parent owner; may be null.
    explicit PreViewUI(QWidget* parent = nullptr);
    ~PreViewUI() override;
    Q_DISABLE_COPY_MOVE(PreViewUI)

    /// Sets the length the ruler is made for and shows it.
    /// @param mm millimetres; a length that is not above 0 or is beyond 10000 gives a standard of 0
    void setMaxHeight(float mm);
    /// @return pixels per 20 mm, a multiple of 5; 0 before the first setMaxHeight()
    int getStandard() const;
    /// Draws the ruler into the canvas. A standard of 0 has no ticks.
    void Paint();

    /// @cond INTERNAL
protected:
    void paintEvent(QPaintEvent* event) override;

    // Protected so that tests can look at it through a subclass.
    QImage canvas; ///< 400 x 600 at the device pixel ratio of the widget
    float maximumHeight = 0;
    int standard = 0;
    bool ready = false; ///< nothing is painted before the first length
    /// @endcond
};
