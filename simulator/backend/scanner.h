#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include <sane/sane.h>

#include "journal.h"
#include "model.h"
#include "optionset.h"
#include "renderer.h"

namespace kestrel::sim {

/// An opened scanner: what a SANE handle stands for.
///
///            start            last byte read
///   Idle ------------> Frame ----------------> Between
///    ^                  |                       |  |
///    |   cancel, fault  |      no more images   |  | start: next image
///    +------------------+-----------------------+  +-------> Frame
///
/// One thread drives it; only cancel() may come from another one or from a signal handler. It
/// leaves a note that the next call carries out.
class Scanner
{
public:
    /// @param model description that outlives the scanner
    /// @param journal outlives the scanner, too
    /// @param vanished shared with whoever lists the devices: set when this one is unplugged
    Scanner(const DeviceModel& model, Journal& journal, std::shared_ptr<bool> vanished);
    ~Scanner();
    Scanner(const Scanner&) = delete;
    Scanner& operator=(const Scanner&) = delete;
    Scanner(Scanner&&) = delete;
    Scanner& operator=(Scanner&&) = delete;

    const SANE_Option_Descriptor* descriptor(SANE_Int index) const;
    SANE_Status control(SANE_Int index, SANE_Action action, void* value, SANE_Int* info);
    SANE_Status parameters(SANE_Parameters& parameters);
    SANE_Status start();
    SANE_Status read(SANE_Byte* buffer, SANE_Int room, SANE_Int& length);
    void cancel() noexcept;

private:
    enum class State
    {
        Idle,
        Frame,
        Between,
        Cancelled,
        Failed
    };

    void settle();
    SANE_Status setOption(SANE_Int index, SANE_Action action, void* value, SANE_Int* info);
    SANE_Status begin();
    SANE_Status fillQueue();
    SANE_Status takeSheet(const std::shared_ptr<const ScanSettings>& settings);
    SANE_Status takeGlass(const std::shared_ptr<const ScanSettings>& settings);
    SANE_Status watchFeed(const ScanSettings& settings, const Sheet& sheet);
    SANE_Status endOfStack();
    SANE_Status fail(SANE_Status status);
    bool feederHasPaper() const { return taken_ < stackSize(); }
    int stackSize() const;
    std::size_t fillBuffer(SANE_Byte* buffer, std::size_t room);
    const ReadFault* dueFault(std::size_t& room) const;
    void waitSlowly() const;

    const DeviceModel& model_;
    Journal& journal_;
    std::shared_ptr<bool> vanished_;
    OptionSet options_;
    State state_ = State::Idle;
    SANE_Status failure_ = SANE_STATUS_GOOD;
    std::atomic<bool> cancelAsked_{false};

    int starts_ = 0;              ///< images asked for since the scanner was opened
    int taken_ = 0;               ///< sheets that left the stack
    bool inSession_ = false;      ///< between the first start and the end of the stack or a cancel
    bool sessionFeeds_ = false;   ///< this session takes its paper from the feeder
    bool glassDone_ = false;      ///< this session's pass over the glass was made
    std::deque<ImagePlan> queue_; ///< images of the current sheet still to be delivered

    std::unique_ptr<Renderer> renderer_;
    std::vector<std::uint8_t> line_; ///< the current row with its padding
    std::size_t lineAt_ = 0;         ///< how much of it is delivered
    std::size_t delivered_ = 0;      ///< bytes of this image
};

} // namespace kestrel::sim
