#include "support/fake_option.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace kestrel::test {

namespace {

constexpr std::size_t stringBuffer = 64;

std::vector<unsigned char> bytesOf(const std::vector<SANE_Word>& words)
{
    std::vector<unsigned char> bytes(words.size() * sizeof(SANE_Word));
    if (!words.empty()) {
        std::memcpy(bytes.data(), words.data(), bytes.size());
    }
    return bytes;
}

std::vector<SANE_Word> wordsOf(const std::vector<unsigned char>& bytes)
{
    std::vector<SANE_Word> words(bytes.size() / sizeof(SANE_Word));
    if (!words.empty()) { // without a value there is nowhere to copy from
        std::memcpy(words.data(), bytes.data(), words.size() * sizeof(SANE_Word));
    }
    return words;
}

SANE_Word fixedOf(double value)
{
    return static_cast<SANE_Word>(std::lround(value * 65536.0));
}

std::string decimal(SANE_Word fixed)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.4f", fixed / 65536.0);
    std::string trimmed(text);
    trimmed.erase(trimmed.find_last_not_of('0') + 1);
    if (trimmed.back() == '.') {
        trimmed.pop_back();
    }
    return trimmed == "-0" ? "0" : trimmed;
}

bool isWordType(SANE_Value_Type type)
{
    return type == SANE_TYPE_BOOL || type == SANE_TYPE_INT || type == SANE_TYPE_FIXED;
}

} // namespace

FakeOption::FakeOption(const std::string& name, SANE_Value_Type type, SANE_Int size)
    : m_name(name), m_title(name), m_type(type), m_size(size)
{
}

FakeOption FakeOption::boolean(const std::string& name, bool value)
{
    return FakeOption(name, SANE_TYPE_BOOL, sizeof(SANE_Word)).word(value ? SANE_TRUE : SANE_FALSE);
}

FakeOption FakeOption::integer(const std::string& name, SANE_Word value)
{
    return FakeOption(name, SANE_TYPE_INT, sizeof(SANE_Word)).word(value);
}

FakeOption FakeOption::fixed(const std::string& name, double value)
{
    return FakeOption(name, SANE_TYPE_FIXED, sizeof(SANE_Word)).word(fixedOf(value));
}

FakeOption FakeOption::text(const std::string& name, const std::string& value)
{
    return FakeOption(name, SANE_TYPE_STRING, stringBuffer).string(value);
}

FakeOption FakeOption::choice(const std::string& name, const std::vector<std::string>& entries,
                              const std::string& value)
{
    std::size_t longest = value.size();
    for (const std::string& entry : entries) {
        longest = std::max(longest, entry.size());
    }
    return FakeOption(name, SANE_TYPE_STRING, static_cast<SANE_Int>(longest + 1))
        .strings(entries)
        .string(value);
}

FakeOption FakeOption::button(const std::string& name)
{
    return {name, SANE_TYPE_BUTTON, 0};
}

FakeOption FakeOption::group(const std::string& title)
{
    FakeOption option(title, SANE_TYPE_GROUP, 0);
    option.m_cap = 0;
    return option.unnamed();
}

FakeOption FakeOption::array(const std::string& name, const std::vector<SANE_Word>& values)
{
    return FakeOption(name, SANE_TYPE_INT, static_cast<SANE_Int>(values.size() * sizeof(SANE_Word)))
        .bytes(bytesOf(values));
}

FakeOption& FakeOption::unit(SANE_Unit unit)
{
    m_unit = unit;
    return *this;
}

FakeOption& FakeOption::inactive(bool inactive)
{
    m_cap = inactive ? (m_cap | SANE_CAP_INACTIVE) : (m_cap & ~SANE_CAP_INACTIVE);
    return *this;
}

FakeOption& FakeOption::cap(SANE_Int cap)
{
    m_cap = cap;
    return *this;
}

FakeOption& FakeOption::size(SANE_Int size)
{
    m_size = size;
    return *this;
}

FakeOption& FakeOption::type(SANE_Value_Type type)
{
    m_type = type;
    return *this;
}

FakeOption& FakeOption::range(SANE_Word min, SANE_Word max, SANE_Word quant)
{
    m_constraint = SANE_CONSTRAINT_RANGE;
    m_range = {min, max, quant};
    return *this;
}

FakeOption& FakeOption::limits(double min, double max)
{
    return range(fixedOf(min), fixedOf(max));
}

FakeOption& FakeOption::words(const std::vector<SANE_Word>& words)
{
    m_constraint = SANE_CONSTRAINT_WORD_LIST;
    m_words.assign(1, static_cast<SANE_Word>(words.size()));
    m_words.insert(m_words.end(), words.begin(), words.end());
    return *this;
}

