#include "option.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <strings.h>

#include "text.h"

namespace kestrel::sim {
namespace {

bool sameRange(const SANE_Range& a, const SANE_Range& b)
{
    return a.min == b.min && a.max == b.max && a.quant == b.quant;
}

SANE_Word nearestInRange(const SANE_Range& range, SANE_Word value)
{
    // A range may be upside down on purpose; the upper bound then wins, as with two plain
    // comparisons.
    const SANE_Word clamped = std::min(std::max(value, range.min), range.max);
    if (range.quant <= 0) {
        return clamped;
    }
    const long long steps =
        (static_cast<long long>(clamped) - range.min + range.quant / 2) / range.quant;
    const long long onGrid = range.min + steps * range.quant;
    return static_cast<SANE_Word>(std::min<long long>(onGrid, range.max));
}

SANE_Word nearestInList(const std::vector<SANE_Word>& list, SANE_Word value)
{
    if (list.empty()) {
        return value;
    }
    const auto distance = [value](SANE_Word word) {
        return std::llabs(static_cast<long long>(word) - value);
    };
    return *std::min_element(list.begin(), list.end(), [&distance](SANE_Word a, SANE_Word b) {
        return distance(a) < distance(b);
    });
}

/// The text of @p list that @p value means: the same but for case, or the only one that begins with
/// it.
const std::string* meantText(const std::vector<std::string>& list, const std::string& value)
{
    const std::string* meant = nullptr;
    int matches = 0;
    for (const std::string& text : list) {
        if (text.size() < value.size() ||
            strncasecmp(text.c_str(), value.c_str(), value.size()) != 0) {
            continue;
        }
        if (text.size() == value.size()) {
            return &text;
        }
        meant = &text;
        ++matches;
    }
    return matches == 1 ? meant : nullptr;
}

std::string wordsText(SANE_Value_Type type, const SANE_Word* words, std::size_t count)
{
    std::string line;
    for (std::size_t i = 0; i < count; ++i) {
        line += (i == 0 ? "" : " ") + (type == SANE_TYPE_FIXED ? formatNumber(SANE_UNFIX(words[i]))
                                                               : std::to_string(words[i]));
    }
    return line;
}

} // namespace

SANE_Word nearestWord(const Constraint& constraint, SANE_Word value)
{
    if (const auto* range = std::get_if<SANE_Range>(&constraint)) {
        return nearestInRange(*range, value);
    }
    if (const auto* list = std::get_if<std::vector<SANE_Word>>(&constraint)) {
        return nearestInList(*list, value);
    }
    return value;
}

SANE_Int Option::size() const
{
    if (pinnedSize >= 0) {
        return pinnedSize;
    }
    switch (type) {
    case SANE_TYPE_STRING: {
        std::size_t longest = string.size();
        if (const auto* list = std::get_if<std::vector<std::string>>(&constraint)) {
            for (const std::string& entry : *list) {
                longest = std::max(longest, entry.size());
            }
        }
        return static_cast<SANE_Int>(longest + 1);
    }
    case SANE_TYPE_BUTTON:
    case SANE_TYPE_GROUP:
        return 0;
    default:
        return static_cast<SANE_Int>(words.size() * sizeof(SANE_Word));
    }
}

void Option::describe()
{
    descriptor_.name = unnamed ? nullptr : name.c_str();
    descriptor_.title = title.c_str();
    descriptor_.desc = text.c_str();
    descriptor_.type = type;
    descriptor_.unit = unit;
    descriptor_.size = size();
    descriptor_.cap = cap;
    descriptor_.constraint_type = SANE_CONSTRAINT_NONE;
    descriptor_.constraint.range = nullptr;
    if (const auto* range = std::get_if<SANE_Range>(&constraint)) {
        range_ = *range;
        descriptor_.constraint_type = SANE_CONSTRAINT_RANGE;
        descriptor_.constraint.range = &range_;
    } else if (const auto* list = std::get_if<std::vector<SANE_Word>>(&constraint)) {
        wordList_.assign(1, static_cast<SANE_Word>(list->size()));
        wordList_.insert(wordList_.end(), list->begin(), list->end());
        descriptor_.constraint_type = SANE_CONSTRAINT_WORD_LIST;
        descriptor_.constraint.word_list = wordList_.data();
    } else if (const auto* texts = std::get_if<std::vector<std::string>>(&constraint)) {
        stringList_.clear();
        for (const std::string& entry : *texts) {
            stringList_.push_back(entry.c_str());
        }
        stringList_.push_back(nullptr);
        descriptor_.constraint_type = SANE_CONSTRAINT_STRING_LIST;
        descriptor_.constraint.string_list = stringList_.data();
    }
}

bool Option::setActive(bool active)
{
    const SANE_Int now =
        active && !pinnedInactive ? cap & ~SANE_CAP_INACTIVE : cap | SANE_CAP_INACTIVE;
    const bool changed = now != cap;
    cap = now;
    descriptor_.cap = cap;
    return changed;
}

bool Option::moveInside()
{
    bool moved = false;
    for (SANE_Word& word : words) {
        const SANE_Word inside = nearestWord(constraint, word);
        moved = moved || inside != word;
        word = inside;
    }
    return moved;
}

bool Option::setRange(const SANE_Range& range)
{
    if (pinnedConstraint) {
        return false;
    }
    const auto* now = std::get_if<SANE_Range>(&constraint);
    const bool changed = now == nullptr || !sameRange(*now, range);
    constraint = range;
    const bool moved = moveInside();
    describe();
    return changed || moved;
}

bool Option::setTexts(const std::vector<std::string>& texts)
{
    const auto* now = std::get_if<std::vector<std::string>>(&constraint);
    if (pinnedConstraint || (now != nullptr && *now == texts)) {
        return false;
    }
    if (!texts.empty() && std::find(texts.begin(), texts.end(), string) == texts.end()) {
        string = texts.front();
    }
    constraint = texts;
    describe();
    return true;
}

void Option::read(void* value) const
{
    const auto room = static_cast<std::size_t>(size());
    if (type == SANE_TYPE_STRING) {
        if (room > 0) {
            std::memset(value, 0, room);
            std::memcpy(value, string.data(), std::min(string.size(), room - 1));
        }
        return;
    }
    std::memcpy(value, words.data(), std::min(room, words.size() * sizeof(SANE_Word)));
}

SANE_Status Option::write(void* value, SANE_Int& info)
{
    SANE_Status status = SANE_STATUS_GOOD;
    if (type == SANE_TYPE_STRING) {
        status = value == nullptr ? SANE_STATUS_INVAL : writeString(static_cast<char*>(value));
    } else if (type != SANE_TYPE_BUTTON) {
        status =
            value == nullptr ? SANE_STATUS_INVAL : writeWords(static_cast<SANE_Word*>(value), info);
    }
    if (status == SANE_STATUS_GOOD) {
        info |= infoWhenSet;
    }
    return status;
}

SANE_Status Option::writeWords(SANE_Word* value, SANE_Int& info)
{
    const std::size_t count =
        std::min(words.size(), static_cast<std::size_t>(size()) / sizeof(SANE_Word));
    if (type == SANE_TYPE_BOOL && value[0] != SANE_FALSE && value[0] != SANE_TRUE) {
        return SANE_STATUS_INVAL;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const SANE_Word inside = nearestWord(constraint, value[i]);
        if (inside != value[i]) {
            value[i] = inside;
            info |= SANE_INFO_INEXACT;
        }
        words[i] = inside;
    }
    return SANE_STATUS_GOOD;
}

SANE_Status Option::writeString(char* value)
{
    const auto room = static_cast<std::size_t>(size());
    const std::string wanted(value, strnlen(value, room));
    const auto* list = std::get_if<std::vector<std::string>>(&constraint);
    if (list == nullptr) {
        string = wanted;
        return SANE_STATUS_GOOD;
    }
    const std::string* meant = meantText(*list, wanted);
    if (meant == nullptr) {
        return SANE_STATUS_INVAL;
    }
    if (*meant != wanted && meant->size() < room) {
        std::memcpy(value, meant->c_str(), meant->size() + 1);
    }
    string = *meant;
    return SANE_STATUS_GOOD;
}

std::string Option::valueText() const
{
    return type == SANE_TYPE_STRING ? string : wordsText(type, words.data(), words.size());
}

std::string Option::sentText(const void* value) const
{
    if (value == nullptr) {
        return {};
    }
    const auto room = static_cast<std::size_t>(size());
    if (type == SANE_TYPE_STRING) {
        const char* const text = static_cast<const char*>(value);
        return {text, strnlen(text, room)};
    }
    return wordsText(type, static_cast<const SANE_Word*>(value),
                     std::min(words.size(), room / sizeof(SANE_Word)));
}

} // namespace kestrel::sim
