// What a configuration changes about single options, sensible or not.
#include "optionset.h"

#include <algorithm>
#include <array>
#include <utility>
#include <variant>

#include "status.h"
#include "text.h"

namespace kestrel::sim {
namespace {

SANE_Word wordFrom(SANE_Value_Type type, const std::string& text)
{
    const double value = toNumber(text).value_or(0);
    return type == SANE_TYPE_FIXED ? SANE_FIX(value) : static_cast<SANE_Word>(value);
}

/// "none", "range min max step", "words a b c" or "texts a|b|c".
Constraint constraintFrom(SANE_Value_Type type, const std::string& text)
{
    const std::string kind = text.substr(0, text.find(' '));
    const std::string rest = text.size() > kind.size() ? text.substr(kind.size()) : std::string();
    if (kind == "texts") {
        return split(rest, '|');
    }
    std::vector<SANE_Word> words;
    for (const std::string& part : split(trimmed(rest), ' ')) {
        words.push_back(wordFrom(type, part));
    }
    if (kind == "words") {
        return words;
    }
    if (kind == "range" && words.size() == 3) {
        return SANE_Range{words[0], words[1], words[2]};
    }
    return std::monostate{};
}

SANE_Value_Type typeFrom(const std::string& text)
{
    // clang-format off
    constexpr std::array<std::pair<const char*, SANE_Value_Type>, 6> names{{
        {"bool", SANE_TYPE_BOOL}, {"int", SANE_TYPE_INT}, {"fixed", SANE_TYPE_FIXED},
        {"string", SANE_TYPE_STRING}, {"button", SANE_TYPE_BUTTON}, {"group", SANE_TYPE_GROUP}}};
    // clang-format on
    for (const auto& [name, type] : names) {
        if (text == name) {
            return type;
        }
    }
    return SANE_TYPE_INT;
}

} // namespace

void OptionSet::override(const OptionOverride& change)
{
    Option* const option = find(change.option);
    if (option == nullptr) {
        return;
    }
    const bool yes = toBool(change.value).value_or(false);
    if (change.property == "missing" && yes) {
        options_.erase(
            std::find_if(options_.begin(), options_.end(),
                         [&change](const Option& each) { return each.key == change.option; }));
    } else if (change.property == "inactive") {
        option->pinnedInactive = yes;
        option->setActive(!yes);
    } else if (change.property == "readonly" && yes) {
        option->cap &= ~SANE_CAP_SOFT_SELECT;
    } else if (change.property == "unnamed") {
        option->unnamed = yes;
    } else if (change.property == "name") {
        option->name = change.value;
    } else if (change.property == "null") {
        option->nullDescriptor = yes;
    } else if (change.property == "type") {
        option->type = typeFrom(change.value);
        if (option->words.empty()) {
            option->words = {0};
        }
    } else if (change.property == "constraint") {
        option->constraint = constraintFrom(option->type, change.value);
        option->pinnedConstraint = true;
    } else if (change.property == "size") {
        option->pinnedSize = std::max(0, toInt(change.value).value_or(0));
    } else if (change.property == "value") {
        option->string = change.value;
        if (!option->words.empty()) {
            option->words[0] = wordFrom(option->type, change.value);
        }
    } else if (change.property == "read-status") {
        option->readStatus = statusFromName(change.value).value_or(SANE_STATUS_IO_ERROR);
    } else if (change.property == "set-status") {
        option->setStatus = statusFromName(change.value).value_or(SANE_STATUS_IO_ERROR);
    }
}

} // namespace kestrel::sim
