#pragma once

#include <string>
#include <vector>

#include "model.h"
#include "option.h"

namespace kestrel::sim {

// The options, a function a group of tabs that belong together.
std::vector<Option> scanOptions(const DeviceModel& model);
std::vector<Option> imageOptions(const DeviceModel& model);
std::vector<Option> paperOptions(const DeviceModel& model);
std::vector<Option> deviceOptions(const DeviceModel& model);

} // namespace kestrel::sim
