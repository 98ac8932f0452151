#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kestrel::sim {

/// @p text without white space at its ends.
std::string trimmed(const std::string& text);

/// The trimmed parts of @p text between @p separator; a blank text has no parts.
std::vector<std::string> split(const std::string& text, char separator);

/// The whole of @p text as a number; nothing when it is anything else or not finite.
std::optional<double> toNumber(const std::string& text);

/// Like toNumber(), for whole numbers that fit into an int.
std::optional<int> toInt(const std::string& text);

/// yes/no, true/false, 1/0.
std::optional<bool> toBool(const std::string& text);

/// A number in the shortest form that tells it apart to six digits, whatever the locale.
std::string formatNumber(double value);

} // namespace kestrel::sim
