/// @file
/// A preview box that can be looked into, and the mouse and keyboard in front of it.
#pragma once

#include "widgets/picturebox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <utility>
#include <vector>

namespace kestrel::test {

class Box : public PreviewBoxUI
{
public:
    using PreviewBoxUI::background;
    using PreviewBoxUI::brightness;
    using PreviewBoxUI::contrast;
    using PreviewBoxUI::maximumHeight;
    using PreviewBoxUI::mode;
    using PreviewBoxUI::ripeWhite;
    using PreviewBoxUI::scale;
    using PreviewBoxUI::selection;
    using PreviewBoxUI::shown;
    using PreviewBoxUI::source;
    using PreviewBoxUI::standard;

    explicit Box(QWidget* parent = nullptr) : PreviewBoxUI(parent)
    {
        resize(371, 561);
        connect(this, &PreviewBoxUI::selected, this,
                [this](const QRect& rect, int pixels) { announced.emplace_back(rect, pixels); });
    }

    /// Shows a picture of one colour.
    /// @param height millimetres it stands for, at @p pixels per 20 mm
    void load(const QSize& size, QColor colour = Qt::white, float height = 200, int pixels = 30)
    {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(colour);
        setMaxHeightAndStandrad(height, pixels);
        setImage(picture);
    }

    void press(const QPointF& at, Qt::MouseButton button = Qt::LeftButton)
    {
        m_held |= button;
        send(QEvent::MouseButtonPress, at, button);
    }
    void move(const QPointF& at) { send(QEvent::MouseMove, at, Qt::NoButton); }
    void release(const QPointF& at, Qt::MouseButton button = Qt::LeftButton)
    {
        m_held &= ~Qt::MouseButtons(button);
        send(QEvent::MouseButtonRelease, at, button);
    }
    void drag(const QPointF& from, const QPointF& to)
    {
        press(from);
        move(to);
        release(to);
    }

    /// @return whether the box took the key and did not leave it to its parent
    bool key(int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QKeyEvent event(QEvent::KeyPress, code, modifiers);
        QApplication::sendEvent(this, &event);
        return event.isAccepted();
    }

    Qt::MouseButtons held() const { return m_held; }

    std::vector<std::pair<QRect, int>> announced; ///< by selected()

private:
    void send(QEvent::Type type, const QPointF& at, Qt::MouseButton button)
    {
        QMouseEvent event(type, at, button, m_held, Qt::NoModifier);
        QApplication::sendEvent(this, &event);
    }

    Qt::MouseButtons m_held;
};

} // namespace kestrel::test