FakeOption& FakeOption::strings(const std::vector<std::string>& entries)
{
    m_constraint = SANE_CONSTRAINT_STRING_LIST;
    m_strings = entries;
    return *this;
}

FakeOption& FakeOption::unconstrained()
{
    m_constraint = SANE_CONSTRAINT_NONE;
    return *this;
}

FakeOption& FakeOption::nullConstraint()
{
    m_nullConstraint = true;
    return *this;
}

FakeOption& FakeOption::unnamed()
{
    m_named = false;
    return *this;
}

FakeOption& FakeOption::undescribed(int times)
{
    m_timesUndescribed = times;
    return *this;
}

FakeOption& FakeOption::bytes(const std::vector<unsigned char>& value)
{
    m_value = value;
    return *this;
}

FakeOption& FakeOption::word(SANE_Word value)
{
    return bytes(bytesOf({value}));
}

FakeOption& FakeOption::string(const std::string& value)
{
    m_value.assign(value.begin(), value.end());
    m_value.push_back(0);
    return *this;
}

bool FakeOption::isNumber() const
{
    return isWordType(m_type);
}

std::vector<unsigned char> FakeOption::readInto(void* buffer) const
{
    std::size_t room = m_size > 0 ? static_cast<std::size_t>(m_size) : 0;
    if (isWordType(m_type)) {
        room = std::max(room, sizeof(SANE_Word));
    }
    const std::size_t count = std::min(room, m_value.size());
    if (buffer == nullptr || count == 0) {
        return {};
    }
    std::memcpy(buffer, m_value.data(), count);
    return {m_value.begin(), m_value.begin() + static_cast<std::ptrdiff_t>(count)};
}

std::vector<unsigned char> FakeOption::takeFrom(const void* buffer, bool wholeBuffer) const
{
    if (buffer == nullptr || m_type == SANE_TYPE_BUTTON || m_type == SANE_TYPE_GROUP) {
        return {};
    }
    const auto* const begin = static_cast<const unsigned char*>(buffer);
    std::size_t count = 0;
    if (m_type == SANE_TYPE_STRING) {
        while (count < stringBuffer && begin[count] != 0) {
            ++count;
        }
        count = wholeBuffer ? stringBuffer : std::min(count + 1, stringBuffer);
    } else {
        count = std::max(static_cast<std::size_t>(std::max(m_size, 0)), sizeof(SANE_Word));
    }
    return {begin, begin + count};
}

std::string FakeOption::decode(SANE_Value_Type type, const std::vector<unsigned char>& bytes)
{
    if (type == SANE_TYPE_STRING) {
        return {bytes.begin(), std::find(bytes.begin(), bytes.end(), 0)};
    }
    if (!isWordType(type)) {
        return {};
    }
    const auto show = [type](SANE_Word word) {
        return type == SANE_TYPE_FIXED ? decimal(word) : std::to_string(word);
    };
    const std::vector<SANE_Word> words = wordsOf(bytes);
    if (words.empty()) {
        return {};
    }
    if (words.size() == 1) {
        return show(words[0]);
    }
    std::string text("{");
    for (std::size_t quarter = 0; quarter <= 4; ++quarter) {
        const std::size_t at = std::min(quarter * words.size() / 4, words.size() - 1);
        text += (quarter == 0 ? "" : ",") + show(words[at]);
    }
    return text + "}";
}

void FakeOption::describe()
{
    m_stringPointers.clear();
    for (const std::string& entry : m_strings) {
        m_stringPointers.push_back(entry.c_str());
    }
    m_stringPointers.push_back(nullptr);
    m_descriptor = {};
    m_descriptor.name = m_named ? m_name.c_str() : nullptr;
    m_descriptor.title = m_title.c_str();
    m_descriptor.desc = m_title.c_str();
    m_descriptor.type = m_type;
    m_descriptor.unit = m_unit;
    m_descriptor.size = m_size;
    m_descriptor.cap = m_cap;
    m_descriptor.constraint_type = m_constraint;
    if (m_nullConstraint) {
        return;
    }
    if (m_constraint == SANE_CONSTRAINT_RANGE) {
        m_descriptor.constraint.range = &m_range;
    } else if (m_constraint == SANE_CONSTRAINT_WORD_LIST) {
        m_descriptor.constraint.word_list = m_words.data();
    } else if (m_constraint == SANE_CONSTRAINT_STRING_LIST) {
        m_descriptor.constraint.string_list = m_stringPointers.data();
    }
}

const SANE_Option_Descriptor* FakeOption::descriptor()
{
    if (m_timesUndescribed > 0) {
        --m_timesUndescribed;
        return nullptr;
    }
    describe();
    return &m_descriptor;
}

} // namespace kestrel::test
