#include "geometry.h"

#include <cmath>

namespace kestrel::sim {

Point beforeTurn(int degrees, const SizeMm& original, const Point& turned)
{
    switch (degrees) {
    case 90:
        return {turned.y, original.height - turned.x};
    case 180:
        return {original.width - turned.x, original.height - turned.y};
    case 270:
        return {original.width - turned.y, turned.x};
    default:
        return turned;
    }
}

SizeMm afterTurn(int degrees, const SizeMm& original)
{
    return degrees % 180 == 0 ? original : SizeMm{original.height, original.width};
}

Point printAtStraight(const Sheet& sheet, const Point& onSheet)
{
    return beforeTurn(sheet.turned, sheet.size, onSheet);
}

Point printAt(const Sheet& sheet, const Point& corner, const Point& onPath)
{
    Point onSheet{onPath.x - corner.x, onPath.y - corner.y};
    if (sheet.skew != 0) {
        const SizeMm lying = afterTurn(sheet.turned, sheet.size);
        const double angle = -sheet.skew * std::acos(-1.0) / 180;
        const double dx = onSheet.x - lying.width / 2;
        const double dy = onSheet.y - lying.height / 2;
        onSheet.x = lying.width / 2 + dx * std::cos(angle) - dy * std::sin(angle);
        onSheet.y = lying.height / 2 + dx * std::sin(angle) + dy * std::cos(angle);
    }
    return printAtStraight(sheet, onSheet);
}

} // namespace kestrel::sim
