#pragma once

#include "canvas.h"
#include "model.h"

namespace kestrel::sim {

enum class Side
{
    Front,
    Back
};

/// What is left out of a side because the scanner removes it.
struct Cleaning
{
    bool punchHoles = false; ///< fill the punch holes
    bool bookFold = false;   ///< lighten the fold of a book
    int largestSpeck = 0;    ///< remove specks of up to so many dots ...
    int speckRadius = 0;     ///< ... and at most twice this wide
    Rgb backing = 0;         ///< what shows through the holes
};

/// One side of a sheet, drawn, with what the scanner would find out about it.
struct PrintedSide
{
    Canvas canvas;
    Rgb paper = 0;
    double inkPercent = 0;        ///< of the area
    double colorPercent = 0;      ///< of the area, in a colour
    double printColorPercent = 0; ///< like it, without paper that is itself tinted
};

/// Draws side @p side of @p sheet. @p number and the side stand on it in large print, unless it is
/// blank.
PrintedSide printSide(const Sheet& sheet, Side side, int number, const Cleaning& cleaning);

} // namespace kestrel::sim
