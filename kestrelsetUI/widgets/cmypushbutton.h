/// @file
/// The framed panel of the settings form, and two experimental controls that stand beside it.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

/// A panel with a light-grey frame of 2 pixels on its outer edge. It paints nothing else; its
/// children draw themselves.
class Q_DECL_EXPORT MyWidget : public QWidget
{
    Q_OBJECT

public:
    /// @param parent owner; may be null.
    explicit MyWidget(QWidget* parent = nullptr);
    ~MyWidget() override;
    Q_DISABLE_COPY_MOVE(MyWidget)

    /// @cond INTERNAL
protected:
    void paintEvent(QPaintEvent* event) override;
    /// @endcond
};

/// A label that shows no text. Not placed in any form.
class Q_DECL_EXPORT MyLabel : public QLabel
{
    Q_OBJECT

public:
    /// @param parent owner; may be null.
    explicit MyLabel(QWidget* parent = nullptr);
    ~MyLabel() override;
    Q_DISABLE_COPY_MOVE(MyLabel)

    /// @cond INTERNAL
protected:
    void paintEvent(QPaintEvent* event) override;
    /// @endcond
};

/// A button drawn as one bare rectangle that only logs a press of the left mouse button: it never
/// emits clicked(). Not placed in any form.
class Q_DECL_EXPORT CMyPushButton : public QPushButton
{
    Q_OBJECT

public:
    /// @param parent owner; may be null.
    explicit CMyPushButton(QWidget* parent = nullptr);
    ~CMyPushButton() override;
    Q_DISABLE_COPY_MOVE(CMyPushButton)

    /// @cond INTERNAL
protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    /// @endcond
};
