#include "config.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>

#include "sheetlist.h"
#include "status.h"
#include "text.h"

namespace kestrel::sim {
namespace {

/// Takes one value into a device; false when it makes no sense.
using Setter = std::function<bool(DeviceModel&, const std::string&)>;

template <typename T>
bool assign(T& member, const std::optional<T>& value)
{
    if (value) {
        member = *value;
    }
    return value.has_value();
}

Setter text(std::string DeviceModel::*member)
{
    return [member](DeviceModel& device, const std::string& value) {
        device.*member = value;
        return true;
    };
}

Setter whole(int DeviceModel::*member)
{
    return [member](DeviceModel& device, const std::string& value) {
        return assign(device.*member, toInt(value));
    };
}

Setter flag(bool DeviceModel::*member)
{
    return [member](DeviceModel& device, const std::string& value) {
        return assign(device.*member, toBool(value));
    };
}

Setter area(SizeMm DeviceModel::*member)
{
    return [member](DeviceModel& device, const std::string& value) {
        return assign(device.*member, parseSize(value));
    };
}

Setter sheetList(std::vector<Sheet> DeviceModel::*member)
{
    return [member](DeviceModel& device, const std::string& value) {
        return assign(device.*member, parseSheets(value));
    };
}

template <typename T>
Setter fault(T Faults::*member, std::optional<T> (*parse)(const std::string&))
{
    return [member, parse](DeviceModel& device, const std::string& value) {
        return assign(device.faults.*member, parse(value));
    };
}

bool setDpiList(DeviceModel& device, const std::string& value)
{
    std::vector<int> list;
    for (const std::string& part : split(value, ',')) {
        const std::optional<int> dpi = toInt(part);
        if (!dpi) {
            return false;
        }
        list.push_back(*dpi);
    }
    device.dpiList = std::move(list);
    return true;
}

bool setReload(DeviceModel& device, const std::string& value)
{
    static const std::map<std::string, Reload> names{
        {"empty", Reload::WhenEmpty}, {"cancel", Reload::OnCancel}, {"never", Reload::Never}};
    const auto found = names.find(value);
    if (found == names.end()) {
        return false;
    }
    device.reload = found->second;
    return true;
}

std::optional<int> imageNumber(const std::string& text)
{
    return text == "*" ? std::optional<int>(0) : toInt(text);
}

// start <image> <status> | read <image> <bytes> <status> | vanish <image> <bytes> | open <status>
bool addFault(DeviceModel& device, const std::string& value)
{
    const std::vector<std::string> words = split(value, ' ');
    const std::string& kind = words.empty() ? value : words.front();
    const auto word = [&words](std::size_t i) {
        return i < words.size() ? words[i] : std::string();
    };
    const std::optional<int> image = imageNumber(word(1));
    const std::optional<SANE_Status> last = statusFromName(words.empty() ? value : words.back());
    if (kind == "open" && words.size() == 2 && last) {
        device.faults.open = *last;
        return true;
    }
    if (kind == "start" && words.size() == 3 && image && last) {
        device.faults.starts.push_back({*image, *last});
        return true;
    }
    const std::optional<int> bytes = toInt(word(2));
    if (!image || !bytes || *bytes < 0) {
        return false;
    }
    const auto after = static_cast<std::size_t>(*bytes);
    if (kind == "read" && words.size() == 4 && last) {
        device.faults.reads.push_back({*image, after, *last, false});
        return true;
    }
    if (kind == "vanish" && words.size() == 3) {
        device.faults.reads.push_back({*image, after, SANE_STATUS_IO_ERROR, true});
        return true;
    }
    return false;
}

const std::map<std::string, Setter>& setters()
{
    // clang-format off
    static const std::map<std::string, Setter> table{
        {"backend",              text(&DeviceModel::backend)},
        {"vendor",               text(&DeviceModel::vendor)},
        {"type",                 text(&DeviceModel::type)},
        {"serial",               text(&DeviceModel::serial)},
        {"usb-id",               text(&DeviceModel::usbId)},
        {"feeder-area",          area(&DeviceModel::feeder)},
        {"flatbed-area",         area(&DeviceModel::flatbed)},
        {"min-dpi",              whole(&DeviceModel::minDpi)},
        {"max-dpi",              whole(&DeviceModel::maxDpi)},
        {"dpi-list",             setDpiList},
        {"prefeed",              flag(&DeviceModel::prefeeds)},
        {"eject-opposite-side",  flag(&DeviceModel::ejectsBothWays)},
        {"background-color",     flag(&DeviceModel::colorsBackground)},
        {"pad-count",            whole(&DeviceModel::padCount)},
        {"roller-count",         whole(&DeviceModel::rollerCount)},
        {"sheets",               sheetList(&DeviceModel::sheets)},
        {"glass",                sheetList(&DeviceModel::glass)},
        {"stack",                whole(&DeviceModel::stack)},
        {"reload",               setReload},
        {"fault",                addFault},
        {"short-reads",          fault(&Faults::shortReads, &toInt)},
        {"pad-lines",            fault(&Faults::padLines, &toInt)},
        {"unknown-lines",        fault(&Faults::unknownLines, &toBool)},
        {"gray-for-color",       fault(&Faults::grayForColor, &toBool)},
        {"read-delay-ms",        fault(&Faults::readDelayMs, &toInt)},
        {"double-feed-at",       fault(&Faults::doubleFeedAt, &toInt)},
        {"color-fringe",         fault(&Faults::colorFringeMm, &toNumber)},
        {"option-count",         fault(&Faults::optionCount, &toInt)},
        {"sources", [](DeviceModel& device, const std::string& value) {
             device.sources = split(value, ',');
             return true;
         }},
        {"long-paper", [](DeviceModel& device, const std::string& value) {
             return assign(device.longPaperMm, toNumber(value));
         }},
        // Brings everything particular to the model with it, so it stands first in its section.
        {"model", [](DeviceModel& device, const std::string& value) {
             const std::string name = device.name;
             device = presetModel(value);
             device.name = name;
             return true;
         }},
    };
    // clang-format on
    return table;
}

// option.<name>.<property>
bool addOverride(DeviceModel& device, const std::string& key, const std::string& value)
{
    const std::vector<std::string> parts = split(key, '.');
    if (parts.size() != 3 || parts[1].empty()) {
        return false;
    }
    static const std::array<const char*, 12> known{
        "missing", "inactive", "readonly",    "unnamed",    "null", "constraint",
        "value",   "size",     "read-status", "set-status", "name", "type"};
    const bool ok = std::any_of(known.begin(), known.end(),
                                [&parts](const char* name) { return parts[2] == name; });
    if (ok) {
        device.overrides.push_back({parts[1], parts[2], value});
    }
    return ok;
}

bool takeSetting(Config& config, const std::string& key, const std::string& value)
{
    if (config.devices.empty()) {
        if (key != "journal") {
            return false;
        }
        config.journal = value;
        return true;
    }
    DeviceModel& device = config.devices.back();
    if (key.rfind("option.", 0) == 0) {
        return addOverride(device, key, value);
    }
    const auto setter = setters().find(key);
    return setter != setters().end() && setter->second(device, value);
}

bool takeLine(Config& config, const std::string& line)
{
    const std::string trim = trimmed(line);
    if (trim.empty() || trim.front() == '#') {
        return true;
    }
    if (trim.front() == '[') {
        const std::string name =
            trim.back() == ']' ? trimmed(trim.substr(1, trim.size() - 2)) : std::string();
        if (name.empty()) {
            return false;
        }
        config.devices.push_back(presetModel("Q2380F"));
        config.devices.back().name = name;
        return true;
    }
    const std::size_t equals = trim.find('=');
    return equals != std::string::npos &&
           takeSetting(config, trimmed(trim.substr(0, equals)), trimmed(trim.substr(equals + 1)));
}

std::string environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::vector<std::string> candidates(const std::string& backend)
{
    const std::string named = environment("KESTREL_SIM_CONFIG");
    if (!named.empty()) {
        return {named};
    }
    std::vector<std::string> paths;
    for (const std::string& folder : split(environment("SANE_CONFIG_DIR"), ':')) {
        paths.push_back((folder.empty() ? "/etc/sane.d" : folder) + "/" + backend + ".conf");
    }
    if (paths.empty()) {
        paths.push_back("/etc/sane.d/" + backend + ".conf");
    }
    return paths;
}

} // namespace

Config parseConfig(std::istream& in)
{
    Config config;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (!takeLine(config, line)) {
            config.complaints.push_back("line " + std::to_string(number) + ": " + trimmed(line));
        }
    }
    return config;
}

Config loadConfig(const std::string& backend)
{
    Config config;
    for (const std::string& path : candidates(backend)) {
        std::ifstream file(path);
        if (file) {
            config = parseConfig(file);
            break;
        }
    }
    auto& devices = config.devices;
    devices.erase(std::remove_if(devices.begin(), devices.end(),
                                 [&backend](const DeviceModel& device) {
                                     return !device.backend.empty() && device.backend != backend;
                                 }),
                  devices.end());
    for (DeviceModel& device : devices) {
        device.backend = backend;
    }
    const std::string journal = environment("KESTREL_SIM_JOURNAL");
    if (!journal.empty()) {
        config.journal = journal;
    }
    return config;
}

} // namespace kestrel::sim
