#include "status.h"

#include <array>

namespace kestrel::sim {
namespace {

struct Row
{
    SANE_Status status;
    const char* name;
};

// clang-format off
constexpr std::array<Row, 12> rows{{
    {SANE_STATUS_GOOD,          "good"},
    {SANE_STATUS_UNSUPPORTED,   "unsupported"},
    {SANE_STATUS_CANCELLED,     "cancelled"},
    {SANE_STATUS_DEVICE_BUSY,   "busy"},
    {SANE_STATUS_INVAL,         "inval"},
    {SANE_STATUS_EOF,           "eof"},
    {SANE_STATUS_JAMMED,        "jammed"},
    {SANE_STATUS_NO_DOCS,       "no-docs"},
    {SANE_STATUS_COVER_OPEN,    "cover-open"},
    {SANE_STATUS_IO_ERROR,      "io-error"},
    {SANE_STATUS_NO_MEM,        "no-mem"},
    {SANE_STATUS_ACCESS_DENIED, "access-denied"},
}};
// clang-format on

} // namespace

const char* statusName(SANE_Status status) noexcept
{
    for (const Row& row : rows) {
        if (row.status == status) {
            return row.name;
        }
    }
    return "unknown";
}

std::optional<SANE_Status> statusFromName(const std::string& name)
{
    for (const Row& row : rows) {
        if (name == row.name) {
            return row.status;
        }
    }
    return std::nullopt;
}

} // namespace kestrel::sim
