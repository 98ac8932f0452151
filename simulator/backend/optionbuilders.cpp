#include "optionbuilders.h"

namespace kestrel::sim {
namespace {

constexpr SANE_Int settable = SANE_CAP_SOFT_SELECT | SANE_CAP_SOFT_DETECT;

} // namespace

Option option(const std::string& key, const std::string& title, const std::string& text,
              SANE_Value_Type type)
{
    Option result;
    result.key = key;
    result.name = key;
    result.title = title;
    result.text = text;
    result.type = type;
    result.cap = settable;
    return result;
}

Option shaping(Option option)
{
    option.infoWhenSet = SANE_INFO_RELOAD_PARAMS;
    return option;
}

Option withUnit(Option option, SANE_Unit unit)
{
    option.unit = unit;
    return option;
}

Option activeIf(bool active, Option option)
{
    option.pinnedInactive = !active;
    option.setActive(active);
    return option;
}

Option advanced(Option option)
{
    option.cap |= SANE_CAP_ADVANCED;
    return option;
}

Option readOnly(Option option)
{
    option.cap = SANE_CAP_SOFT_DETECT;
    return option;
}

Option reportOption(const std::string& key, const std::string& title, const std::string& text,
                    const std::string& value)
{
    Option result = readOnly(option(key, title, text, SANE_TYPE_STRING));
    result.string = value;
    return result;
}

Option counterOption(const std::string& key, const std::string& title, const std::string& text,
                     int value)
{
    Option result = readOnly(option(key, title, text, SANE_TYPE_INT));
    result.words = {value};
    return result;
}

Option gammaOption(const std::string& key, const std::string& title)
{
    Option result = option(key, title, "What each of the 256 levels becomes.", SANE_TYPE_INT);
    for (SANE_Word level = 0; level < 256; ++level) {
        result.words.push_back(level);
    }
    result.constraint = SANE_Range{0, 255, 1};
    return advanced(result);
}

Option groupOption(const std::string& title)
{
    Option result = option("", title, "", SANE_TYPE_GROUP);
    result.cap = 0;
    return result;
}

Option boolOption(const std::string& key, const std::string& title, const std::string& text,
                  bool on)
{
    Option result = option(key, title, text, SANE_TYPE_BOOL);
    result.words = {on ? SANE_TRUE : SANE_FALSE};
    return result;
}

Option intOption(const std::string& key, const std::string& title, const std::string& text,
                 const SANE_Range& range, int value)
{
    Option result = option(key, title, text, SANE_TYPE_INT);
    result.constraint = range;
    result.words = {value};
    return result;
}

Option fixedOption(const std::string& key, const std::string& title, const std::string& text,
                   double min, double max, double quant, double value)
{
    Option result = option(key, title, text, SANE_TYPE_FIXED);
    result.constraint = SANE_Range{SANE_FIX(min), SANE_FIX(max), SANE_FIX(quant)};
    result.words = {SANE_FIX(value)};
    return result;
}

Option choiceOption(const std::string& key, const std::string& title, const std::string& text,
                    const std::vector<std::string>& texts, const std::string& value)
{
    Option result = option(key, title, text, SANE_TYPE_STRING);
    result.constraint = texts;
    result.string = value;
    return result;
}

Option switchOption(const std::string& key, const std::string& title, const std::string& text,
                    bool on)
{
    return choiceOption(key, title, text, {"Enable", "Disable"}, on ? "Enable" : "Disable");
}

Option mmOption(const std::string& key, const std::string& title, const std::string& text,
                double min, double max, double value)
{
    return withUnit(fixedOption(key, title, text, min, max, 0, value), SANE_UNIT_MM);
}

Option percentOption(const std::string& key, const std::string& title, const std::string& text)
{
    return withUnit(intOption(key, title, text, {-100, 100, 1}, 0), SANE_UNIT_PERCENT);
}

} // namespace kestrel::sim
