#pragma once

#include "model.h"
#include "scansettings.h"

namespace kestrel::sim {

struct Point
{
    double x = 0;
    double y = 0;
};

/// Where a point of an image came from, when the image is what @p original looks like after a turn
/// of
/// @p degrees clockwise (0, 90, 180, 270). All in millimetres from the upper left corners.
Point beforeTurn(int degrees, const SizeMm& original, const Point& turned);

/// The size of @p original after a turn.
SizeMm afterTurn(int degrees, const SizeMm& original);

/// The point of the print on @p sheet that lies at @p onPath, when the upper left corner of the
/// unskewed sheet lies at @p corner.
Point printAt(const Sheet& sheet, const Point& corner, const Point& onPath);

/// Like printAt() for a sheet that was put straight, with @p onSheet counted from its corner.
Point printAtStraight(const Sheet& sheet, const Point& onSheet);

} // namespace kestrel::sim
