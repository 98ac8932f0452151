/// @file
/// The preview tab of a bound dialog, with the button that hosts have to bring to light, and frames
/// for the scanner behind it.
#pragma once

#include "dialog_fixture.h"
#include "widgets/preview_box.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDoubleSpinBox>
#include <QImage>
#include <QMouseEvent>
#include <QRect>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace kestrel::test {

/// What pixel (@p x, @p y) of the frames below is.
inline QRgb colourAt(int x, int y)
{
    return qRgb((40 + 5 * x) % 256, (90 + 7 * y) % 256, (200 + 3 * x + 11 * y) % 256);
}

/// A frame without bytes.
inline FakeFrame emptyFrame(SANE_Frame format, int depth, int width, int lines, int bytesPerLine)
{
    FakeFrame frame;
    frame.parameters = {format, SANE_TRUE, bytesPerLine, width, lines, depth};
    return frame;
}

/// A colour frame of the pixels above.
/// @param padding bytes of 0xee behind each row
inline FakeFrame colourFrame(int width, int height, int padding = 0)
{
    FakeFrame frame = emptyFrame(SANE_FRAME_RGB, 8, width, height, 3 * width + padding);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const QRgb colour = colourAt(x, y);
            for (const int part : {qRed(colour), qGreen(colour), qBlue(colour)}) {
                frame.bytes.push_back(static_cast<SANE_Byte>(part));
            }
        }
        frame.bytes.insert(frame.bytes.end(), static_cast<std::size_t>(padding), 0xee);
    }
    return frame;
}

class PreviewTest : public DialogTest
{
protected:
    void TearDown() override { destroy(); } // before the scanner

    /// Binds to @p made and opens the tab. With the scanner of this default, whose flatbed takes
    /// 297 mm, the preview has 35 pixels to 20 mm.
    void start(FakeScanner made = fullScanner())
    {
        scanner = std::move(made);
        bind(scanner);
        show();
        openTab();
        scanner.clearJournal();
    }

    void openTab()
    {
        reveal(box());
        widget("preview").show();
        settle();
    }

    /// Puts @p frame on the scanner and clicks the preview button.
    void scan(const FakeFrame& frame)
    {
        scanner.addFrame(frame);
        press(button("preview"));
    }

    PreviewBoxUI& box() const { return child<PreviewBoxUI>(dialogOf(), "preview_box"); }
    /// @return the picture in the box
    const QImage& picture() const { return box().*(&Box::source); }
    int standard() const { return box().*(&Box::standard); }
    /// @return the selection in the box, with nothing that has been let go taken over
    QRect selected() const
    {
        Selection copy = box().*(&Box::selection);
        return copy.selectRect();
    }
    SelectionState state() const { return (box().*(&Box::selection)).state(); }

    void mouse(QEvent::Type type, const QPoint& at, Qt::MouseButton button = Qt::LeftButton)
    {
        const bool moves = type == QEvent::MouseMove;
        const bool down = moves || type == QEvent::MouseButtonPress;
        QMouseEvent event(type, at, moves ? Qt::NoButton : button, down ? button : Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&box(), &event);
    }
    void drag(const QPoint& from, const QPoint& to)
    {
        mouse(QEvent::MouseButtonPress, from);
        mouse(QEvent::MouseMove, to);
        mouse(QEvent::MouseButtonRelease, to);
    }

    void expectOffsets(double x, double y, double w, double h) const
    {
        EXPECT_DOUBLE_EQ(real("offset_x").value(), x);
        EXPECT_DOUBLE_EQ(real("offset_y").value(), y);
        EXPECT_DOUBLE_EQ(real("offset_w").value(), w);
        EXPECT_DOUBLE_EQ(real("offset_h").value(), h);
    }

    /// Expects the scanner's pixels of @p width x @p rows, the last row of the picture left out.
    void expectColours(int width, int height, int rows) const
    {
        ASSERT_EQ(picture().size(), QSize(width, height));
        for (int y = 0; y < rows; ++y) {
            for (int x = 0; x < width; ++x) {
                ASSERT_EQ(picture().pixel(x, y) & RGB_MASK, colourAt(x, y) & RGB_MASK)
                    << x << ", " << y;
            }
        }
    }

    /// @return what was called during the preview: s for sets in a row, then S P R C for start,
    ///         parameters, read and cancel
    std::string calls() const
    {
        std::string letters;
        const Journal journal = scanner.journal();
        for (const Call& call : journal.calls()) {
            switch (call.kind) {
            case CallKind::Set:
                if (letters.empty() || letters.back() != 's') {
                    letters += 's';
                }
                break;
            case CallKind::Start:
                letters += 'S';
                break;
            case CallKind::Parameters:
                letters += 'P';
                break;
            case CallKind::Read:
                letters += 'R';
                break;
            case CallKind::Cancel:
                letters += 'C';
                break;
            default:
                break;
            }
        }
        return letters;
    }

    /// Expects the dialog to be as usable as before a preview.
    void expectReady() const
    {
        EXPECT_TRUE(button("preview").isEnabled());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }

    FakeScanner scanner;

private:
    const QObject& dialogOf() const { return const_cast<PreviewTest*>(this)->dialog(); }
};

} // namespace kestrel::test
