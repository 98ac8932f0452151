#include "scanner_device.h"

#include <algorithm>
#include <cstring>

namespace kestrel {

namespace {

constexpr SANE_Int maxOptions = 10'000;
constexpr SANE_Int maxTextSize = 64 * 1024;

QString text(SANE_String_Const value)
{
    return value == nullptr ? QString() : QString::fromUtf8(value).trimmed();
}

} // namespace

QString ScannerInfo::title() const
{
    const QString both = QStringLiteral("%1 %2").arg(vendor, model).trimmed();
    return both.isEmpty() ? name : both;
}

SaneLibrary::SaneLibrary()
{
    SANE_Int version = 0;
    m_status = sane_init(&version, nullptr);
}

SaneLibrary::~SaneLibrary()
{
    if (m_status == SANE_STATUS_GOOD) {
        sane_exit();
    }
}

std::vector<ScannerInfo> SaneLibrary::devices(SANE_Status* status)
{
    const SANE_Device** list = nullptr;
    const SANE_Status result = sane_get_devices(&list, SANE_FALSE);
    if (status != nullptr) {
        *status = result;
    }
    std::vector<ScannerInfo> found;
    if (result == SANE_STATUS_GOOD && list != nullptr) {
        for (; *list != nullptr; ++list) {
            const SANE_Device& device = **list;
            if (device.name != nullptr) {
                found.push_back({QString::fromUtf8(device.name), text(device.vendor),
                                 text(device.model), text(device.type)});
            }
        }
    }
    return found;
}

SANE_Status ScannerDevice::open(const ScannerInfo& info)
{
    close();
    SANE_Handle handle = nullptr;
    const SANE_Status status = sane_open(info.name.toUtf8().constData(), &handle);
    if (status != SANE_STATUS_GOOD) {
        return status;
    }
    if (handle == nullptr) {
        return SANE_STATUS_INVAL;
    }
    m_handle = handle;
    m_info = info;
    return status;
}

void ScannerDevice::close()
{
    if (m_handle != nullptr) {
        sane_close(m_handle);
        m_handle = nullptr;
    }
}

std::optional<ScannerDevice::Found> ScannerDevice::find(const char* name) const
{
    if (m_handle == nullptr) {
        return std::nullopt;
    }
    // Option 0 is the number of options; its descriptor has to be asked for before its value.
    SANE_Int count = 0;
    if (sane_get_option_descriptor(m_handle, 0) == nullptr ||
        sane_control_option(m_handle, 0, SANE_ACTION_GET_VALUE, &count, nullptr) !=
            SANE_STATUS_GOOD) {
        return std::nullopt;
    }
    for (SANE_Int index = 1; index < std::min(count, maxOptions); ++index) {
        const SANE_Option_Descriptor* descriptor = sane_get_option_descriptor(m_handle, index);
        if (descriptor != nullptr && descriptor->name != nullptr &&
            std::strcmp(descriptor->name, name) == 0) {
            const bool readable =
                SANE_OPTION_IS_ACTIVE(descriptor->cap) && (descriptor->cap & SANE_CAP_SOFT_DETECT);
            return readable ? std::optional(Found{index, descriptor}) : std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<QString> ScannerDevice::textOption(const char* name) const
{
    const auto found = find(name);
    if (!found || found->descriptor->type != SANE_TYPE_STRING || found->descriptor->size < 1 ||
        found->descriptor->size > maxTextSize) {
        return std::nullopt;
    }
    std::vector<char> buffer(static_cast<std::size_t>(found->descriptor->size) + 1, '\0');
    if (sane_control_option(m_handle, found->index, SANE_ACTION_GET_VALUE, buffer.data(),
                            nullptr) != SANE_STATUS_GOOD) {
        return std::nullopt;
    }
    buffer.back() = '\0';
    return QString::fromUtf8(buffer.data());
}

std::optional<double> ScannerDevice::numberOption(const char* name) const
{
    const auto found = find(name);
    if (!found || found->descriptor->size != static_cast<SANE_Int>(sizeof(SANE_Word)) ||
        found->descriptor->type > SANE_TYPE_FIXED) {
        return std::nullopt;
    }
    SANE_Word word = 0;
    if (sane_control_option(m_handle, found->index, SANE_ACTION_GET_VALUE, &word, nullptr) !=
        SANE_STATUS_GOOD) {
        return std::nullopt;
    }
    return found->descriptor->type == SANE_TYPE_FIXED ? SANE_UNFIX(word) : double(word);
}

} // namespace kestrel
