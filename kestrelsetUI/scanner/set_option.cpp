#include "scanner/sane_device.h"
#include "system/signal_blocker.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <strings.h>

namespace kestrel {
namespace {

struct FoundOption
{
    int index;
    const SANE_Option_Descriptor* option;
};

/// The option of that name, or the index behind the last one with the descriptor read last.
FoundOption find(const SaneDevice& device, const SaneDevice::OptionCount& count, const char* name)
{
    FoundOption found{count.value, count.option};
    for (int i = 1; i < count.walkEnd(); ++i) {
        const auto* option = device.descriptor(i);
        if (option == nullptr) {
            continue;
        }
        found.option = option;
        if (option->name != nullptr && strcasecmp(option->name, name) == 0) {
            found.index = i;
            break;
        }
    }
    return found;
}

bool isGammaTable(const char* name)
{
    static constexpr std::array kNames = {"gamma-table", "red-gamma-table", "green-gamma-table",
                                          "blue-gamma-table"};
    return std::any_of(kNames.begin(), kNames.end(),
                       [name](const char* known) { return strcasecmp(known, name) == 0; });
}

SANE_Word toWord(const char* text)
{
    return static_cast<SANE_Word>(std::strtol(text, nullptr, 10));
}

SANE_Fixed toFixed(const char* text)
{
    // Not strtod(): the host's locale may want a comma.
    double number = 0.0;
    std::from_chars(text, text + std::strlen(text), number);
    return mmToFixed(number);
}

} // namespace

SANE_Status setOptionByName(SANE_Handle handle, const char* name, const char* value,
                            const GammaTable& gamma)
{
    if (handle == nullptr) {
        return SANE_STATUS_GOOD;
    }
    const SignalBlocker noBrokenPipe(SIGPIPE);
    const SaneDevice device(handle);
    const auto count = device.optionCount();
    if (count.option == nullptr || count.value <= 0) {
        return count.status;
    }
    const auto [index, option] = find(device, count, name);
    const char* const text = value != nullptr ? value : "";
    switch (option->type) {
    case SANE_TYPE_BOOL:
        return device.writeWord(index, toWord(text), option->size);
    case SANE_TYPE_INT:
        return isGammaTable(name) ? device.writeGamma(index, gamma, option->size)
                                  : device.writeWord(index, toWord(text), option->size);
    case SANE_TYPE_FIXED:
        return device.writeWord(index, toFixed(text), option->size);
    case SANE_TYPE_STRING:
        return device.writeText(index, text, option->size);
    case SANE_TYPE_BUTTON:
        return device.pressButton(index);
    case SANE_TYPE_GROUP:
        break;
    }
    return count.status;
}

} // namespace kestrel
