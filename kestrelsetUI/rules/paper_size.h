/// @file
/// The table of paper sizes: one row an entry of the paper lists.
#pragma once

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace kestrel {

/// Rows of the paper table, in the order of the lists.
enum class ScanArea : int
{
    Custom = 0,
    UsLegal = 1,
    UsLetter = 2,
    IsoA3 = 3,
    IsoA4 = 4,
    IsoA5 = 5,
    IsoA6 = 6,
    JisB4 = 7,
    JisB5 = 8,
    Maximum = 9,
};
constexpr int kScanAreaCount = 10;

/// What choosing an entry does to the preview's area.
enum class PreviewRule
{
    Untouched,      ///< nothing
    CustomPortrait, ///< only the buttons: portrait, landscape disabled
    A3,             ///< always upright; the buttons follow only where A3 can't lie across
    Turnable,       ///< upright or across; landscape enabled where the long side fits
    Maximum,        ///< the whole bed, portrait, landscape disabled
};

/// One row. Lengths in millimetres; 0 where the entry has no size of its own.
struct PaperSize
{
    ScanArea area;
    const char* text; ///< item text, UTF-8
    double shortMm;
    double longMm;
    bool needsRoom; ///< listed only by scanners whose area is larger than the paper, both ways
    PreviewRule preview;
};

/// The table, by `ScanArea`.
extern const std::array<PaperSize, kScanAreaCount> scanarea;

/// The row of an entry.
const PaperSize& paperSize(ScanArea area) noexcept;
/// The item text of an entry.
QString scanAreaText(ScanArea area);
/// The entry with exactly this item text, or nothing.
std::optional<ScanArea> scanAreaFromText(const QString& text);

/// Whether a scanner's paper lists hold an entry.
/// @param widthMaxMm,heightMaxMm the scanner's largest area
bool admits(ScanArea area, double widthMaxMm, double heightMaxMm) noexcept;
/// The entries of a scanner's paper lists, in order.
std::vector<ScanArea> admittedAreas(double widthMaxMm, double heightMaxMm);

} // namespace kestrel
