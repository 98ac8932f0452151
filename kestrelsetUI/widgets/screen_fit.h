/// @file
/// The settings dialog on screens that are lower or narrower than it would like.
#pragma once

#include <QDialog>
#include <QObject>
#include <QScrollArea>
#include <QSize>
#include <QTabWidget>
#include <QWidget>

namespace kestrel {

/// The parts of the dialog that move when it is low.
struct ScrolledDialog
{
    QDialog& dialog;
    /// Fills the dialog; its widget holds the other two.
    QScrollArea& area;
    QTabWidget& pages;
    /// The row of OK and Cancel below the pages.
    QWidget& buttons;
};

/// Makes a dialog fit the screen whenever it is shown, and keeps its row of buttons in sight while
/// the pages scroll below it. Where the screen is large enough nothing changes.
class ScreenFit : public QObject
{
    Q_OBJECT

public:
    /// @param parts what it looks after; the dialog becomes its owner
    explicit ScreenFit(const ScrolledDialog& parts);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void adoptControls();
    bool scrollsInstead(const QObject& watched) const;
    void bringIntoSight(const QWidget& control);
    void fitScreen();
    void startAtPages();
    void arrange();

    ScrolledDialog m_parts;
    const QSize m_smallest;
    const QSize m_preferred;
    const QRect m_pages;
    const QRect m_buttons;
    const int m_rightMargin;
    // The size this class chose last, so that a larger screen gives back what a smaller one took.
    QSize m_fitted;
};

} // namespace kestrel
