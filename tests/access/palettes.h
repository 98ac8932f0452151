/// @file
/// The colours that a user's desktop may have.
#pragma once

#include <QApplication>
#include <QColor>
#include <QPalette>

namespace kestrel::test {

inline QPalette darkPalette()
{
    QPalette dark(QColor(49, 54, 59), QColor(40, 44, 48));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        dark.setColor(role, QColor(239, 240, 241));
        dark.setColor(QPalette::Disabled, role, QColor(120, 124, 128));
    }
    dark.setColor(QPalette::Base, QColor(35, 38, 41));
    dark.setColor(QPalette::AlternateBase, QColor(49, 54, 59));
    dark.setColor(QPalette::ToolTipBase, QColor(49, 54, 59));
    dark.setColor(QPalette::Highlight, QColor(29, 99, 140));
    dark.setColor(QPalette::HighlightedText, QColor(239, 240, 241));
    return dark;
}

/// The palette of the application while it lives.
class PaletteInForce
{
public:
    explicit PaletteInForce(const QPalette& palette) : m_before(QApplication::palette())
    {
        QApplication::setPalette(palette);
    }
    ~PaletteInForce() { QApplication::setPalette(m_before); }
    Q_DISABLE_COPY_MOVE(PaletteInForce)

private:
    QPalette m_before;
};

} // namespace kestrel::test
