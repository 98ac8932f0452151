#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <sane/sane.h>

namespace kestrel::sim {

/// A width and a height, in millimetres.
struct SizeMm
{
    double width = 0;
    double height = 0;
};

/// What is printed on one side of a sheet.
enum class Print
{
    Blank,
    Sparse,
    Text,
    Form,
    Photo,
    Mixed,
    Tinted,
    Chart,
    Book
};

/// One sheet of paper as somebody laid it into the feeder or onto the glass.
struct Sheet
{
    Print front = Print::Mixed;
    Print back = Print::Blank;
    SizeMm size{210, 297};
    int turned = 0;  ///< how far it lies turned clockwise: 0, 90, 180 or 270 degrees
    double skew = 0; ///< how far it was drawn in askew, in degrees clockwise
    double xMm = 0;  ///< where it lies on the glass; the feeder centres its sheets
    double yMm = 0;
};

/// When the sheets that went through the feeder lie in it again.
enum class Reload
{
    WhenEmpty,
    OnCancel,
    Never
};

/// sane_start answers @ref status for image @ref image (from 1; 0 stands for each).
struct StartFault
{
    int image = 0;
    SANE_Status status = SANE_STATUS_GOOD;
};

/// sane_read answers @ref status once @ref afterBytes of image @ref image are delivered.
struct ReadFault
{
    int image = 0;
    std::size_t afterBytes = 0;
    SANE_Status status = SANE_STATUS_GOOD;
    bool vanishes = false; ///< the device is unplugged at this point: it answers nothing any more
};

/// One changed property of one option, as text from the configuration: "range", "missing", ...
struct OptionOverride
{
    std::string option;
    std::string property;
    std::string value;
};

/// What goes wrong with a device, on purpose.
struct Faults
{
    SANE_Status open = SANE_STATUS_GOOD;
    std::vector<StartFault> starts;
    std::vector<ReadFault> reads;
    SANE_Int shortReads = 0;   ///< most bytes one sane_read gives; 0: no bound
    SANE_Int padLines = 0;     ///< bytes added to each line
    bool unknownLines = false; ///< sane_get_parameters answers -1 lines
    bool grayForColor = false; ///< gray frames where colour was asked for
    int readDelayMs = 0;       ///< how long each sane_read takes
    int doubleFeedAt = 0;      ///< the sheet (from 1) that takes a second one with it; 0: none
    double colorFringeMm = 0;  ///< how far the red line sensor reads beside the others
    SANE_Int optionCount = -1; ///< answered as the option count; -1: the true one
};

/// Everything that tells one simulated scanner from another.
struct DeviceModel
{
    std::string name;    ///< the SANE name behind the backend's prefix
    std::string backend; ///< only listed by this backend; empty: by whichever reads the file
    std::string vendor = "Kestrel";
    std::string model = "Q2380F";
    std::string type = "document scanner";
    std::string serial = "KS0000001";
    std::string usbId = "3d0c:c238";

    std::vector<std::string> sources;
    SizeMm feeder{216, 356};
    SizeMm flatbed{216, 297};
    double longPaperMm = 0; ///< longest sheet with long-paper scanning; 0: the feeder cannot
    int minDpi = 72;
    int maxDpi = 600;
    std::vector<int> dpiList; ///< when not empty the resolution is one of these
    bool prefeeds = true;
    bool ejectsBothWays = true;
    bool colorsBackground = true;
    int padCount = 12345;
    int rollerCount = 12345;

    std::vector<Sheet> sheets; ///< the stack repeats these
    int stack = -1;            ///< sheets in the feeder; -1: each of @ref sheets once
    std::vector<Sheet> glass;  ///< what lies on the flatbed
    Reload reload = Reload::WhenEmpty;

    Faults faults;
    std::vector<OptionOverride> overrides;

    bool hasSource(const std::string& source) const;
    bool hasFeeder() const { return hasSource("ADF Front") || hasSource("ADF Duplex"); }
    bool hasFlatbed() const { return hasSource("Flatbed"); }
};

/// The model called @p modelName with everything that is particular to it; an unknown name gives
/// the plain duplex scanner under that name.
DeviceModel presetModel(const std::string& modelName);

} // namespace kestrel::sim
