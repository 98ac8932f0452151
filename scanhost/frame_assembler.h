/// @file
/// From the bytes of a SANE frame to a picture.
#pragma once

#include <QImage>
#include <QString>

#include <sane/sane.h>

#include <cstddef>
#include <vector>

namespace kestrel {

/// Why a frame cannot be turned into a picture.
enum class FrameProblem
{
    None,
    ThreePass,   ///< red, green and blue come as frames of their own
    UnknownKind, ///< a frame format that SANE does not define
    Depth,       ///< bits per sample other than 1 (gray only), 8, 16
    Geometry,    ///< sizes that contradict each other
    TooLarge     ///< more pixels than maxImageBytes allows
};

/// @return what to tell the user about @p problem; empty for FrameProblem::None
QString frameProblemText(FrameProblem problem);

/// Collects the bytes of one frame, in pieces of any length, and gives the picture.
///
/// Gray with 1, 8 or 16 bits and RGB with 8 or 16 bits a sample; lines may be longer than their
/// pixels need, and their number may be unknown (-1) until the frame ends. Needs no application and
/// no scanner; one thread at a time.
class FrameAssembler
{
public:
    /// The largest picture that is accepted, in bytes.
    static constexpr std::size_t maxImageBytes = std::size_t(1) << 30;

    /// @param parameters what the scanner said about the frame; nothing of it is trusted
    explicit FrameAssembler(const SANE_Parameters& parameters);

    /// @return FrameProblem::None as long as the frame can be taken
    FrameProblem problem() const { return m_problem; }

    /// Takes the next bytes; what lies beyond the announced lines is dropped.
    /// @return false when the frame cannot be taken, problem() says why
    bool append(const SANE_Byte* data, std::size_t size);

    /// @return how much has come, 0 to 1000, or -1 when the number of lines is unknown
    int permille() const;

    /// @return the whole lines that have come
    int lines() const { return m_line; }

    /// Ends the frame; the assembler is empty afterwards.
    /// @param dpi resolution written into the picture, in dots per inch; 0 leaves it out
    /// @return the picture, cut to the lines that really came; null when there was none
    QImage finish(int dpi);

private:
    FrameProblem examine(const SANE_Parameters& parameters);
    bool makeRoom(int height);
    bool putLine(const SANE_Byte* line);

    FrameProblem m_problem = FrameProblem::None;
    QImage::Format m_format = QImage::Format_Invalid;
    bool m_wideColour = false;
    int m_width = 0;
    int m_announced = -1;        ///< lines, -1 unknown
    std::size_t m_lineSize = 0;  ///< bytes from the scanner
    std::size_t m_pixelSize = 0; ///< of these, the bytes that hold pixels
    std::vector<SANE_Byte> m_partial;
    QImage m_image;
    int m_line = 0;
};

} // namespace kestrel
