#include "scanner/status_text.h"

#include <algorithm>
#include <array>

namespace kestrel {
namespace {

struct StatusText
{
    SANE_Status status;
    const char* text;
};

// clang-format off
constexpr std::array<StatusText, 11> kTexts = {{
    {SANE_STATUS_UNSUPPORTED,   "扫描仪状态错误"},
    {SANE_STATUS_CANCELLED,     "扫描仪状态错误"},
    {SANE_STATUS_DEVICE_BUSY,   "扫描仪忙，请稍后再试"},
    {SANE_STATUS_INVAL,         "数据无效，没有打开的设备"},
    {SANE_STATUS_EOF,           "扫描仪状态错误"},
    {SANE_STATUS_JAMMED,        "文档进纸器被卡住"},
    {SANE_STATUS_NO_DOCS,       "没有纸张"},
    {SANE_STATUS_COVER_OPEN,    "扫描仪的盖子被打开"},
    {SANE_STATUS_IO_ERROR,      "扫描仪输入输出错误，可能扫描仪已断开"},
    {SANE_STATUS_NO_MEM,        "扫描仪状态错误"},
    {SANE_STATUS_ACCESS_DENIED, "对资源的访问已被拒绝"},
}};
// clang-format on

} // namespace

const char* statusText(SANE_Status status) noexcept
{
    const auto* const found = std::find_if(
        kTexts.begin(), kTexts.end(), [status](const auto& row) { return row.status == status; });
    return found != kTexts.end() ? found->text : nullptr;
}

} // namespace kestrel
