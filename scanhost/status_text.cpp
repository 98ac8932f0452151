#include "status_text.h"

#include <QCoreApplication>

#include <array>

namespace kestrel {

namespace {

struct Row
{
    SANE_Status status;
    const char* text;
};

// clang-format off
constexpr std::array<Row, 12> rows{{
    {SANE_STATUS_GOOD,          QT_TRANSLATE_NOOP("StatusText", "正常")},
    {SANE_STATUS_UNSUPPORTED,   QT_TRANSLATE_NOOP("StatusText", "扫描仪不支持此操作")},
    {SANE_STATUS_CANCELLED,     QT_TRANSLATE_NOOP("StatusText", "扫描已取消")},
    {SANE_STATUS_DEVICE_BUSY,   QT_TRANSLATE_NOOP("StatusText", "扫描仪忙，请稍后再试")},
    {SANE_STATUS_INVAL,         QT_TRANSLATE_NOOP("StatusText", "扫描仪不接受当前设置")},
    {SANE_STATUS_EOF,           QT_TRANSLATE_NOOP("StatusText", "扫描仪没有送来图像数据")},
    {SANE_STATUS_JAMMED,        QT_TRANSLATE_NOOP("StatusText", "文档进纸器卡纸，请取出纸张后再试")},
    {SANE_STATUS_NO_DOCS,       QT_TRANSLATE_NOOP("StatusText", "没有纸张，请放入纸张后再试")},
    {SANE_STATUS_COVER_OPEN,    QT_TRANSLATE_NOOP("StatusText", "扫描仪的盖子被打开，请合上后再试")},
    {SANE_STATUS_IO_ERROR,      QT_TRANSLATE_NOOP("StatusText", "与扫描仪通信出错，扫描仪可能已断开")},
    {SANE_STATUS_NO_MEM,        QT_TRANSLATE_NOOP("StatusText", "内存不足")},
    {SANE_STATUS_ACCESS_DENIED, QT_TRANSLATE_NOOP("StatusText", "没有使用这台扫描仪的权限")},
}};
// clang-format on

} // namespace

QString statusText(SANE_Status status)
{
    for (const Row& row : rows) {
        if (row.status == status) {
            return QCoreApplication::translate("StatusText", row.text);
        }
    }
    return QCoreApplication::translate("StatusText", "扫描仪报告未知状态（%1）")
        .arg(static_cast<int>(status));
}

QString openStatusText(SANE_Status status)
{
    // No settings have been made yet; what libsane does not accept is the name.
    return status == SANE_STATUS_INVAL
               ? QCoreApplication::translate("StatusText", "没有这台扫描仪，或者它已断开")
               : statusText(status);
}

bool meansDeviceLost(SANE_Status status)
{
    return status == SANE_STATUS_IO_ERROR || status == SANE_STATUS_INVAL;
}

} // namespace kestrel
