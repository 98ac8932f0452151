#include "text.h"

#include <charconv>
#include <climits>
#include <cmath>
#include <locale>
#include <sstream>

namespace kestrel::sim {

std::string trimmed(const std::string& text)
{
    const char* const blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    if (trimmed(text).empty()) {
        return parts;
    }
    std::size_t begin = 0;
    while (true) {
        const std::size_t end = text.find(separator, begin);
        parts.push_back(trimmed(text.substr(begin, end - begin)));
        if (end == std::string::npos) {
            return parts;
        }
        begin = end + 1;
    }
}

// The host may run under a locale with a decimal comma; the file does not.
std::optional<double> toNumber(const std::string& text)
{
    const std::string trim = trimmed(text);
    const char* const begin = trim.data() + (!trim.empty() && trim.front() == '+' ? 1 : 0);
    const char* const end = trim.data() + trim.size();
    double value = 0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (error != std::errc{} || stop != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<int> toInt(const std::string& text)
{
    const std::optional<double> value = toNumber(text);
    if (!value || *value != std::floor(*value) || *value < INT_MIN || *value > INT_MAX) {
        return std::nullopt;
    }
    return static_cast<int>(*value);
}

std::optional<bool> toBool(const std::string& text)
{
    const std::string trim = trimmed(text);
    if (trim == "yes" || trim == "true" || trim == "1") {
        return true;
    }
    if (trim == "no" || trim == "false" || trim == "0") {
        return false;
    }
    return std::nullopt;
}

std::string formatNumber(double value)
{
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << value;
    return out.str();
}

} // namespace kestrel::sim
