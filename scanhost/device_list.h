/// @file
/// The scanners as a list for a combo box.
#pragma once

#include "scanner_device.h"

#include <QAbstractListModel>

#include <vector>

namespace kestrel {

/// One row a scanner; maker and model are shown, the device name is the tool tip.
class DeviceList : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// Replaces all rows.
    void setDevices(std::vector<ScannerInfo> devices);

    /// @return the scanner of @p row; null outside the list
    const ScannerInfo* at(int row) const;

    /// @return the row of the scanner with this SANE device name, -1 when there is none
    int rowOf(const QString& deviceName) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    /// @return title, made unique with the device name where two scanners share one
    QString label(const ScannerInfo& info) const;

    std::vector<ScannerInfo> m_devices;
};

} // namespace kestrel
