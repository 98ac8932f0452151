/// @file
/// A scan in a thread of its own.
#pragma once

#include "scan_loop.h"

#include <QObject>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <memory>

namespace kestrel {

/// Runs scanImages() in a thread and reports by signals, which arrive in the thread of this object.
class ScanWorker : public QObject
{
    Q_OBJECT

public:
    explicit ScanWorker(QObject* parent = nullptr);
    /// Ends a running scan and waits for it.
    ~ScanWorker() override;
    Q_DISABLE_COPY_MOVE(ScanWorker)

    /// Starts a scan; does nothing while one is running.
    /// @param handle the open scanner; not to be used by anyone else until finished()
    /// @param plan what to scan
    /// @param store takes the pages; has to outlive the scan
    void start(SANE_Handle handle, const ScanPlan& plan, PageStore& store);

    /// Asks the scan to end; finished() follows. Returns at once.
    void cancel();

    bool isRunning() const { return m_thread != nullptr; }

signals:
    void imageStarted(int number);
    /// @param permille 0 to 1000, -1 when the length of the page is unknown
    void imageProgress(int number, int permille);
    void pageReady(const kestrel::Page& page);
    void finished(const kestrel::ScanEnd& end);

private:
    void threadEnded();

    std::unique_ptr<QThread> m_thread;
    std::atomic<bool> m_stop{false};
    SANE_Handle m_handle = nullptr;
    QTimer m_grace; ///< runs while a cancelled scan has not ended yet
    ScanEnd m_end;  ///< written by the thread, read after it has ended
};

} // namespace kestrel
