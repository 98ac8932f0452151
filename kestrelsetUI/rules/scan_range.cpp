#include "rules/scan_range.h"

#include <QString>

#include <algorithm>

namespace kestrel {

namespace {

/// Writes S x L upright, or L x S across.
void writeExtent(RangeWrites& writes, const PaperSize& size, bool across)
{
    writes.push_back({RangeField::Width, across ? size.longMm : size.shortMm});
    writes.push_back({RangeField::Height, across ? size.shortMm : size.longMm});
}

/// Writes a paper's size for the checked orientation. Returns the width as the box then holds it.
SpinMm writePaper(RangeWrites& writes, const ScanRange& range, const PaperSize& size)
{
    if (range.orientation == Orientation::None) {
        return range.width;
    }
    bool across = range.orientation == Orientation::Landscape;
    if (across && range.width.maximum < size.longMm) {
        across = false;
        writes.push_back({RangeField::CheckPortrait, 1.0});
        writes.push_back({RangeField::PortraitFlag, 1.0});
        writes.push_back({RangeField::LandscapeEnabled, 0.0});
    }
    writeExtent(writes, size, across);
    return range.width.set(across ? size.longMm : size.shortMm);
}

/// The maximum leaves the orientation flag alone and nothing to centre.
RangeWrites writeMaximum(const ScanRange& range)
{
    return {{RangeField::CheckPortrait, 1.0},
            {RangeField::LandscapeEnabled, 0.0},
            {RangeField::Left, 0.0},
            {RangeField::Top, 0.0},
            {RangeField::Width, range.width.maximum},
            {RangeField::Height, range.height.maximum}};
}

/// A preview area of this extent, centred across, as the boxes hold it.
AreaMm previewArea(const PreviewRange& range, double width, double height, double y)
{
    const SpinMm w = range.width.set(width);
    return {range.x.stored(centred(w)), range.y.stored(y), w.value, range.height.stored(height)};
}

} // namespace

double SpinMm::stored(double v) const
{
    // The spin box rounds through the decimal text; any other way of rounding differs at the
    // halves.
    const double rounded = QString::number(v, 'f', 1).toDouble();
    return std::max(minimum, std::min(rounded, maximum));
}

std::optional<double> offsetLimit(double v, const SpinMm& extent) noexcept
{
    return extentLimit(v, extent.maximum, extent.value);
}

std::optional<double> extentLimit(double v, double maximum, double offset) noexcept
{
    const double limit = maximum - offset;
    return v >= limit ? std::optional<double>(limit) : std::nullopt;
}

RangeWrites paperChosen(const ScanRange& range, std::optional<ScanArea> area)
{
    if (area == ScanArea::Maximum) {
        return writeMaximum(range);
    }
    RangeWrites writes;
    SpinMm width = range.width;
    if (area && *area != ScanArea::Custom) {
        width = writePaper(writes, range, paperSize(*area));
    }
    writes.push_back({RangeField::Left, centred(width)});
    return writes;
}

RangeWrites orientationClicked(const ScanRange& range, int id)
{
    if (id == (range.portrait ? 1 : 0)) {
        return {};
    }
    const bool portrait = id != 0;
    const SpinMm width = range.width.set(range.height.value);
    const SpinMm height = range.height.set(range.width.value);
    RangeWrites writes{{RangeField::PortraitFlag, portrait ? 1.0 : 0.0},
                       {RangeField::Width, range.height.value},
                       {RangeField::Height, range.width.value},
                       {RangeField::Left, centred(width)}};
    if (range.top.value > height.room()) {
        writes.push_back({RangeField::Top, 0.0});
    }
    return writes;
}

RangeWrites centreAlignmentToggled(const ScanRange& range, bool on)
{
    return {{RangeField::Left, centred(range.width)}, {RangeField::LeftEnabled, on ? 0.0 : 1.0}};
}

RangeWrites leftEdited(const ScanRange& range, double v)
{
    if (const auto limit = offsetLimit(v, range.width)) {
        return {{RangeField::Left, *limit}};
    }
    return {};
}

RangeWrites topEdited(const ScanRange& range, double v)
{
    RangeWrites writes;
    if (const auto limit = offsetLimit(v, range.height)) {
        writes.push_back({RangeField::Top, *limit});
    }
    // From v as it was typed, even if it has just been moved.
    writes.push_back({RangeField::LengthDetectionMaximum, range.height.room() - v});
    return writes;
}

RangeWrites widthEdited(const ScanRange& range, double v, bool guarded)
{
    if (guarded) {
        return {};
    }
    if (!range.centreAlignment) {
        if (const auto limit = extentLimit(v, range.width.maximum, range.left.value)) {
            return {{RangeField::Width, *limit}};
        }
        return {};
    }
    RangeWrites writes;
    if (!range.customSize) {
        writes.push_back({RangeField::SelectCustom, 1.0});
    }
    writes.push_back({RangeField::Left, centred(range.width)});
    return writes;
}

RangeWrites heightEdited(const ScanRange& range, double v, bool guarded)
{
    RangeWrites writes;
    writes.push_back(
        {RangeField::LengthDetectionMaximum, (range.height.maximum - range.top.value) - v});
    const bool fitsAcross = v <= range.width.maximum;
    if (!fitsAcross) {
        writes.push_back({RangeField::UncheckLandscape, 1.0});
    }
    writes.push_back({RangeField::LandscapeEnabled, fitsAcross ? 1.0 : 0.0});
    if (guarded) {
        return writes;
    }
    if (const auto limit = extentLimit(v, range.height.maximum, range.top.value)) {
        writes.push_back({RangeField::Height, *limit});
    }
    if (!range.customSize) {
        writes.push_back({RangeField::SelectCustom, 1.0});
    }
    return writes;
}

PreviewChoice previewSizeChosen(const PreviewRange& range, std::optional<ScanArea> area)
{
    PreviewChoice choice;
    if (!area) {
        return choice;
    }
    const PaperSize& size = paperSize(*area);
    switch (size.preview) {
    case PreviewRule::Untouched:
        break;
    case PreviewRule::CustomPortrait:
        choice.checkPortrait = true;
        choice.landscapeEnabled = false;
        break;
    case PreviewRule::A3:
        if (range.width.maximum < size.longMm) {
            choice.checkPortrait = true;
            choice.landscapeEnabled = false;
        }
        choice.area = previewArea(range, size.shortMm, size.longMm, 0.0);
        break;
    case PreviewRule::Turnable: {
        const bool fits = range.width.maximum >= size.longMm;
        const bool across = fits && range.landscapeChecked;
        choice.landscapeEnabled = fits;
        choice.area = previewArea(range, across ? size.longMm : size.shortMm,
                                  across ? size.shortMm : size.longMm, 0.0);
        break;
    }
    case PreviewRule::Maximum:
        choice.checkPortrait = true;
        choice.landscapeEnabled = false;
        choice.area = previewArea(range, range.width.maximum, range.height.maximum, 0.0);
        break;
    }
    return choice;
}

AreaMm previewOrientationClicked(const PreviewRange& range)
{
    const SpinMm height = range.height.set(range.width.value);
    const double y = range.y.value > height.room() ? 0.0 : range.y.value;
    return previewArea(range, range.height.value, range.width.value, y);
}

} // namespace kestrel
