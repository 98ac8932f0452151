#include "sheetlist.h"

#include <map>

#include "text.h"

namespace kestrel::sim {
namespace {

std::optional<Print> parsePrint(const std::string& text)
{
    static const std::map<std::string, Print> names{
        {"blank", Print::Blank},   {"sparse", Print::Sparse}, {"text", Print::Text},
        {"form", Print::Form},     {"photo", Print::Photo},   {"mixed", Print::Mixed},
        {"tinted", Print::Tinted}, {"chart", Print::Chart},   {"book", Print::Book}};
    const auto found = names.find(text);
    return found == names.end() ? std::nullopt : std::optional<Print>(found->second);
}

/// Cuts what follows @p mark off @p text; nothing when the mark is not in it.
std::optional<std::string> cutTail(std::string& text, char mark)
{
    const std::size_t at = text.find(mark);
    if (at == std::string::npos) {
        return std::nullopt;
    }
    const std::string tail = text.substr(at + 1);
    text.erase(at);
    return tail;
}

bool takeTurn(Sheet& sheet, const std::string& text)
{
    const std::optional<int> turned = toInt(text);
    if (!turned || *turned < 0 || *turned > 270 || *turned % 90 != 0) {
        return false;
    }
    sheet.turned = *turned;
    return true;
}

bool takeSkew(Sheet& sheet, const std::string& text)
{
    const std::optional<double> skew = toNumber(text);
    if (!skew || *skew < -45 || *skew > 45) {
        return false;
    }
    sheet.skew = *skew;
    return true;
}

bool takePlace(Sheet& sheet, const std::string& text)
{
    const std::vector<std::string> parts = split(text, '+');
    const std::optional<double> x = parts.size() == 2 ? toNumber(parts[0]) : std::nullopt;
    const std::optional<double> y = parts.size() == 2 ? toNumber(parts[1]) : std::nullopt;
    if (!x || !y) {
        return false;
    }
    sheet.xMm = *x;
    sheet.yMm = *y;
    return true;
}

bool takeSize(Sheet& sheet, const std::string& text)
{
    const std::optional<SizeMm> size = parseSize(text);
    if (size) {
        sheet.size = *size;
    }
    return size.has_value();
}

bool takePrints(Sheet& sheet, const std::string& text)
{
    const std::vector<std::string> sides = split(text, '/');
    const std::optional<Print> front = sides.empty() ? std::nullopt : parsePrint(sides[0]);
    const std::optional<Print> back =
        sides.size() == 2 ? parsePrint(sides[1]) : std::optional<Print>(Print::Blank);
    if (!front || !back || sides.size() > 2) {
        return false;
    }
    sheet.front = *front;
    sheet.back = *back;
    return true;
}

std::optional<Sheet> parseSheet(std::string text)
{
    Sheet sheet;
    // From the last mark to the first, so that each tail ends where the next begins.
    const std::optional<std::string> skew = cutTail(text, '~');
    const std::optional<std::string> turned = cutTail(text, '@');
    const std::optional<std::string> place = cutTail(text, '+');
    const std::optional<std::string> size = cutTail(text, ':');
    const bool ok = takePrints(sheet, text) && (!size || takeSize(sheet, *size)) &&
                    (!place || takePlace(sheet, *place)) && (!turned || takeTurn(sheet, *turned)) &&
                    (!skew || takeSkew(sheet, *skew));
    return ok ? std::optional<Sheet>(sheet) : std::nullopt;
}

} // namespace

std::optional<SizeMm> parseSize(const std::string& text)
{
    static const std::map<std::string, SizeMm> names{
        {"A3", {297, 420}},        {"A4", {210, 297}},  {"A5", {148, 210}},
        {"A6", {105, 148}},        {"B5", {182, 257}},  {"Letter", {215.9, 279.4}},
        {"Legal", {215.9, 355.6}}, {"Card", {85.6, 54}}};
    const auto found = names.find(trimmed(text));
    if (found != names.end()) {
        return found->second;
    }
    const std::vector<std::string> parts = split(text, 'x');
    const std::optional<double> width = parts.size() == 2 ? toNumber(parts[0]) : std::nullopt;
    const std::optional<double> height = parts.size() == 2 ? toNumber(parts[1]) : std::nullopt;
    const auto sensible = [](double mm) { return mm >= 10 && mm <= 10000; };
    if (!width || !height || !sensible(*width) || !sensible(*height)) {
        return std::nullopt;
    }
    return SizeMm{*width, *height};
}

std::optional<std::vector<Sheet>> parseSheets(const std::string& text)
{
    std::vector<Sheet> sheets;
    for (const std::string& part : split(text, ',')) {
        const std::optional<Sheet> sheet = parseSheet(part);
        if (!sheet) {
            return std::nullopt;
        }
        sheets.push_back(*sheet);
    }
    return sheets;
}

} // namespace kestrel::sim
