#pragma once

#include <memory>
#include <vector>

#include "geometry.h"
#include "printing.h"
#include "scansettings.h"

namespace kestrel::sim {

/// From pixels of the image to pixels of a drawn side: x = x0 + u * xPerU + v * xPerV, y likewise.
struct PixelMap
{
    double x0 = 0, xPerU = 0, xPerV = 0;
    double y0 = 0, yPerU = 0, yPerV = 0;
};

/// A drawn side and where it lies in the image.
struct Layer
{
    std::shared_ptr<const PrintedSide> print;
    PixelMap map;
};

/// One image to be delivered.
struct ImagePlan
{
    Kind kind = Kind::Color;
    Side side = Side::Front;
    int sheet = 0; ///< number of the sheet, from 1
    int width = 0; ///< in pixels
    int height = 0;
    std::vector<Layer> layers;
    std::shared_ptr<const ScanSettings> settings;
};

/// The images that one sheet from the feeder gives, in the order of delivery: the front's, then the
/// back's. There are none when all of it is blank and blank pages are removed.
std::vector<ImagePlan> planSheet(const std::shared_ptr<const ScanSettings>& settings,
                                 const Sheet& sheet, int number);

/// The images that one pass over the glass gives.
std::vector<ImagePlan> planGlass(const std::shared_ptr<const ScanSettings>& settings,
                                 const std::vector<Sheet>& glass);

/// Kind and size of the first image as they are expected before a scan, without drawing anything.
ImagePlan expectedImage(const ScanSettings& settings, const Sheet& likely);

} // namespace kestrel::sim
