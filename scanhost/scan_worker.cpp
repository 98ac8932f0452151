#include "scan_worker.h"

#include <chrono>

namespace kestrel {

namespace {

// A scanner that waits for paper or a motor does not return from its call by itself; SANE allows
// sane_cancel() to come from outside then.
constexpr std::chrono::milliseconds cancelGrace{2000};

} // namespace

ScanWorker::ScanWorker(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<Page>();
    qRegisterMetaType<ScanEnd>();
    m_grace.setSingleShot(true);
    m_grace.setInterval(cancelGrace);
    connect(&m_grace, &QTimer::timeout, this, [this] {
        if (m_thread) {
            sane_cancel(m_handle);
        }
    });
}

ScanWorker::~ScanWorker()
{
    if (m_thread) {
        m_stop = true;
        if (!m_thread->wait(static_cast<unsigned long>(cancelGrace.count()))) {
            sane_cancel(m_handle);
            m_thread->wait();
        }
    }
}

void ScanWorker::start(SANE_Handle handle, const ScanPlan& plan, PageStore& store)
{
    if (m_thread) {
        return;
    }
    m_stop = false;
    m_handle = handle;
    m_end = {};
    m_thread.reset(QThread::create([this, handle, plan, &store] {
        ScanEvents events;
        events.imageStarted = [this](int number) { emit imageStarted(number); };
        events.imageProgress = [this](int number, int permille) {
            emit imageProgress(number, permille);
        };
        events.pageReady = [this](const Page& page) { emit pageReady(page); };
        m_end = scanImages(handle, plan, store, m_stop, events);
    }));
    connect(m_thread.get(), &QThread::finished, this, &ScanWorker::threadEnded);
    m_thread->start();
}

void ScanWorker::cancel()
{
    if (m_thread && !m_stop.exchange(true)) {
        m_grace.start();
    }
}

void ScanWorker::threadEnded()
{
    m_grace.stop();
    m_thread->wait();
    m_thread.reset();
    emit finished(m_end);
}

} // namespace kestrel
