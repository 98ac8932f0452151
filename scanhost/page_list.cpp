#include "page_list.h"

#include "page_export.h"

#include <QFile>

#include <algorithm>

namespace kestrel {

void PageList::append(const Page& page)
{
    const int row = rowCount();
    beginInsertRows({}, row, row);
    m_pages.push_back(page);
    m_icons.emplace_back(QPixmap::fromImage(page.thumbnail));
    endInsertRows();
}

void PageList::remove(std::vector<int> rows)
{
    std::sort(rows.rbegin(), rows.rend());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (const int row : rows) {
        if (row < 0 || row >= rowCount()) {
            continue;
        }
        beginRemoveRows({}, row, row);
        const auto page = m_pages.begin() + row;
        QFile::remove(page->file);
        m_pages.erase(page);
        m_icons.erase(m_icons.begin() + row);
        endRemoveRows();
    }
    // The numbers under the pages behind have changed.
    if (!m_pages.empty()) {
        emit dataChanged(index(0), index(rowCount() - 1));
    }
}

int PageList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_pages.size());
}

QVariant PageList::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const Page& page = m_pages[static_cast<std::size_t>(index.row())];
    const QSizeF mm = pageSizeMm(page);
    switch (role) {
    case Qt::DisplayRole:
        return tr("第 %1 页").arg(index.row() + 1);
    case Qt::DecorationRole:
        return m_icons[static_cast<std::size_t>(index.row())];
    case Qt::ToolTipRole:
        return tr("%1 × %2 像素，%3 dpi，%4 × %5 毫米")
            .arg(page.pixels.width())
            .arg(page.pixels.height())
            .arg(page.dpi)
            .arg(mm.width(), 0, 'f', 1)
            .arg(mm.height(), 0, 'f', 1);
    default:
        return {};
    }
}

} // namespace kestrel
