/// @file
/// Scanned pages: the pictures lie in a folder, what is shown of them is kept in memory.
#pragma once

#include <QDir>
#include <QImage>
#include <QMetaType>
#include <QString>

namespace kestrel {

/// One scanned image.
struct Page
{
    QString file;     ///< PNG with the full picture
    QImage thumbnail; ///< at most PageStore::thumbnailEdge pixels wide and high
    QSize pixels;     ///< size of the full picture
    int dpi = 0;      ///< resolution it was scanned with; never 0 in a stored page
};

/// Writes pages into one folder, as page-0001.png, page-0002.png, ... Files that are there already
/// are kept, numbering goes on after them. Used by one thread at a time.
class PageStore
{
public:
    static constexpr int thumbnailEdge = 360;
    static constexpr int fallbackDpi = 300;

    /// @param folder where the pages go; created when it does not exist
    explicit PageStore(const QString& folder);

    /// Stores a picture losslessly.
    /// @param picture the scanned image
    /// @param dpi its resolution; 0 when unknown
    /// @param[out] page receives the page
    /// @return what went wrong, in words; empty when the page has been stored
    QString add(const QImage& picture, int dpi, Page& page);

    /// @return the folder as an absolute path
    QString folder() const { return m_folder.absolutePath(); }

private:
    int nextNumber() const;

    QDir m_folder;
    int m_next = 0; ///< 0 until the folder has been looked at
};

} // namespace kestrel

Q_DECLARE_METATYPE(kestrel::Page)
