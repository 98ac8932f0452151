/// @file
/// The program's icons, drawn with the palette's colours so that they fit light and dark desktops.
#pragma once

#include <QIcon>
#include <QPalette>

namespace kestrel {

enum class IconKind
{
    Refresh,
    Settings,
    Scan,
    Stop,
    Save,
    Remove
};

/// @return the icon in all the sizes and states a tool bar asks for
QIcon makeIcon(IconKind kind, const QPalette& palette);

/// @return the icon of the program
QIcon applicationIcon();

} // namespace kestrel
