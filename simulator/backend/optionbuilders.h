#pragma once

#include <string>
#include <vector>

#include "option.h"

// Options with what all of their kind have in common. The key is the name, too.
namespace kestrel::sim {

/// A settable option without a value yet; the others are made from it.
Option option(const std::string& key, const std::string& title, const std::string& text,
              SANE_Value_Type type);

Option groupOption(const std::string& title);
Option boolOption(const std::string& key, const std::string& title, const std::string& text,
                  bool on);
Option intOption(const std::string& key, const std::string& title, const std::string& text,
                 const SANE_Range& range, int value);

/// From -100 to 100 percent.
Option percentOption(const std::string& key, const std::string& title, const std::string& text);

/// A fixed-point number; a @p quant of 0 permits every value of the range.
Option fixedOption(const std::string& key, const std::string& title, const std::string& text,
                   double min, double max, double quant, double value);

/// A length in millimetres.
Option mmOption(const std::string& key, const std::string& title, const std::string& text,
                double min, double max, double value);

/// One of some texts.
Option choiceOption(const std::string& key, const std::string& title, const std::string& text,
                    const std::vector<std::string>& texts, const std::string& value);

/// "Enable" or "Disable".
Option switchOption(const std::string& key, const std::string& title, const std::string& text,
                    bool on);

/// 256 levels, each its own at first.
Option gammaOption(const std::string& key, const std::string& title);

/// A text that can only be read.
Option reportOption(const std::string& key, const std::string& title, const std::string& text,
                    const std::string& value);

/// A number that can only be read.
Option counterOption(const std::string& key, const std::string& title, const std::string& text,
                     int value);

/// The image's size or kind hangs on it: setting it asks for new parameters.
Option shaping(Option option);
Option withUnit(Option option, SANE_Unit unit);

/// Inactive for good unless @p active.
Option activeIf(bool active, Option option);

/// Not for beginners.
Option advanced(Option option);
Option readOnly(Option option);

} // namespace kestrel::sim
