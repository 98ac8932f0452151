#include "optiontable.h"

#include <string>

#include "optionbuilders.h"

namespace kestrel::sim {
namespace {

std::string defaultSource(const DeviceModel& model)
{
    if (model.hasSource("ADF Front") || model.sources.empty()) {
        return "ADF Front";
    }
    return model.sources.front();
}

Option resolutionOption(const DeviceModel& model)
{
    Option result = intOption("resolution", "Resolution", "Pixels per inch of the image.",
                              {model.minDpi, model.maxDpi, 1}, 200);
    if (!model.dpiList.empty()) {
        result.constraint = std::vector<SANE_Word>(model.dpiList.begin(), model.dpiList.end());
    }
    result.words[0] = nearestWord(result.constraint, 200);
    return shaping(withUnit(result, SANE_UNIT_DPI));
}

} // namespace

std::vector<Option> scanOptions(const DeviceModel& model)
{
    // The name that each backend of this family knows automatic detection by.
    const std::string detection =
        model.backend == "avision_adv" ? "Auto Color Detection" : "Auto Detection";
    const double width = model.hasFeeder() ? model.feeder.width : model.flatbed.width;
    const double height = model.hasFeeder() ? model.feeder.height : model.flatbed.height;
    std::vector<Option> list{
        groupOption("Scan mode"),
        shaping(choiceOption("source", "Scan source", "Where the paper is taken from.",
                             model.sources, defaultSource(model))),
        shaping(choiceOption("mode", "Scan mode", "Kind of image that is delivered.",
                             {"Lineart", "Gray", "Color", detection}, "Color")),
        resolutionOption(model),
        shaping(choiceOption(
            "multistream-list", "Multistream",
            "Images of several kinds from one pass of each side.",
            {"No Multi-Stream", "Gray + BW", "Color + Gray", "Color + BW", "Color + Gray + BW"},
            "No Multi-Stream")),
        shaping(choiceOption("auto-scan-source-setting", "Automatic source: sides",
                             "Sides that are scanned when the feeder is chosen automatically.",
                             {"ADF Duplex", "ADF Front"}, "ADF Front")),
        groupOption("Geometry"),
        shaping(mmOption("tl-x", "Top-left x", "Left edge of the scan area.", 0, width, 0)),
        shaping(mmOption("tl-y", "Top-left y", "Upper edge of the scan area.", 0, height, 0)),
        shaping(
            mmOption("br-x", "Bottom-right x", "Right edge of the scan area.", 0, width, width)),
        shaping(
            mmOption("br-y", "Bottom-right y", "Lower edge of the scan area.", 0, height, height)),
        shaping(boolOption("center-alignment", "Centre the area",
                           "Puts the scan area in the middle of the paper path.", false)),
        shaping(
            activeIf(model.longPaperMm > 0,
                     boolOption("long-paper-scan", "Long paper",
                                "Takes sheets longer than the feeder's normal length.", false))),
        shaping(boolOption("autocropdeskew", "Crop and deskew",
                           "Finds the sheet and delivers it alone and upright.", false))};
    if (model.hasFlatbed()) {
        list.push_back(
            shaping(boolOption("flatbed-multi-crop", "Several originals",
                               "Delivers each original on the glass by itself.", false)));
    }
    for (const char* side : {"top", "bottom", "left", "right"}) {
        list.push_back(shaping(
            mmOption(std::string("crop-adjust-") + side, std::string("Crop margin: ") + side,
                     "Moves this edge of the found sheet outwards.", -10, 10, 0)));
    }
    return list;
}

std::vector<Option> imageOptions(const DeviceModel& model)
{
    std::vector<Option> list{
        groupOption("Tone"),
        percentOption("brightness", "Brightness", "Makes the image lighter or darker."),
        percentOption("contrast", "Contrast", "Spreads or narrows the tones."),
        gammaOption("gamma-table", "Gamma table"),
        gammaOption("red-gamma-table", "Gamma table: red"),
        gammaOption("green-gamma-table", "Gamma table: green"),
        gammaOption("blue-gamma-table", "Gamma table: blue"),
        choiceOption("gray_doc_type", "Kind of document", "What gray images are tuned for.",
                     {"Document", "Photo", "Normal"}, "Normal"),
        choiceOption("binarization", "Binarization", "How black and white are told apart.",
                     {"Dynamic Threshold", "Fixed Processing", "Diffusion"}, "Dynamic Threshold"),
        intOption("binarization-value", "Binarization threshold",
                  "Levels below the local mean, or the fixed threshold.", {1, 30, 1}, 20),
        boolOption("invert", "Invert", "White text on black in black-and-white images.", false),
        boolOption("color-register", "Colour registration",
                   "Brings the lines of the three colour sensors together.", false),
        choiceOption("color-dropout", "Dropout colour", "The colour that gray images do not see.",
                     {"No color dropout", "Red", "Green", "Blue"}, "No color dropout"),
        boolOption("adv-color-dropout", "Strong colour dropout",
                   "Removes all of the dropout colour, also from colour images.", false),
        groupOption("Automatic colour detection")};
    for (const char* side : {"front", "back"}) {
        const std::string key = std::string("auto-color-") + side;
        const std::string title = std::string("Colour detection, ") + side + ": ";
        list.push_back(choiceOption(key + "-noncolor-mode", title + "otherwise",
                                    "Kind of image for a side without colour.", {"BW", "Gray"},
                                    "BW"));
        list.push_back(intOption(key + "-sensitivity", title + "sensitivity",
                                 "How little colour makes a side a colour side.", {1, 100, 1}, 50));
        list.push_back(choiceOption(key + "-mode", title + "mode",
                                    "Whether tinted paper is colour.",
                                    {"Normal", "Ignore Paper Color"}, "Normal"));
    }
    const std::vector<Option> enhancement{
        groupOption("Enhancement"),
        activeIf(model.colorsBackground,
                 choiceOption("bg-color-setting", "Backing", "Colour around the sheet.",
                              {"No processing", "Black", "White"}, "No processing")),
        boolOption("punch-hole-removal", "Remove punch holes", "Fills the holes of filed paper.",
                   false),
        boolOption("book-scan-correction", "Book correction", "Lightens the fold of an open book.",
                   false),
        choiceOption("background-processing", "Background", "Treatment of the paper's own tone.",
                     {"None", "Smooth", "Removal"}, "None"),
        intOption("background-processing-sensitivity", "Background: sensitivity",
                  "How far a tone may be from the paper's to count as background.", {0, 10, 1}, 5),
        choiceOption("background-processing-setting", "Background: setting",
                     "What the background becomes.", {"Auto", "Moire"}, "Auto"),
        boolOption("despeckle", "Despeckle", "Removes isolated dots.", false),
        intOption("despeckle-ratio", "Despeckle: radius", "Clear distance around a dot, in pixels.",
                  {1, 30, 1}, 1),
        intOption("despeckle-dotsnumber", "Despeckle: size", "Largest dot removed, in pixels.",
                  {0, 255, 1}, 9)};
    list.insert(list.end(), enhancement.begin(), enhancement.end());
    return list;
}

std::vector<Option> paperOptions(const DeviceModel& model)
{
    const double longest = model.longPaperMm > 0 ? model.longPaperMm : model.feeder.height;
    return {groupOption("Paper"),
            activeIf(model.prefeeds,
                     boolOption("prefeed", "Prefeed", "Draws the next sheet in early.", false)),
            fixedOption("prefeed-time", "Prefeed time", "How long the feeder waits, in seconds.", 0,
                        10, 0.1, 0),
            switchOption("ultrasonic", "Ultrasonic multifeed detection",
                         "Listens for two sheets at once.", true),
            switchOption("additional-length-detection", "Length multifeed detection",
                         "Takes an overlong sheet for two.", false),
            withUnit(fixedOption(
                         "additional-length-detection-length", "Length detection: tolerance",
                         "How much longer than the scan area a sheet may be.", 0, longest, 0, 10),
                     SANE_UNIT_MM),
            boolOption("stop-scanning-after-multifeed", "Stop after a multifeed",
                       "Ends the scan at the sheet in question.", true),
            shaping(choiceOption("rotate", "Rotation", "Turns the image clockwise.",
                                 {"None", "90", "180", "270", "Auto Orientation"}, "None")),
            choiceOption("auto-orientation-mode", "Orientation by text",
                         "How thoroughly the text is looked at.",
                         {"Quick", "Full text", "Complexity"}, "Quick"),
            choiceOption("flip-side-rotation", "Binding",
                         "Book: both sides upright; Fanfold: the back is turned over.",
                         {"Book", "Fanfold"}, "Book"),
            boolOption("blank-page-removal", "Remove blank pages",
                       "Leaves out sides without print.", false),
            withUnit(intOption("blank-page-threshold", "Blank page threshold",
                               "How much print still counts as blank.", {0, 100, 1}, 50),
                     SANE_UNIT_PERCENT),
            shaping(choiceOption("split-image", "Split", "Delivers each image as two halves.",
                                 {"None", "Horizontal", "Vertical"}, "None"))};
}

std::vector<Option> deviceOptions(const DeviceModel& model)
{
    Option eject = option("eject-paper", "Eject paper",
                          "Drives out what is left in the paper path.", SANE_TYPE_BUTTON);
    return {
        groupOption("Device"),
        choiceOption("cachemode", "Page cache", "What the scanner keeps ahead of the host.",
                     {"None", "Page Number", "Memory Size"}, "None"),
        intOption("cachemode-value", "Page cache: size", "Pages, or megabytes.", {1, 1024, 1}, 1),
        boolOption("cachemode-use-default", "Page cache: default size",
                   "Leaves the size to the scanner.", true),
        switchOption("powersaving", "Power saving", "Sleeps when idle.", true),
        withUnit(intOption("powersaving-time", "Power saving: time", "Minutes until it sleeps.",
                           {1, 240, 1}, 15),
                 SANE_UNIT_NONE),
        switchOption("poweroff", "Power off", "Switches itself off when idle.", false),
        intOption("poweroff-time", "Power off: time", "Minutes until it is off.", {1, 480, 1}, 120),
        activeIf(model.hasFeeder(), eject),
        activeIf(model.ejectsBothWays,
                 boolOption("eject-paper-opposite-side", "Eject backwards",
                            "Ejects the paper at the side it came from.", false)),
        reportOption("serial-number", "Serial number", "Serial number of this scanner.",
                     model.serial),
        advanced(reportOption("device-info", "USB id", "Vendor and product id, hexadecimal.",
                              model.usbId)),
        advanced(activeIf(model.hasFeeder(),
                          counterOption("padscan-count", "Separation pad count",
                                        "Sheets since the pad was changed.", model.padCount))),
        advanced(activeIf(model.hasFeeder(), counterOption("roller-count", "Roller count",
                                                           "Sheets since the rollers were changed.",
                                                           model.rollerCount)))};
}

} // namespace kestrel::sim
