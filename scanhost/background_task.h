/// @file
/// One function in a thread, its result back in the GUI thread.
#pragma once

#include <QObject>
#include <QThread>

#include <functional>
#include <memory>

namespace kestrel {

/// Runs @p work in a thread and then @p done in the thread of this object. One task at a time; the
/// destructor waits for the work and then leaves @p done out.
class BackgroundTask : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~BackgroundTask() override;
    Q_DISABLE_COPY_MOVE(BackgroundTask)

    /// Does nothing while a task is running.
    void start(std::function<void()> work, std::function<void()> done);

    bool isRunning() const { return m_thread != nullptr; }

private:
    std::unique_ptr<QThread> m_thread;
};

} // namespace kestrel
