#pragma once

#include <string>
#include <vector>

#include "model.h"
#include "option.h"

namespace kestrel::sim {

// Builders: an option with what all of its kind have in common.
Option groupOption(const std::string& title);
Option boolOption(const std::string& key, const std::string& title, const std::string& text,
                  bool on);
Option intOption(const std::string& key, const std::string& title, const std::string& text,
                 const SANE_Range& range, int value);
Option fixedOption(const std::string& key, const std::string& title, const std::string& text,
                   double min, double max, double quant, double value);
Option choiceOption(const std::string& key, const std::string& title, const std::string& text,
                    const std::vector<std::string>& texts, const std::string& value);
Option switchOption(const std::string& key, const std::string& title, const std::string& text,
                    bool on);

// The options, a function a group of tabs that belong together.
std::vector<Option> scanOptions(const DeviceModel& model);
std::vector<Option> imageOptions(const DeviceModel& model);
std::vector<Option> paperOptions(const DeviceModel& model);
std::vector<Option> deviceOptions(const DeviceModel& model);

} // namespace kestrel::sim
