/// @file
/// The scan area in millimetres: what a paper size, an orientation or an edit makes of it.
///
/// Each rule takes the controls' values and gives the writes to make, in order. The caller makes
/// them all, one after the other, with signals on: the writes' own handlers run in between as they
/// would for a user, and none of them changes what a later write of the same list depends on. Where
/// a rule says so, the caller holds the update guard meanwhile.
#pragma once

#include "rules/paper_size.h"

#include <optional>
#include <vector>

namespace kestrel {

/// A millimetre spin box: value and limits.
struct SpinMm
{
    double value = 0.0;
    double minimum = 0.0;
    double maximum = 0.0;

    /// What the box holds after `setValue(v)`: one decimal, within the limits.
    double stored(double v) const;
    /// A copy that has been set to v.
    SpinMm set(double v) const { return {stored(v), minimum, maximum}; }
    /// What is left beside the value: maximum - value.
    double room() const noexcept { return maximum - value; }
};

/// The offset that centres an extent across the scanner.
inline double centred(const SpinMm& extent) noexcept
{
    return extent.room() * 0.5;
}
/// Where an offset that was set to v has to go back to; nothing while it leaves room for the
/// extent. At the limit itself it is the limit.
std::optional<double> offsetLimit(double v, const SpinMm& extent) noexcept;
/// Where an extent that was set to v has to go back to; nothing while it ends before the maximum.
std::optional<double> extentLimit(double v, double maximum, double offset) noexcept;

/// Which of the two orientation buttons is checked.
enum class Orientation
{
    None,
    Landscape,
    Portrait
};

/// The paper tab's area. Width and height are extents; their maxima are the scanner's.
struct ScanRange
{
    SpinMm left;             ///< `tl_x`
    SpinMm top;              ///< `tl_y`
    SpinMm width;            ///< `br_x`
    SpinMm height;           ///< `br_y`
    Orientation orientation; ///< the checked button
    bool portrait;           ///< the dialog's orientation flag
    bool centreAlignment;    ///< `center_alignment` is checked
    bool customSize;         ///< `scanrange_setting` is at index 0
};

enum class RangeField
{
    Left,
    Top,
    Width,
    Height,
    PortraitFlag,     ///< the dialog's orientation flag := value != 0
    CheckPortrait,    ///< `vertical_range`.setChecked(true)
    UncheckLandscape, ///< `horizontal_range`.setChecked(false); a checked one stays so, its group
                      ///< is exclusive
    LandscapeEnabled, ///< `horizontal_range`.setEnabled(value != 0)
    LeftEnabled,      ///< `tl_x` and `tl_x_label` .setEnabled(value != 0)
    SelectCustom,     ///< `scanrange_setting`.setCurrentIndex(0)
    LengthDetectionMaximum, ///< `length_detection_value`.setRange(lengthDetectionMinimum(value),
                            ///< value)
};

/// One write to a control.
struct RangeWrite
{
    RangeField field;
    double value = 0.0; ///< millimetres, or 1 / 0 for a switch

    friend bool operator==(const RangeWrite& a, const RangeWrite& b) noexcept
    {
        return a.field == b.field && a.value == b.value;
    }
};
using RangeWrites = std::vector<RangeWrite>;

/// The lower limit that goes with an upper one. The upper one may be negative for a moment; the
/// lower limit follows it there and comes back to 0.
constexpr double lengthDetectionMinimum(double maximum) noexcept
{
    return maximum < 0.0 ? maximum : 0.0;
}

/// A paper size was chosen (under the guard). Nothing: a text that is no entry, treated as custom.
RangeWrites paperChosen(const ScanRange& range, std::optional<ScanArea> area);
/// An orientation button was clicked (under the guard). id: 0 landscape, anything else portrait.
RangeWrites orientationClicked(const ScanRange& range, int id);
/// Centre alignment was switched.
RangeWrites centreAlignmentToggled(const ScanRange& range, bool on);
/// The left offset was set to v.
RangeWrites leftEdited(const ScanRange& range, double v);
/// The top offset was set to v.
RangeWrites topEdited(const ScanRange& range, double v);
/// The width was set to v; nothing to do while the guard is set. Only under centre alignment does a
/// width typed by hand make the paper size custom.
RangeWrites widthEdited(const ScanRange& range, double v, bool guarded);
/// The height was set to v; under the guard only the limits that follow from it are written.
RangeWrites heightEdited(const ScanRange& range, double v, bool guarded);

/// The preview tab's area.
struct PreviewRange
{
    SpinMm x;              ///< `offset_x`
    SpinMm y;              ///< `offset_y`
    SpinMm width;          ///< `offset_w`
    SpinMm height;         ///< `offset_h`
    bool landscapeChecked; ///< `horizontal_range_preview`
};

/// A rectangle in millimetres.
struct AreaMm
{
    double x;
    double y;
    double width;
    double height;
    friend bool operator==(const AreaMm& a, const AreaMm& b) noexcept
    {
        return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
    }
};

/// What a preview size asks for, in the order of the members (all under the guard).
struct PreviewChoice
{
    bool checkPortrait = false;           ///< check `vertical_range_preview`
    std::optional<bool> landscapeEnabled; ///< `horizontal_range_preview`.setEnabled
    std::optional<AreaMm> area;           ///< write width, height, x, y, then PreviewBoxUI::setRect
};

/// A preview size was chosen. The area holds what the boxes hold after the writes.
PreviewChoice previewSizeChosen(const PreviewRange& range, std::optional<ScanArea> area);
/// An orientation button of the preview was clicked; a click on the checked one turns the area
/// again. Write width, height, x, y, then PreviewBoxUI::setRect.
AreaMm previewOrientationClicked(const PreviewRange& range);

} // namespace kestrel
