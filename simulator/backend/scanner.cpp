#include "scanner.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>
#include <utility>

#include "status.h"

namespace kestrel::sim {
namespace {

const char* kindName(Kind kind)
{
    return kind == Kind::Color ? "color" : kind == Kind::Gray ? "gray" : "lineart";
}

std::string describeImage(const ImagePlan& plan)
{
    return std::string(" sheet=") + std::to_string(plan.sheet) +
           " side=" + (plan.side == Side::Front ? "front" : "back") +
           " kind=" + kindName(plan.kind) + " dpi=" + std::to_string(plan.settings->dpi) +
           " size=" + std::to_string(plan.width) + "x" + std::to_string(plan.height);
}

} // namespace

Scanner::Scanner(const DeviceModel& model, Journal& journal, std::shared_ptr<bool> vanished)
    : model_(model), journal_(journal), vanished_(std::move(vanished)), options_(model)
{
    journal_.write("open " + model_.name);
}

Scanner::~Scanner()
{
    journal_.write("close " + model_.name);
}

const SANE_Option_Descriptor* Scanner::descriptor(SANE_Int index) const
{
    return options_.descriptor(index);
}

SANE_Status Scanner::control(SANE_Int index, SANE_Action action, void* value, SANE_Int* info)
{
    settle();
    if (info != nullptr) {
        *info = 0;
    }
    if (*vanished_) {
        return SANE_STATUS_IO_ERROR;
    }
    if (action == SANE_ACTION_GET_VALUE) {
        SANE_Int flags = 0;
        return options_.control(index, action, value, flags);
    }
    return setOption(index, action, value, info);
}

SANE_Status Scanner::setOption(SANE_Int index, SANE_Action action, void* value, SANE_Int* info)
{
    const Option* const option = options_.at(index);
    const std::string key = option != nullptr ? option->key : "#" + std::to_string(index);
    const std::string sent = option != nullptr ? option->sentText(value) : std::string();
    SANE_Int flags = 0;
    const SANE_Status status = state_ == State::Frame
                                   ? SANE_STATUS_DEVICE_BUSY
                                   : options_.control(index, action, value, flags);
    std::string line = "set " + key + " \"" + sent + "\" " + statusName(status);
    if (status == SANE_STATUS_GOOD) {
        if (info != nullptr) {
            *info = flags;
        }
        if (option->valueText() != sent) {
            line += " kept \"" + option->valueText() + "\"";
        }
    }
    journal_.write(line);
    return status;
}

SANE_Status Scanner::parameters(SANE_Parameters& parameters)
{
    settle();
    if (*vanished_) {
        return SANE_STATUS_IO_ERROR;
    }
    ImagePlan expected;
    const bool running =
        renderer_ != nullptr && (state_ == State::Frame || state_ == State::Between);
    if (!running) {
        const ScanSettings settings = readSettings(options_, model_, feederHasPaper());
        const std::vector<Sheet>& from = settings.flatbed ? model_.glass : model_.sheets;
        expected = expectedImage(settings, from.empty() ? Sheet{} : from.front());
    }
    const ImagePlan& plan = running ? renderer_->plan() : expected;
    const Kind kind =
        plan.kind == Kind::Color && model_.faults.grayForColor ? Kind::Gray : plan.kind;
    const int padding = std::max(0, model_.faults.padLines);
    parameters.format = kind == Kind::Color ? SANE_FRAME_RGB : SANE_FRAME_GRAY;
    parameters.last_frame = SANE_TRUE;
    parameters.pixels_per_line = plan.width;
    parameters.lines = model_.faults.unknownLines ? -1 : plan.height;
    parameters.depth = kind == Kind::Lineart ? 1 : 8;
    parameters.bytes_per_line = padding + (kind == Kind::Color     ? plan.width * 3
                                           : kind == Kind::Lineart ? (plan.width + 7) / 8
                                                                   : plan.width);
    return SANE_STATUS_GOOD;
}

void Scanner::cancel() noexcept
{
    journal_.write("cancel");
    cancelAsked_ = true;
}

void Scanner::settle()
{
    if (!cancelAsked_.exchange(false)) {
        return;
    }
    queue_.clear();
    renderer_.reset();
    state_ = State::Cancelled;
    inSession_ = false;
    if (model_.reload == Reload::OnCancel ||
        (model_.reload == Reload::WhenEmpty && !feederHasPaper())) {
        taken_ = 0;
    }
}

SANE_Status Scanner::start()
{
    settle();
    if (*vanished_) {
        return SANE_STATUS_IO_ERROR;
    }
    if (state_ == State::Frame) {
        return SANE_STATUS_DEVICE_BUSY;
    }
    ++starts_;
    const SANE_Status status = begin();
    journal_.write(std::string("start ") + statusName(status) +
                   (status == SANE_STATUS_GOOD ? describeImage(renderer_->plan()) : std::string()));
    return status;
}

SANE_Status Scanner::begin()
{
    for (const StartFault& fault : model_.faults.starts) {
        if (fault.image == 0 || fault.image == starts_) {
            return fail(fault.status);
        }
    }
    const SANE_Status status = fillQueue();
    if (status != SANE_STATUS_GOOD) {
        return fail(status);
    }
    renderer_ = std::make_unique<Renderer>(std::move(queue_.front()));
    queue_.pop_front();
    line_.assign(
        renderer_->rowBytes() + static_cast<std::size_t>(std::max(0, model_.faults.padLines)), 0);
    lineAt_ = line_.size();
    delivered_ = 0;
    state_ = State::Frame;
    return SANE_STATUS_GOOD;
}

SANE_Status Scanner::fail(SANE_Status status)
{
    queue_.clear();
    renderer_.reset();
    state_ = State::Failed;
    failure_ = status;
    inSession_ = false;
    return status;
}

SANE_Status Scanner::read(SANE_Byte* buffer, SANE_Int room, SANE_Int& length)
{
    length = 0;
    settle();
    if (*vanished_) {
        return SANE_STATUS_IO_ERROR;
    }
    if (state_ != State::Frame) {
        return state_ == State::Between     ? SANE_STATUS_EOF
               : state_ == State::Cancelled ? SANE_STATUS_CANCELLED
               : state_ == State::Failed    ? failure_
                                            : SANE_STATUS_INVAL;
    }
    if (buffer == nullptr || room < 0) {
        return SANE_STATUS_INVAL;
    }
    waitSlowly();
    if (cancelAsked_) {
        settle();
        return SANE_STATUS_CANCELLED;
    }
    const int bound = model_.faults.shortReads;
    std::size_t most = static_cast<std::size_t>(bound > 0 ? std::min(room, bound) : room);
    const ReadFault* const fault = dueFault(most);
    if (fault != nullptr && most == 0) {
        journal_.write(std::string("read ") +
                       (fault->vanishes ? "vanished" : statusName(fault->status)));
        *vanished_ = *vanished_ || fault->vanishes;
        return fail(fault->status);
    }
    const std::size_t got = fillBuffer(buffer, most);
    delivered_ += got;
    length = static_cast<SANE_Int>(got);
    if (got == 0 && most > 0) {
        state_ = State::Between;
        return SANE_STATUS_EOF;
    }
    return SANE_STATUS_GOOD;
}

/// The fault that this image runs into; @p room shrinks to the bytes before it.
const ReadFault* Scanner::dueFault(std::size_t& room) const
{
    const ReadFault* due = nullptr;
    for (const ReadFault& fault : model_.faults.reads) {
        if (fault.image != 0 && fault.image != starts_) {
            continue;
        }
        const std::size_t before =
            fault.afterBytes > delivered_ ? fault.afterBytes - delivered_ : 0;
        if (before <= room && (due == nullptr || fault.afterBytes < due->afterBytes)) {
            due = &fault;
        }
    }
    if (due != nullptr) {
        room = due->afterBytes > delivered_ ? due->afterBytes - delivered_ : 0;
    }
    return due;
}

std::size_t Scanner::fillBuffer(SANE_Byte* buffer, std::size_t room)
{
    std::size_t filled = 0;
    while (filled < room) {
        if (lineAt_ == line_.size()) {
            if (!renderer_->hasRow()) {
                break;
            }
            renderer_->nextRow(line_.data());
            lineAt_ = 0;
        }
        const std::size_t part = std::min(room - filled, line_.size() - lineAt_);
        std::memcpy(buffer + filled, line_.data() + lineAt_, part);
        lineAt_ += part;
        filled += part;
    }
    return filled;
}

void Scanner::waitSlowly() const
{
    constexpr int slice = 10;
    for (int left = model_.faults.readDelayMs; left > 0 && !cancelAsked_; left -= slice) {
        std::this_thread::sleep_for(std::chrono::milliseconds(std::min(left, slice)));
    }
}

} // namespace kestrel::sim
