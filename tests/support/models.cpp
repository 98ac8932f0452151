#include "support/models.h"

#include <initializer_list>

namespace kestrel::test {

namespace {

using Option = FakeOption;

Option millimetres(const std::string& name, double value, double min, double max)
{
    return Option::fixed(name, value).unit(SANE_UNIT_MM).limits(min, max);
}

Option switchOption(const std::string& name, bool on)
{
    return Option::choice(name, {"Disable", "Enable"}, on ? "Enable" : "Disable");
}

Option gammaTable(const std::string& name)
{
    std::vector<SANE_Word> identity(256);
    for (std::size_t i = 0; i < identity.size(); ++i) {
        identity[i] = static_cast<SANE_Word>(i);
    }
    return Option::array(name, identity).range(0, 255);
}

using Options = std::initializer_list<Option>;

void addAll(FakeScanner& scanner, Options options)
{
    for (const Option& option : options) {
        scanner.add(option);
    }
}

void addModeOptions(FakeScanner& scanner, const ScannerModel& model)
{
    addAll(scanner,
           {Option::group("Scan mode"),
            Option::choice("mode",
                           {"Lineart", "Gray", "Color", "Auto Detection", "Auto Color Detection"},
                           "Color"),
            Option::choice(
                "multistream-list",
                {"No Multi-Stream", "Gray + BW", "Color + Gray", "Color + BW", "Color + Gray + BW"},
                "No Multi-Stream"),
            Option::choice("source", model.sources, model.source),
            Option::choice("auto-scan-source-setting", {"ADF Duplex", "ADF Front"}, "ADF Front"),
            Option::integer("resolution", 200).unit(SANE_UNIT_DPI).range(50, 600, 1),
            Option::group("Colour detection"),
            Option::choice("auto-color-front-noncolor-mode", {"BW", "Gray"}, "BW"),
            Option::integer("auto-color-front-sensitivity", 50).range(1, 100, 1),
            Option::choice("auto-color-front-mode", {"Normal", "Ignore Paper Color"}, "Normal"),
            Option::choice("auto-color-back-noncolor-mode", {"BW", "Gray"}, "BW"),
            Option::integer("auto-color-back-sensitivity", 50).range(1, 100, 1),
            Option::choice("auto-color-back-mode", {"Normal", "Ignore Paper Color"}, "Normal")});
}

void addImageOptions(FakeScanner& scanner)
{
    addAll(scanner,
           {Option::group("Image"),
            Option::integer("brightness", 0).range(-100, 100, 1),
            Option::integer("contrast", 0).range(-100, 100, 1),
            gammaTable("gamma-table"),
            gammaTable("red-gamma-table"),
            gammaTable("green-gamma-table"),
            gammaTable("blue-gamma-table"),
            Option::choice("gray_doc_type", {"Document", "Photo", "Normal"}, "Document"),
            Option::choice("gray-doc-type", {"Document", "Photo", "Normal"}, "Document"),
            Option::choice("binarization", {"Dynamic Threshold", "Fixed Processing", "Diffusion"},
                           "Dynamic Threshold"),
            Option::integer("binarization-value", 20).range(0, 255, 1),
            Option::boolean("invert", false),
            Option::boolean("color-register", false),
            Option::choice("color-dropout", {"No color dropout", "Red", "Green", "Blue"},
                           "No color dropout"),
            Option::boolean("adv-color-dropout", false),
            Option::boolean("punch-hole-removal", false),
            Option::choice("background-processing", {"None", "Smooth", "Removal"}, "None"),
            Option::integer("background-processing-sensitivity", 10).range(0, 20, 1),
            Option::choice("background-processing-setting", {"Auto", "Moire", "White"}, "Auto"),
            Option::boolean("despeckle", false),
            Option::integer("despeckle-ratio", 1).range(1, 30, 1),
            Option::integer("despeckle-dotsnumber", 0).range(0, 255, 1)});
}

void addPaperOptions(FakeScanner& scanner, const ScannerModel& model)
{
    const bool flatbed = model.source == "Flatbed";
    const double height = flatbed ? model.flatbedHeight : model.feederHeight;
    addAll(
        scanner,
        {Option::group("Paper"),
         millimetres("tl-x", 0.0, 0.0, model.width),
         millimetres("tl-y", 0.0, 0.0, height),
         millimetres("br-x", model.width, 0.0, model.width),
         millimetres("br-y", height, 0.0, height),
         Option::boolean("center-alignment", true),
         Option::boolean("long-paper-scan", false),
         Option::boolean("autocropdeskew", false),
         Option::boolean("flatbed-multi-crop", false),
         millimetres("crop-adjust-top", 0.0, -15.0, 15.0),
         millimetres("crop-adjust-bottom", 0.0, -15.0, 15.0),
         millimetres("crop-adjust-left", 0.0, -15.0, 15.0),
         millimetres("crop-adjust-right", 0.0, -15.0, 15.0),
         Option::choice("bg-color-setting", {"No processing", "Black", "White"}, "No processing"),
         Option::boolean("prefeed", false),
         millimetres("prefeed-time", 1.0, 0.0, 5.0),
         switchOption("ultrasonic", true),
         switchOption("additional-length-detection", false),
         millimetres("additional-length-detection-length", 10.0, 0.0, 5000.0),
         Option::boolean("stop-scanning-after-multifeed", true),
         Option::choice("rotate", {"None", "90", "180", "270", "Auto Orientation"}, "None"),
         Option::choice("auto-orientation-mode", {"Quick", "Full text", "Complexity"}, "Quick"),
         Option::choice("flip-side-rotation", {"Book", "Fanfold"}, "Book"),
         Option::boolean("blank-page-removal", false),
         Option::integer("blank-page-threshold", 50).range(0, 100, 1),
         Option::choice("split-image", {"None", "Horizontal", "Vertical"}, "None"),
         Option::boolean("book-scan-correction", false)});
}

void addDeviceOptions(FakeScanner& scanner)
{
    addAll(scanner,
           {Option::group("Device"),
            Option::choice("cachemode", {"None", "Page Number", "Memory Size"}, "None"),
            Option::boolean("cachemode-use-default", true),
            Option::integer("cachemode-value", 64).range(1, 512, 1),
            switchOption("powersaving", true),
            Option::integer("powersaving-time", 15).range(1, 240, 1),
            switchOption("poweroff", true), Option::integer("poweroff-time", 120).range(1, 480, 1),
            Option::boolean("eject-paper-opposite-side", false), Option::button("eject-paper"),
            Option::text("serial-number", "KS-2024-0042"), Option::text("device-info", "638:2b1f"),
            Option::integer("padscan-count", 1234), Option::integer("roller-count", 5678)});
}

} // namespace

FakeScanner makeScanner(const ScannerModel& model)
{
    FakeScanner scanner;
    addModeOptions(scanner, model);
    addImageOptions(scanner);
    addPaperOptions(scanner, model);
    addDeviceOptions(scanner);

    const auto followHeight = [model](FakeScanner& self) {
        if (!self.has("br-y")) {
            return;
        }
        const auto is = [&self](const char* name, const char* value) {
            return self.has(name) && self.option(name).decoded() == value;
        };
        const bool flatbed = is("source", "Flatbed");
        const bool longPaper = is("long-paper-scan", "1");
        const double height = flatbed     ? model.flatbedHeight
                              : longPaper ? model.longHeight
                                          : model.feederHeight;
        self.option("br-y").limits(0.0, height);
    };
    scanner.onSet("source", followHeight);
    scanner.onSet("long-paper-scan", followHeight);
    return scanner;
}

FakeScanner fullScanner()
{
    return makeScanner({});
}

FakeScanner feederScanner()
{
    ScannerModel model;
    model.sources = {"ADF Front", "ADF Back", "ADF Duplex"};
    return makeScanner(model);
}

FakeScanner flatbedScanner()
{
    ScannerModel model;
    model.sources = {"Flatbed"};
    model.source = "Flatbed";
    return makeScanner(model);
}

FakeScanner flatbedAndFeederScanner()
{
    ScannerModel model;
    model.sources = {"Flatbed", "ADF Front", "ADF Back", "ADF Duplex"};
    return makeScanner(model);
}

FakeScanner feederAndFlatbedScanner()
{
    ScannerModel model;
    model.sources = {"ADF Front", "ADF Back", "ADF Duplex", "Flatbed"};
    return makeScanner(model);
}

FakeScanner a3Scanner()
{
    ScannerModel model;
    model.sources = {"ADF Front", "ADF Back", "ADF Duplex"};
    model.width = 304.8;
    model.feederHeight = 431.8;
    return makeScanner(model);
}

} // namespace kestrel::test
