/// @file
/// The scanned pages as a list of thumbnails.
#pragma once

#include "page_store.h"

#include <QAbstractListModel>
#include <QIcon>

#include <vector>

namespace kestrel {

/// One row a page, in scanning order.
class PageList : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void append(const Page& page);

    /// Removes pages and their files.
    /// @param rows any order, may name a row twice
    void remove(std::vector<int> rows);

    const std::vector<Page>& pages() const { return m_pages; }
    bool isEmpty() const { return m_pages.empty(); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    std::vector<Page> m_pages;
    std::vector<QIcon> m_icons; ///< of the same rows
};

} // namespace kestrel
