#include "message_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace kestrel {

MessageBar::MessageBar(QWidget* parent) : QFrame(parent), m_label(new QLabel(this))
{
    setObjectName(QStringLiteral("message_bar"));
    setStyleSheet(
        QStringLiteral("#message_bar { background: #fff1d6; border-bottom: 1px solid #e0b050; }"
                       "#message_bar QLabel, #message_bar QToolButton { color: #5a3a00; }"));
    m_label->setObjectName(QStringLiteral("message"));
    m_label->setWordWrap(true);
    m_label->setTextFormat(Qt::PlainText);
    auto* close = new QToolButton(this);
    close->setText(QStringLiteral("×"));
    close->setAccessibleName(tr("关闭消息"));
    close->setAutoRaise(true);
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(12, 6, 6, 6);
    row->addWidget(m_label, 1);
    row->addWidget(close);
    hide();
}

void MessageBar::showMessage(const QString& text)
{
    m_label->setText(text);
    setVisible(!text.isEmpty());
}

QString MessageBar::text() const
{
    return isHidden() ? QString() : m_label->text();
}

} // namespace kestrel
