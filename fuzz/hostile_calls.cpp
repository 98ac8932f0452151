// The calls between the dialog and the stand-in: a backend may use every byte of a buffer that its
// descriptor promises, so each buffer is touched from end to end first.
#include "hostile_scanner.h"

#include <sane/sane.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include <unistd.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the linker looks for these names
extern "C" {

SANE_Status __real_sane_control_option(SANE_Handle handle, SANE_Int index, SANE_Action action,
                                       void* value, SANE_Int* info);
SANE_Status __real_sane_read(SANE_Handle handle, SANE_Byte* data, SANE_Int maxLength,
                             SANE_Int* length);

SANE_Status __wrap_sane_control_option(SANE_Handle handle, SANE_Int index, SANE_Action action,
                                       void* value, SANE_Int* info)
{
    if (index > 0 && index >= kestrel::fuzz::saidOptions()) {
        return SANE_STATUS_INVAL;
    }
    const auto* const option = sane_get_option_descriptor(handle, index);
    const bool hasBytes = option != nullptr && value != nullptr && option->size > 0 &&
                          option->type != SANE_TYPE_BUTTON && option->type != SANE_TYPE_GROUP;
    if (hasBytes) {
        const auto size = static_cast<std::size_t>(option->size);
        if (action == SANE_ACTION_GET_VALUE) {
            std::memset(value, 0x5a, size);
        } else {
            std::vector<unsigned char> all(size);
            std::memcpy(all.data(), value, size);
        }
    }
    return __real_sane_control_option(handle, index, action, value, info);
}

SANE_Status __wrap_sane_read(SANE_Handle handle, SANE_Byte* data, SANE_Int maxLength,
                             SANE_Int* length)
{
    if (maxLength > 0) {
        data[0] = 0x5a;
        data[maxLength - 1] = 0x5a;
    }
    const SANE_Status status = __real_sane_read(handle, data, maxLength, length);
    auto& lie = kestrel::fuzz::readLie();
    if (lie.times > 0) {
        --lie.times;
        *length = lie.length;
    }
    return status;
}

// The scanner is given time to settle before a message; there is none here.
int __wrap_usleep(useconds_t /*time*/)
{
    return 0;
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
