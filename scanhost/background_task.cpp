#include "background_task.h"

namespace kestrel {

BackgroundTask::~BackgroundTask()
{
    if (m_thread) {
        m_thread->wait();
    }
}

void BackgroundTask::start(std::function<void()> work, std::function<void()> done)
{
    if (m_thread) {
        return;
    }
    m_thread.reset(QThread::create(std::move(work)));
    connect(m_thread.get(), &QThread::finished, this, [this, done = std::move(done)] {
        m_thread->wait();
        m_thread.reset();
        done();
    });
    m_thread->start();
}

} // namespace kestrel
