#include "model.h"

#include <algorithm>

namespace kestrel::sim {
namespace {

const std::vector<std::string> everySource{"Automatic", "Flatbed", "ADF Front", "ADF Back",
                                           "ADF Duplex"};
const std::vector<std::string> feederSources{"ADF Front", "ADF Back", "ADF Duplex"};

constexpr SizeMm a4{210, 297};

} // namespace

bool DeviceModel::hasSource(const std::string& source) const
{
    return std::find(sources.begin(), sources.end(), source) != sources.end();
}

DeviceModel presetModel(const std::string& modelName)
{
    DeviceModel model;
    model.model = modelName;
    model.sources = everySource;
    if (modelName == "Q2360F") {
        model.sources = {"Flatbed", "ADF Front", "ADF Back", "ADF Duplex"};
        model.usbId = "3d0c:c236";
    } else if (modelName == "Q150A") {
        model.sources = feederSources;
        model.usbId = "3d0c:c150";
        model.ejectsBothWays = false;
    } else if (modelName == "Q110F") {
        model.sources = {"Flatbed"};
        model.type = "flatbed scanner";
        model.usbId = "3d0c:c110";
        model.maxDpi = 1200;
        model.dpiList = {75, 100, 150, 200, 240, 300, 400, 600, 1200};
        model.prefeeds = false;
        model.ejectsBothWays = false;
        model.colorsBackground = false;
    } else if (modelName == "Q1410A") {
        model.sources = feederSources;
        model.usbId = "3d0c:c141";
        model.feeder = {304.8, 431.8};
    } else if (modelName == "Q150L") {
        model.sources = feederSources;
        model.usbId = "3d0c:c151";
        model.longPaperMm = 3048;
    } else if (modelName == "Q240A") {
        model.sources = feederSources;
        model.usbId = "3d0c:c240";
    }
    model.sheets = {{Print::Mixed, Print::Text, a4, 0},    {Print::Text, Print::Blank, a4, 0},
                    {Print::Photo, Print::Text, a4, 0},    {Print::Form, Print::Blank, a4, 0},
                    {Print::Tinted, Print::Sparse, a4, 0}, {Print::Text, Print::Text, a4, 180}};
    model.glass = {{Print::Mixed, Print::Blank, a4, 0}};
    if (model.sources == feederSources) {
        model.type = "sheetfed scanner";
    }
    return model;
}

} // namespace kestrel::sim
