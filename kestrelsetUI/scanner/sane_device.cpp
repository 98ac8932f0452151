#include "scanner/sane_device.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace kestrel {
namespace {

// Drivers write a terminator, or a word, behind the size that they announce.
constexpr std::size_t kReadSlack = 64;

bool absurd(SANE_Int optionSize)
{
    return optionSize > kMaxOptionSize;
}

/// As many bytes as the option has, but not fewer than @p atLeast.
std::size_t bufferSize(SANE_Int optionSize, std::size_t atLeast)
{
    return optionSize > 0 ? std::max(static_cast<std::size_t>(optionSize), atLeast) : atLeast;
}

std::size_t wordCount(SANE_Int optionSize, std::size_t atLeast)
{
    return (bufferSize(optionSize, atLeast * sizeof(SANE_Word)) + sizeof(SANE_Word) - 1) /
           sizeof(SANE_Word);
}

std::optional<WordRange> listRange(const SANE_Word* list)
{
    if (list == nullptr || list[0] < 1 || list[0] > kMaxOptionSize) {
        return std::nullopt;
    }
    const auto [min, max] = std::minmax_element(list + 1, list + 1 + list[0]);
    return WordRange{*min, *max};
}

} // namespace

bool isActive(const SANE_Option_Descriptor& option) noexcept
{
    return SANE_OPTION_IS_ACTIVE(option.cap);
}

bool isFixed(const SANE_Option_Descriptor& option) noexcept
{
    return option.type == SANE_TYPE_FIXED;
}

std::optional<WordRange> wordRange(const SANE_Option_Descriptor& option)
{
    if (option.constraint_type == SANE_CONSTRAINT_WORD_LIST) {
        return listRange(option.constraint.word_list);
    }
    if (option.constraint_type != SANE_CONSTRAINT_RANGE || option.constraint.range == nullptr) {
        return std::nullopt;
    }
    return WordRange{option.constraint.range->min, option.constraint.range->max};
}

std::vector<const char*> stringList(const SANE_Option_Descriptor& option)
{
    std::vector<const char*> entries;
    if (option.constraint_type == SANE_CONSTRAINT_STRING_LIST &&
        option.constraint.string_list != nullptr) {
        for (auto entry = option.constraint.string_list; *entry != nullptr; ++entry) {
            entries.push_back(*entry);
        }
    }
    return entries;
}

int wholeUnits(const SANE_Option_Descriptor& option, SANE_Word word) noexcept
{
    return isFixed(option) ? static_cast<int>(fixedToMm(word)) : word;
}

SANE_Fixed fixedLength(const SANE_Option_Descriptor& option, SANE_Word word) noexcept
{
    constexpr SANE_Word kMax = std::numeric_limits<SANE_Word>::max() >> SANE_FIXED_SCALE_SHIFT;
    return isFixed(option) ? word : std::clamp(word, -kMax, kMax) * (1 << SANE_FIXED_SCALE_SHIFT);
}

double millimetres(const SANE_Option_Descriptor& option, SANE_Word word) noexcept
{
    return isFixed(option) ? fixedToMm(word) : word;
}

SANE_Fixed mmToFixed(double mm) noexcept
{
    constexpr double kMin = std::numeric_limits<SANE_Word>::min();
    constexpr double kMax = std::numeric_limits<SANE_Word>::max();
    const double scaled = mm * (1 << SANE_FIXED_SCALE_SHIFT);
    return std::isnan(scaled) ? 0 : static_cast<SANE_Fixed>(std::clamp(scaled, kMin, kMax));
}

SaneDevice::OptionCount SaneDevice::optionCount() const
{
    OptionCount count;
    count.option = descriptor(0);
    if (count.option != nullptr) {
        std::vector<SANE_Word> value;
        count.status = read(0, *count.option, value);
        count.value = value.empty() ? 0 : value.front();
    }
    return count;
}

const SANE_Option_Descriptor* SaneDevice::descriptor(int index) const
{
    return sane_get_option_descriptor(handle_, index);
}

SANE_Status SaneDevice::read(int index, const SANE_Option_Descriptor& option,
                             std::vector<SANE_Word>& value) const
{
    if (absurd(option.size)) {
        return SANE_STATUS_INVAL;
    }
    value.assign(wordCount(option.size, 1) + kReadSlack / sizeof(SANE_Word), 0);
    return sane_control_option(handle_, index, SANE_ACTION_GET_VALUE, value.data(), nullptr);
}

std::optional<SANE_Word> SaneDevice::readWord(int index, const SANE_Option_Descriptor& option) const
{
    std::vector<SANE_Word> value;
    return read(index, option, value) == SANE_STATUS_GOOD ? std::make_optional(value.front())
                                                          : std::nullopt;
}

std::optional<QByteArray> SaneDevice::readText(int index,
                                               const SANE_Option_Descriptor& option) const
{
    std::vector<SANE_Word> value;
    if (read(index, option, value) != SANE_STATUS_GOOD) {
        return std::nullopt;
    }
    const auto* const text = reinterpret_cast<const char*>(value.data());
    const auto size = value.size() * sizeof(SANE_Word);
    return QByteArray(text, static_cast<int>(strnlen(text, size)));
}

SANE_Status SaneDevice::writeWord(int index, SANE_Word word, SANE_Int optionSize) const
{
    if (absurd(optionSize)) {
        return SANE_STATUS_INVAL;
    }
    std::vector<SANE_Word> value(wordCount(optionSize, 1));
    value[0] = word;
    return write(index, value.data());
}

SANE_Status SaneDevice::writeText(int index, const char* text, SANE_Int optionSize) const
{
    const auto length = std::strlen(text);
    if (length > kStringValueSize) {
        std::abort();
    }
    if (absurd(optionSize)) {
        return SANE_STATUS_INVAL;
    }
    // Zeroes behind the 64 bytes stop a backend that looks for the missing terminator.
    std::vector<char> value(bufferSize(optionSize, 2 * kStringValueSize));
    std::copy_n(text, length, value.begin());
    return write(index, value.data());
}

SANE_Status SaneDevice::writeGamma(int index, const GammaTable& table, SANE_Int optionSize) const
{
    static_assert(sizeof(GammaTable::value_type) == sizeof(SANE_Word));
    if (absurd(optionSize)) {
        return SANE_STATUS_INVAL;
    }
    std::vector<SANE_Word> value(wordCount(optionSize, table.size()), table.back());
    std::copy(table.begin(), table.end(), value.begin());
    return write(index, value.data());
}

SANE_Status SaneDevice::pressButton(int index) const
{
    return write(index, nullptr);
}

SANE_Status SaneDevice::write(int index, void* value) const
{
    // The info word is not asked for: nothing is reloaded between the settings of one run.
    return sane_control_option(handle_, index, SANE_ACTION_SET_VALUE, value, nullptr);
}

} // namespace kestrel
