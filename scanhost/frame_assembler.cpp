#include "frame_assembler.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstring>

namespace kestrel {

namespace {

constexpr int maxWidth = 200'000;
constexpr std::size_t maxLineSize = std::size_t(16) << 20;
constexpr int firstHeight = 1024; ///< room made at first when the number of lines is unknown

QImage::Format formatFor(SANE_Frame frame, int depth)
{
    const bool gray = frame == SANE_FRAME_GRAY;
    switch (depth) {
    case 1:
        return gray ? QImage::Format_Mono : QImage::Format_Invalid;
    case 8:
        return gray ? QImage::Format_Grayscale8 : QImage::Format_RGB888;
    case 16:
        return gray ? QImage::Format_Grayscale16 : QImage::Format_RGBX64;
    default:
        return QImage::Format_Invalid;
    }
}

} // namespace

QString frameProblemText(FrameProblem problem)
{
    const char* text = "";
    switch (problem) {
    case FrameProblem::None:
        return {};
    case FrameProblem::ThreePass:
        text = QT_TRANSLATE_NOOP("FrameProblem",
                                 "扫描仪分三次传送红、绿、蓝三色，本程序不支持这种扫描仪");
        break;
    case FrameProblem::UnknownKind:
        text = QT_TRANSLATE_NOOP("FrameProblem", "扫描仪送来的图像种类未知");
        break;
    case FrameProblem::Depth:
        text = QT_TRANSLATE_NOOP("FrameProblem", "不支持扫描仪送来的色彩位数");
        break;
    case FrameProblem::Geometry:
        text = QT_TRANSLATE_NOOP("FrameProblem", "扫描仪给出的图像尺寸有误");
        break;
    case FrameProblem::TooLarge:
        text = QT_TRANSLATE_NOOP("FrameProblem", "图像过大，请降低分辨率或缩小扫描范围");
        break;
    }
    return QCoreApplication::translate("FrameProblem", text);
}

FrameAssembler::FrameAssembler(const SANE_Parameters& parameters)
{
    m_problem = examine(parameters);
    if (m_problem == FrameProblem::None && !makeRoom(m_announced < 0 ? firstHeight : m_announced)) {
        m_problem = FrameProblem::TooLarge;
    }
}

FrameProblem FrameAssembler::examine(const SANE_Parameters& parameters)
{
    switch (parameters.format) {
    case SANE_FRAME_GRAY:
    case SANE_FRAME_RGB:
        break;
    case SANE_FRAME_RED:
    case SANE_FRAME_GREEN:
    case SANE_FRAME_BLUE:
        return FrameProblem::ThreePass;
    default:
        return FrameProblem::UnknownKind;
    }
    m_format = formatFor(parameters.format, parameters.depth);
    if (m_format == QImage::Format_Invalid) {
        return FrameProblem::Depth;
    }
    m_width = parameters.pixels_per_line;
    m_announced = std::max(parameters.lines, -1);
    if (m_width < 1 || m_width > maxWidth || m_announced == 0 || parameters.bytes_per_line < 1) {
        return FrameProblem::Geometry;
    }
    m_wideColour = m_format == QImage::Format_RGBX64;
    const std::size_t samples = parameters.format == SANE_FRAME_RGB ? 3 : 1;
    m_pixelSize =
        (static_cast<std::size_t>(m_width) * samples * static_cast<std::size_t>(parameters.depth) +
         7) /
        8;
    m_lineSize = static_cast<std::size_t>(parameters.bytes_per_line);
    return m_lineSize < m_pixelSize || m_lineSize > maxLineSize ? FrameProblem::Geometry
                                                                : FrameProblem::None;
}

bool FrameAssembler::makeRoom(int height)
{
    const std::size_t rowSize = m_wideColour ? 8 * static_cast<std::size_t>(m_width) : m_pixelSize;
    if (static_cast<std::size_t>(height) > maxImageBytes / rowSize) {
        return false;
    }
    QImage larger(m_width, height, m_format);
    if (larger.isNull()) {
        return false;
    }
    if (m_format == QImage::Format_Mono) {
        // In SANE's bilevel frames a set bit is black.
        larger.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    }
    for (int y = 0; y < m_line; ++y) {
        std::memcpy(larger.scanLine(y), m_image.constScanLine(y), rowSize);
    }
    m_image = std::move(larger);
    return true;
}

bool FrameAssembler::putLine(const SANE_Byte* line)
{
    if (m_line == m_image.height()) {
        if (m_announced >= 0) {
            return true;
        }
        if (!makeRoom(m_line * 2)) {
            m_problem = FrameProblem::TooLarge;
            return false;
        }
    }
    uchar* row = m_image.scanLine(m_line++);
    if (!m_wideColour) {
        std::memcpy(row, line, m_pixelSize);
        return true;
    }
    for (int x = 0; x < m_width; ++x, row += 8, line += 6) {
        std::memcpy(row, line, 6);
        row[6] = row[7] = 0xff;
    }
    return true;
}

bool FrameAssembler::append(const SANE_Byte* data, std::size_t size)
{
    while (m_problem == FrameProblem::None && size > 0) {
        if (m_partial.empty() && size >= m_lineSize) {
            putLine(data);
            data += m_lineSize;
            size -= m_lineSize;
            continue;
        }
        const std::size_t part = std::min(size, m_lineSize - m_partial.size());
        m_partial.insert(m_partial.end(), data, data + part);
        data += part;
        size -= part;
        if (m_partial.size() == m_lineSize) {
            putLine(m_partial.data());
            m_partial.clear();
        }
    }
    return m_problem == FrameProblem::None;
}

int FrameAssembler::permille() const
{
    if (m_announced < 1) {
        return -1;
    }
    return static_cast<int>(1000LL * m_line / m_announced);
}

QImage FrameAssembler::finish(int dpi)
{
    QImage picture;
    if (m_problem == FrameProblem::None && m_line > 0) {
        picture =
            m_line == m_image.height() ? std::move(m_image) : m_image.copy(0, 0, m_width, m_line);
        if (dpi > 0) {
            const int dotsPerMetre = qRound(dpi / 0.0254);
            picture.setDotsPerMeterX(dotsPerMetre);
            picture.setDotsPerMeterY(dotsPerMetre);
        }
    }
    m_image = QImage();
    m_partial.clear();
    m_line = 0;
    return picture;
}

} // namespace kestrel
