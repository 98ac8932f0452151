/// @file
/// What more than one part of the dialog takes from a control.
#pragma once

#include "rules/scan_range.h"

#include <QDoubleSpinBox>

namespace kestrel {

/// The item of the list of resolutions that holds the user's own one, behind the fixed seven.
constexpr int customResolutionItem = 7;

/// @return value and limits of @p box, in millimetres.
inline SpinMm spinMm(const QDoubleSpinBox& box)
{
    return {box.value(), box.minimum(), box.maximum()};
}

} // namespace kestrel
