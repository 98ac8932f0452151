#include "scanner/sane_device.h"

#include <algorithm>
#include <cstring>

namespace kestrel {
namespace {

// Devices have been seen to write a word more than they announce.
constexpr std::size_t kReadSlack = 16;

std::size_t bufferSize(SANE_Int optionSize, std::size_t atLeast)
{
    if (optionSize <= 0 || optionSize > kMaxOptionSize) {
        return atLeast;
    }
    return std::max(static_cast<std::size_t>(optionSize), atLeast);
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

double millimetres(const SANE_Option_Descriptor& option, SANE_Word word) noexcept
{
    return isFixed(option) ? fixedToMm(word) : word;
}

SaneDevice::OptionCount SaneDevice::optionCount() const
{
    OptionCount count;
    count.option = descriptor(0);
    if (count.option != nullptr) {
        std::array<SANE_Word, kReadSlack> value{};
        count.status =
            sane_control_option(handle_, 0, SANE_ACTION_GET_VALUE, value.data(), nullptr);
        count.value = value[0];
    }
    return count;
}

const SANE_Option_Descriptor* SaneDevice::descriptor(int index) const
{
    return sane_get_option_descriptor(handle_, index);
}

std::optional<SANE_Word> SaneDevice::readWord(int index) const
{
    std::array<SANE_Word, kReadSlack> value{};
    if (sane_control_option(handle_, index, SANE_ACTION_GET_VALUE, value.data(), nullptr) !=
        SANE_STATUS_GOOD) {
        return std::nullopt;
    }
    return value[0];
}

std::optional<QByteArray> SaneDevice::readText(int index,
                                               const SANE_Option_Descriptor& option) const
{
    if (option.size > kMaxOptionSize) {
        return std::nullopt;
    }
    const auto size = bufferSize(option.size, kStringValueSize);
    std::vector<char> buffer(size + kReadSlack);
    if (sane_control_option(handle_, index, SANE_ACTION_GET_VALUE, buffer.data(), nullptr) !=
        SANE_STATUS_GOOD) {
        return std::nullopt;
    }
    return QByteArray(buffer.data(), static_cast<int>(strnlen(buffer.data(), size)));
}

SANE_Status SaneDevice::writeWord(int index, SANE_Word word, SANE_Int optionSize) const
{
    // The backend reads as many bytes as the descriptor says.
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
    // Zeroes behind the 64 bytes stop a backend that looks for the missing terminator.
    std::vector<char> value(bufferSize(optionSize, 2 * kStringValueSize));
    std::copy_n(text, length, value.begin());
    return write(index, value.data());
}

SANE_Status SaneDevice::writeGamma(int index, const GammaTable& table, SANE_Int optionSize) const
{
    static_assert(sizeof(GammaTable::value_type) == sizeof(SANE_Word));
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
