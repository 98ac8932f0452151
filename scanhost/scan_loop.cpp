#include "scan_loop.h"

#include "frame_assembler.h"
#include "status_text.h"

#include <QElapsedTimer>

#include <chrono>
#include <thread>
#include <vector>

namespace kestrel {

namespace {

constexpr std::size_t chunkSize = 256 * 1024;
constexpr std::chrono::milliseconds stallPause{5};
constexpr qint64 stallTimeoutMs = 60'000; ///< a scanner that sends nothing for so long is lost

/// Gives every scan its sane_cancel(), whichever way it ends.
class ScanGuard
{
public:
    explicit ScanGuard(SANE_Handle handle) : m_handle(handle) {}
    ~ScanGuard() { sane_cancel(m_handle); }
    Q_DISABLE_COPY_MOVE(ScanGuard)

private:
    SANE_Handle m_handle;
};

ScanEnd failure(const QString& message)
{
    ScanEnd end;
    end.kind = ScanEnd::Kind::Failed;
    end.message = message;
    return end;
}

ScanEnd ending(SANE_Status status)
{
    ScanEnd end;
    if (status == SANE_STATUS_CANCELLED) {
        end.kind = ScanEnd::Kind::Cancelled;
    } else if (status != SANE_STATUS_GOOD) {
        end = failure(statusText(status));
        end.deviceLost = meansDeviceLost(status);
    }
    return end;
}

/// Reads one frame into the assembler.
/// @return SANE_STATUS_EOF when the frame is complete or the assembler has had enough
SANE_Status readFrame(SANE_Handle handle, FrameAssembler& assembler, const std::atomic<bool>& stop,
                      const std::function<void(int permille)>& progress)
{
    std::vector<SANE_Byte> chunk(chunkSize);
    QElapsedTimer silence;
    silence.start();
    int shown = -2;
    while (assembler.problem() == FrameProblem::None) {
        if (stop) {
            return SANE_STATUS_CANCELLED;
        }
        SANE_Int length = 0;
        const SANE_Status status =
            sane_read(handle, chunk.data(), static_cast<SANE_Int>(chunk.size()), &length);
        if (status != SANE_STATUS_GOOD) {
            return status;
        }
        if (length <= 0) {
            if (silence.elapsed() > stallTimeoutMs) {
                return SANE_STATUS_IO_ERROR;
            }
            std::this_thread::sleep_for(stallPause);
            continue;
        }
        silence.restart();
        assembler.append(chunk.data(), std::min(static_cast<std::size_t>(length), chunk.size()));
        if (const int permille = assembler.permille(); permille != shown) {
            shown = permille;
            progress(permille);
        }
    }
    return SANE_STATUS_EOF;
}

class Loop
{
public:
    Loop(SANE_Handle handle, const ScanPlan& plan, PageStore& store, const std::atomic<bool>& stop,
         const ScanEvents& events)
        : m_handle(handle), m_plan(plan), m_store(store), m_stop(stop), m_events(events)
    {
    }

    ScanEnd run()
    {
        const ScanGuard guard(m_handle);
        ScanEnd end;
        while (m_plan.imageLimit == 0 || m_images < m_plan.imageLimit) {
            if (m_stop) {
                end = ending(SANE_STATUS_CANCELLED);
                break;
            }
            const SANE_Status status = sane_start(m_handle);
            if (status == SANE_STATUS_NO_DOCS && m_images > 0) {
                break; // the regular end of a stack
            }
            end = status == SANE_STATUS_GOOD ? scanOne() : ending(status);
            if (end.kind != ScanEnd::Kind::Finished) {
                break;
            }
        }
        end.images = m_images;
        return end;
    }

private:
    ScanEnd scanOne()
    {
        SANE_Parameters parameters{};
        SANE_Status status = sane_get_parameters(m_handle, &parameters);
        if (status != SANE_STATUS_GOOD) {
            return ending(status);
        }
        FrameAssembler assembler(parameters);
        const int number = m_images + 1;
        if (m_events.imageStarted) {
            m_events.imageStarted(number);
        }
        status = readFrame(m_handle, assembler, m_stop, [&](int permille) {
            if (m_events.imageProgress) {
                m_events.imageProgress(number, permille);
            }
        });
        if (status != SANE_STATUS_EOF) {
            return ending(status);
        }
        if (assembler.problem() != FrameProblem::None) {
            return failure(frameProblemText(assembler.problem()));
        }
        return keep(assembler.finish(m_plan.dpi));
    }

    ScanEnd keep(const QImage& picture)
    {
        if (picture.isNull()) {
            return failure(statusText(SANE_STATUS_EOF));
        }
        Page page;
        const QString problem = m_store.add(picture, m_plan.dpi, page);
        if (!problem.isEmpty()) {
            return failure(problem);
        }
        ++m_images;
        if (m_events.pageReady) {
            m_events.pageReady(page);
        }
        return {};
    }

    SANE_Handle m_handle;
    const ScanPlan& m_plan;
    PageStore& m_store;
    const std::atomic<bool>& m_stop;
    const ScanEvents& m_events;
    int m_images = 0;
};

} // namespace

ScanEnd scanImages(SANE_Handle handle, const ScanPlan& plan, PageStore& store,
                   const std::atomic<bool>& stop, const ScanEvents& events)
{
    return Loop(handle, plan, store, stop, events).run();
}

} // namespace kestrel
