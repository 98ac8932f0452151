#include "widgets/cmypushbutton.h"

#include <QDebug>
#include <QMouseEvent>
#include <QPainter>

MyWidget::MyWidget(QWidget* parent) : QWidget(parent) {}

MyWidget::~MyWidget() = default;

void MyWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(216, 216, 216), 2));
    painter.drawRect(0, 0, width() - 1, height() - 1);
}

MyLabel::MyLabel(QWidget* parent) : QLabel(parent) {}

MyLabel::~MyLabel() = default;

void MyLabel::paintEvent(QPaintEvent* /*event*/)
{
    // Without a draw call the background brush never reaches the screen: the label stays empty.
    QPainter painter(this);
    painter.setBackground(QBrush(QColor(0, 216, 216)));
}

CMyPushButton::CMyPushButton(QWidget* parent) : QPushButton(parent) {}

CMyPushButton::~CMyPushButton() = default;

void CMyPushButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(30, 30);
    painter.drawRect(0, 0, 99, 99);
}

void CMyPushButton::mousePressEvent(QMouseEvent* event)
{
    // Kept from QPushButton on purpose: a press that reached it would end in clicked().
    if (event->button() == Qt::LeftButton) {
        qDebug() << "leftbutton clicked";
    }
}
