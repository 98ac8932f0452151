/// @file
/// Scanning a stack: start, read, next, until the paper is used up.
#pragma once

#include "page_store.h"

#include <QMetaType>
#include <QString>

#include <sane/sane.h>

#include <atomic>
#include <functional>

namespace kestrel {

/// What is to be scanned, decided before the scan starts.
struct ScanPlan
{
    int dpi = 0;        ///< resolution of the images; 0 when unknown
    int imageLimit = 0; ///< images after which to stop; 0: when the scanner says there is no paper
};

/// How a scan ended.
struct ScanEnd
{
    enum class Kind
    {
        Finished,
        Cancelled,
        Failed
    };

    Kind kind = Kind::Finished;
    int images = 0;          ///< images stored, also when the scan failed later on
    QString message;         ///< in words, for Kind::Failed
    bool deviceLost = false; ///< the scanner has to be opened again
};

/// What the loop tells while it runs; called in the thread that runs it, all may be empty.
struct ScanEvents
{
    std::function<void(int number)> imageStarted;                ///< number from 1
    std::function<void(int number, int permille)> imageProgress; ///< permille -1: unknown
    std::function<void(const Page& page)> pageReady;
};

/// Scans images until the stack is empty, the limit is reached, @p stop is set or something fails,
/// and ends with sane_cancel(). Blocks; meant for a thread of its own.
/// @param handle the open scanner, all its options set; nobody else may use it meanwhile
/// @param plan what to scan
/// @param store takes the pages
/// @param stop set from any thread to end the scan at the next piece of data
/// @param events told about the progress
ScanEnd scanImages(SANE_Handle handle, const ScanPlan& plan, PageStore& store,
                   const std::atomic<bool>& stop, const ScanEvents& events);

} // namespace kestrel

Q_DECLARE_METATYPE(kestrel::ScanEnd)
