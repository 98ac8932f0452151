#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "model.h"

namespace kestrel::sim {

/// What the configuration file says.
struct Config
{
    std::string journal; ///< path of the journal file; empty: none is written
    std::vector<DeviceModel> devices;
    std::vector<std::string> complaints; ///< one line for each line that was not understood
};

/// Reads a configuration. Lines that make no sense are passed over and noted in Config::complaints.
Config parseConfig(std::istream& in);

/// Finds and reads the configuration of backend @p backend: the file that KESTREL_SIM_CONFIG names,
/// else
/// "<backend>.conf" in the folders of SANE_CONFIG_DIR. KESTREL_SIM_JOURNAL overrides the journal
/// path. Without a file there are no devices. Devices that belong to another backend are left out.
Config loadConfig(const std::string& backend);

} // namespace kestrel::sim
