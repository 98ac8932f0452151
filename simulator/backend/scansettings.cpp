#include "scansettings.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace kestrel::sim {
namespace {

std::vector<Side> sidesOf(const std::string& source)
{
    if (source == "ADF Duplex") {
        return {Side::Front, Side::Back};
    }
    return {source == "ADF Back" ? Side::Back : Side::Front};
}

std::vector<Kind> kindsOf(const OptionSet& options)
{
    const std::string streams = options.string("multistream-list");
    const auto has = [&streams](const char* word) {
        return streams.find(word) != std::string::npos;
    };
    std::vector<Kind> kinds;
    if (has(" + ")) {
        if (has("Color")) {
            kinds.push_back(Kind::Color);
        }
        if (has("Gray")) {
            kinds.push_back(Kind::Gray);
        }
        if (has("BW")) {
            kinds.push_back(Kind::Lineart);
        }
        return kinds;
    }
    const std::string mode = options.string("mode");
    return {mode == "Lineart" ? Kind::Lineart : mode == "Gray" ? Kind::Gray : Kind::Color};
}

ColorDetection detectionOf(const OptionSet& options, const std::string& side)
{
    const std::string key = "auto-color-" + side;
    ColorDetection detection;
    detection.on = options.string("mode").rfind("Auto", 0) == 0;
    detection.leastPercent = (101 - options.number(key + "-sensitivity", 50)) * 0.01;
    detection.ignoresPaper = options.string(key + "-mode") == "Ignore Paper Color";
    detection.otherwise =
        options.string(key + "-noncolor-mode") == "Gray" ? Kind::Gray : Kind::Lineart;
    return detection;
}

RectMm areaOf(const OptionSet& options, const SizeMm& path)
{
    const auto [left, right] =
        std::minmax({options.number("tl-x", 0), options.number("br-x", path.width)});
    const auto [top, bottom] =
        std::minmax({options.number("tl-y", 0), options.number("br-y", path.height)});
    RectMm area{left, top, right - left, bottom - top};
    if (options.on("center-alignment")) {
        area.x = (path.width - area.width) / 2;
    }
    return area;
}

SANE_Word tableLevel(const OptionSet& options, const char* key, int level)
{
    const Option* const table = options.find(key);
    const auto index = static_cast<std::size_t>(level);
    return table != nullptr && index < table->words.size() ? table->words[index] : level;
}

int toneOf(double level, double brightness, double contrast)
{
    const double spread = contrast >= 0 ? 1 + contrast / 50 : 1 + contrast / 100;
    return static_cast<int>(
        std::lround(std::clamp((level - 127.5) * spread + 127.5 + brightness * 1.27, 0.0, 255.0)));
}

void readTones(ScanSettings& settings, const OptionSet& options)
{
    const double brightness = options.number("brightness", 0);
    const double contrast = options.number("contrast", 0);
    const std::array<const char*, 3> tables{"red-gamma-table", "green-gamma-table",
                                            "blue-gamma-table"};
    const std::string document = options.string("gray_doc_type");
    for (int level = 0; level < 256; ++level) {
        const int curved = std::clamp(
            tableLevel(options, "gamma-table", toneOf(level, brightness, contrast)), 0, 255);
        const auto index = static_cast<std::size_t>(level);
        for (std::size_t i = 0; i < tables.size(); ++i) {
            settings.colorLevels[i][index] = static_cast<std::uint8_t>(
                std::clamp(tableLevel(options, tables[i], curved), 0, 255));
        }
        // Documents get harder, photos softer than the plain curve.
        const double extra = document == "Document" ? 40 : document == "Photo" ? -20 : 0;
        settings.grayLevels[index] = static_cast<std::uint8_t>(toneOf(curved, 0, extra));
    }
}

void readBilevel(ScanSettings& settings, const OptionSet& options)
{
    const std::string binarization = options.string("binarization");
    settings.binarization = binarization == "Fixed Processing" ? Binarization::Fixed
                            : binarization == "Diffusion"      ? Binarization::Diffusion
                                                               : Binarization::Dynamic;
    settings.threshold = static_cast<int>(options.number("binarization-value", 20));
    settings.invert = options.on("invert");
    const std::string dropout = options.string("color-dropout");
    settings.dropout = dropout == "Red"     ? Dropout::Red
                       : dropout == "Green" ? Dropout::Green
                       : dropout == "Blue"  ? Dropout::Blue
                                            : Dropout::None;
    settings.dropsFromColor = options.on("adv-color-dropout");
}

void readEnhancement(ScanSettings& settings, const OptionSet& options, const DeviceModel& model)
{
    const std::string backing = options.string("bg-color-setting");
    settings.backing = backing == "Black"   ? rgb(0, 0, 0)
                       : backing == "White" ? rgb(255, 255, 255)
                                            : rgb(72, 72, 76);
    const std::string background = options.string("background-processing");
    const std::string setting = options.string("background-processing-setting");
    if (background == "Smooth") {
        settings.background = setting == "Moire" ? Background::SmoothMoire : Background::Smooth;
    } else if (background == "Removal") {
        settings.background =
            setting == "White" ? Background::RemoveToWhite : Background::RemoveToPaper;
    }
    settings.backgroundSpan =
        8 + 8 * static_cast<int>(options.number("background-processing-sensitivity", 5));
    settings.fringeMm = options.on("color-register") ? 0 : model.faults.colorFringeMm;
    settings.grayForColor = model.faults.grayForColor;
    settings.cleaning.punchHoles = options.on("punch-hole-removal");
    settings.cleaning.bookFold = options.on("book-scan-correction");
    settings.cleaning.backing = settings.backing;
    if (options.on("despeckle")) {
        settings.cleaning.largestSpeck =
            static_cast<int>(options.number("despeckle-dotsnumber", 0));
        settings.cleaning.speckRadius = static_cast<int>(options.number("despeckle-ratio", 1));
    }
}

void readPaper(ScanSettings& settings, const OptionSet& options)
{
    settings.crops = options.on("autocropdeskew");
    settings.cropsEach = options.on("flatbed-multi-crop") && settings.flatbed;
    settings.cropTop = options.number("crop-adjust-top", 0);
    settings.cropBottom = options.number("crop-adjust-bottom", 0);
    settings.cropLeft = options.number("crop-adjust-left", 0);
    settings.cropRight = options.number("crop-adjust-right", 0);
    const std::string rotate = options.string("rotate");
    settings.rotation = rotate == "90" ? 90 : rotate == "180" ? 180 : rotate == "270" ? 270 : 0;
    settings.orients = rotate == "Auto Orientation";
    settings.turnsBack = options.string("flip-side-rotation") == "Fanfold";
    const std::string split = options.string("split-image");
    settings.split = split == "Horizontal" ? Split::Horizontal
                     : split == "Vertical" ? Split::Vertical
                                           : Split::None;
    settings.dropsBlank = options.on("blank-page-removal");
    settings.blankThreshold = options.number("blank-page-threshold", 50);
}

} // namespace

ScanSettings readSettings(const OptionSet& options, const DeviceModel& model, bool feederHasPaper)
{
    ScanSettings settings;
    const std::string source = options.string("source");
    const bool automatic = source == "Automatic";
    settings.flatbed = source == "Flatbed" || !model.hasFeeder() ||
                       (automatic && !feederHasPaper && model.hasFlatbed());
    if (settings.flatbed) {
        settings.sides = {Side::Front};
    } else {
        settings.sides = sidesOf(automatic ? options.string("auto-scan-source-setting") : source);
    }
    settings.path = settings.flatbed ? model.flatbed : model.feeder;
    if (!settings.flatbed && options.on("long-paper-scan")) {
        settings.path.height = model.longPaperMm;
    }
    settings.kinds = kindsOf(options);
    settings.detection = {detectionOf(options, "front"), detectionOf(options, "back")};
    settings.dpi = std::clamp(static_cast<int>(options.number("resolution", 200)), 1, 4800);
    settings.area = areaOf(options, settings.path);
    readPaper(settings, options);
    readTones(settings, options);
    readBilevel(settings, options);
    readEnhancement(settings, options, model);
    return settings;
}

} // namespace kestrel::sim
