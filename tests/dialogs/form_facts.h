/// @file
/// What a form promises about its widgets.
#pragma once

#include "support/user.h"

#include <QApplication>
#include <QFont>
#include <QFontInfo>
#include <QLabel>
#include <QPushButton>
#include <QVariant>
#include <QWidget>

#include <gtest/gtest.h>

namespace kestrel::test {

struct WidgetFacts
{
    const char* name;
    const char* type;
    const char* text; ///< nullptr: has none
    QRect geometry;
};

inline QString textOf(const QWidget& widget)
{
    return widget.property("text").toString();
}

/// Checks name, class, text and place, and that the text has room.
inline void expectWidget(const QWidget& form, const WidgetFacts& facts)
{
    const QWidget& widget = child<QWidget>(form, facts.name);
    EXPECT_STREQ(widget.metaObject()->className(), facts.type) << facts.name;
    EXPECT_EQ(widget.geometry(), facts.geometry) << facts.name;
    if (facts.text != nullptr) {
        EXPECT_EQ(textOf(widget), QString::fromUtf8(facts.text)) << facts.name;
        EXPECT_LE(widget.fontMetrics().horizontalAdvance(textOf(widget)), widget.width())
            << facts.name;
    }
}

/// Lets the host choose another font for as long as it lives.
class HostFont
{
public:
    explicit HostFont(int pixels) : before(QApplication::font())
    {
        QFont font = before;
        font.setPixelSize(pixels);
        QApplication::setFont(font);
    }
    ~HostFont() { QApplication::setFont(before); }
    Q_DISABLE_COPY_MOVE(HostFont)

private:
    const QFont before;
};

/// Checks that the label's text has room in its width, and keeps a readable size.
inline void expectReadable(const QLabel& label)
{
    EXPECT_LE(label.fontMetrics().horizontalAdvance(label.text()), label.width());
    EXPECT_GE(QFontInfo(label.font()).pixelSize(), 9);
}

inline void expectFixedSize(const QWidget& form, QSize size)
{
    EXPECT_EQ(form.size(), size);
    EXPECT_EQ(form.minimumSize(), size);
    EXPECT_EQ(form.maximumSize(), size);
}

} // namespace kestrel::test
