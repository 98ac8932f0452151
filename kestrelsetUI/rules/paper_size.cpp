#include "rules/paper_size.h"

#include <cstddef>

namespace kestrel {

// The sizes of Legal and Letter stand the other way round than their labels: saved settings and the
// devices in the field rely on the pairing.
// clang-format off
const std::array<PaperSize, kScanAreaCount> scanarea{{
    // area              text                             short   long   needsRoom  preview
    {ScanArea::Custom,   "自定义尺寸",                        0.0,   0.0,  false, PreviewRule::CustomPortrait},
    {ScanArea::UsLegal,  "US Legal - 8.5 x 14 英寸",        215.9, 279.4,  false, PreviewRule::Untouched},
    {ScanArea::UsLetter, "US Letter - 8.5 x 11 英寸",       215.9, 355.6,  true,  PreviewRule::Untouched},
    {ScanArea::IsoA3,    "ISO A3 - 29.7 x 42.0 厘米",       297.0, 420.0,  true,  PreviewRule::A3},
    {ScanArea::IsoA4,    "ISO A4 - 21.0 x 29.7 厘米",       210.0, 297.0,  false, PreviewRule::Turnable},
    {ScanArea::IsoA5,    "ISO A5 - 14.8 x 21.0 厘米",       148.0, 210.0,  false, PreviewRule::Turnable},
    {ScanArea::IsoA6,    "ISO A6 - 10.5 x 14.8 厘米",       105.0, 148.0,  false, PreviewRule::Turnable},
    {ScanArea::JisB4,    "JIS B4 - 25.7 x 36.4 厘米",       257.0, 364.0,  true,  PreviewRule::Untouched},
    {ScanArea::JisB5,    "JIS B5 - 18.2 x 25.7 厘米",       182.0, 257.0,  false, PreviewRule::Untouched},
    {ScanArea::Maximum,  "最大扫描范围",                      0.0,   0.0,  false, PreviewRule::Maximum},
}};
// clang-format on

const PaperSize& paperSize(ScanArea area) noexcept
{
    return scanarea[static_cast<std::size_t>(area)];
}

QString scanAreaText(ScanArea area)
{
    return QString::fromUtf8(paperSize(area).text);
}

std::optional<ScanArea> scanAreaFromText(const QString& text)
{
    for (const PaperSize& size : scanarea) {
        if (text == QString::fromUtf8(size.text)) {
            return size.area;
        }
    }
    return std::nullopt;
}

bool admits(ScanArea area, double widthMaxMm, double heightMaxMm) noexcept
{
    const PaperSize& size = paperSize(area);
    return !size.needsRoom || (widthMaxMm > size.shortMm && heightMaxMm > size.longMm);
}

std::vector<ScanArea> admittedAreas(double widthMaxMm, double heightMaxMm)
{
    std::vector<ScanArea> areas;
    areas.reserve(kScanAreaCount);
    for (const PaperSize& size : scanarea) {
        if (admits(size.area, widthMaxMm, heightMaxMm)) {
            areas.push_back(size.area);
        }
    }
    return areas;
}

} // namespace kestrel
