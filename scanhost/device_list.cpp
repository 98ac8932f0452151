#include "device_list.h"

#include <algorithm>

namespace kestrel {

void DeviceList::setDevices(std::vector<ScannerInfo> devices)
{
    beginResetModel();
    m_devices = std::move(devices);
    endResetModel();
}

const ScannerInfo* DeviceList::at(int row) const
{
    return row >= 0 && row < rowCount() ? &m_devices[static_cast<std::size_t>(row)] : nullptr;
}

int DeviceList::rowOf(const QString& deviceName) const
{
    const auto found = std::find_if(m_devices.begin(), m_devices.end(),
                                    [&](const ScannerInfo& d) { return d.name == deviceName; });
    return found == m_devices.end() ? -1 : static_cast<int>(found - m_devices.begin());
}

int DeviceList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_devices.size());
}

QString DeviceList::label(const ScannerInfo& info) const
{
    const auto twins = std::count_if(m_devices.begin(), m_devices.end(), [&](const ScannerInfo& d) {
        return d.title() == info.title();
    });
    return twins > 1 ? QStringLiteral("%1 (%2)").arg(info.title(), info.name) : info.title();
}

QVariant DeviceList::data(const QModelIndex& index, int role) const
{
    const ScannerInfo* info = at(index.row());
    if (info == nullptr) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return label(*info);
    case Qt::ToolTipRole:
        return info->name;
    default:
        return {};
    }
}

} // namespace kestrel
