/// @file
/// Saving pages as PDF, PNG or TIFF.
#pragma once

#include "page_store.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace kestrel {

enum class FileFormat
{
    Pdf,
    Png,
    Tiff
};

/// @return the formats that can be written here; TIFF needs a plugin of Qt
std::vector<FileFormat> availableFormats();

/// @return the usual ending of a file name, without the dot
QString fileSuffix(FileFormat format);

/// @return the name of the format for a file dialog, with its pattern
QString fileFilter(FileFormat format);

/// @return the size of a page on paper, in millimetres
QSizeF pageSizeMm(const Page& page);

/// @return the files that saving @p count pages under @p path writes: one for PDF and for a single
/// page,
///         otherwise numbered ones
QStringList exportFiles(const QString& path, FileFormat format, int count);

/// Called after each page with the number of pages done; false stops the export.
using ExportProgress = std::function<bool(int done)>;

/// Saves pages. Existing files are replaced, each only when its successor is complete. May run in
/// any thread.
/// @param pages the pages, in their order; at least one
/// @param path file name with its ending
/// @param format what to write
/// @param progress may be empty
/// @return what went wrong, in words; empty when all is saved or the export was stopped
QString exportPages(const std::vector<Page>& pages, const QString& path, FileFormat format,
                    const ExportProgress& progress = {});

} // namespace kestrel
