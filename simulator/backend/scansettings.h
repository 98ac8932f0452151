#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "model.h"
#include "optionset.h"
#include "printing.h"

namespace kestrel::sim {

enum class Kind
{
    Lineart,
    Gray,
    Color
};
enum class Binarization
{
    Dynamic,
    Fixed,
    Diffusion
};
enum class Dropout
{
    None,
    Red,
    Green,
    Blue
};
enum class Background
{
    None,
    Smooth,
    SmoothMoire,
    RemoveToWhite,
    RemoveToPaper
};
enum class Split
{
    None,
    Horizontal,
    Vertical
};

using Levels = std::array<std::uint8_t, 256>;

/// Automatic colour detection of one side.
struct ColorDetection
{
    bool on = false;
    double leastPercent = 0; ///< so much of the side is coloured when it is a colour side
    bool ignoresPaper = false;
    Kind otherwise = Kind::Lineart;
};

/// A rectangle of the paper path, in millimetres.
struct RectMm
{
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

/// Everything the options ask of a scan, taken when it starts.
struct ScanSettings
{
    // Paper.
    std::vector<Side> sides;
    std::vector<Kind> kinds;                 ///< images of each side, in the order of delivery
    std::array<ColorDetection, 2> detection; ///< by Side
    RectMm area;
    SizeMm path; ///< the widest and longest that this source can take
    double cropTop = 0, cropBottom = 0, cropLeft = 0, cropRight = 0;
    double blankThreshold = 0;
    int dpi = 200;
    int rotation = 0;
    Split split = Split::None;

    // Picture.
    double fringeMm = 0;
    std::array<Levels, 3> colorLevels; ///< red, green, blue
    Levels grayLevels{};
    Binarization binarization = Binarization::Dynamic;
    int threshold = 128;
    Dropout dropout = Dropout::None;
    Background background = Background::None;
    int backgroundSpan = 0; ///< how far from the paper's tone still counts as background
    Rgb backing = 0;
    Cleaning cleaning;

    // Switches.
    bool flatbed = false;
    bool crops = false;
    bool cropsEach = false;
    bool orients = false;
    bool turnsBack = false;
    bool dropsBlank = false;
    bool invert = false;
    bool dropsFromColor = false;
    bool grayForColor = false;
};

/// Reads the options. @p feederHasPaper decides where the automatic source takes its paper from.
ScanSettings readSettings(const OptionSet& options, const DeviceModel& model, bool feederHasPaper);

} // namespace kestrel::sim
