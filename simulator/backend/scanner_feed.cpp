// Where the images come from: the stack in the feeder and what lies on the glass.
#include "scanner.h"

#include <memory>
#include <string>
#include <vector>

namespace kestrel::sim {

SANE_Status Scanner::fillQueue()
{
    while (queue_.empty()) {
        const bool feeds = inSession_ ? sessionFeeds_ : feederHasPaper();
        const auto settings =
            std::make_shared<const ScanSettings>(readSettings(options_, model_, feeds));
        if (!inSession_) {
            inSession_ = true;
            sessionFeeds_ = feeds;
            glassDone_ = false;
        }
        const ImagePlan expected = expectedImage(*settings, Sheet{});
        if (expected.width <= 0 || expected.height <= 0) {
            return SANE_STATUS_INVAL;
        }
        const SANE_Status status = settings->flatbed ? takeGlass(settings) : takeSheet(settings);
        if (status != SANE_STATUS_GOOD) {
            return status;
        }
    }
    return SANE_STATUS_GOOD;
}

// The lid has to be lifted for the next original, so one pass is all that a session gets from the
// glass.
SANE_Status Scanner::takeGlass(const std::shared_ptr<const ScanSettings>& settings)
{
    if (glassDone_) {
        return SANE_STATUS_NO_DOCS;
    }
    glassDone_ = true;
    std::vector<Sheet> glass = model_.glass;
    if (glass.empty()) {
        glass.emplace_back();
        glass.back().front = Print::Blank;
    }
    const std::vector<ImagePlan> plans = planGlass(settings, glass);
    queue_.assign(plans.begin(), plans.end());
    return SANE_STATUS_GOOD;
}

SANE_Status Scanner::takeSheet(const std::shared_ptr<const ScanSettings>& settings)
{
    if (!feederHasPaper()) {
        return endOfStack();
    }
    const Sheet& sheet = model_.sheets[static_cast<std::size_t>(taken_) % model_.sheets.size()];
    const int number = ++taken_;
    options_.setWord("roller-count", model_.rollerCount + number);
    options_.setWord("padscan-count", model_.padCount + number);
    const SANE_Status status = watchFeed(*settings, sheet);
    if (status == SANE_STATUS_GOOD) {
        const std::vector<ImagePlan> plans = planSheet(settings, sheet, number);
        queue_.assign(plans.begin(), plans.end());
    }
    return status;
}

/// Notices two sheets at once, by sound or by their length. Unnoticed, the second one is lost.
SANE_Status Scanner::watchFeed(const ScanSettings& settings, const Sheet& sheet)
{
    const bool isDouble = taken_ == model_.faults.doubleFeedAt;
    const double length = afterTurn(sheet.turned, sheet.size).height * (isDouble ? 1.5 : 1);
    const bool heard = isDouble && options_.string("ultrasonic") == "Enable";
    const bool tooLong = options_.string("additional-length-detection") == "Enable" &&
                         !settings.crops &&
                         length > settings.area.y + settings.area.height +
                                      options_.number("additional-length-detection-length", 0);
    if (isDouble) {
        ++taken_;
    }
    if (!heard && !tooLong) {
        return SANE_STATUS_GOOD;
    }
    journal_.write(std::string("multifeed ") + (heard ? "heard" : "measured"));
    return options_.on("stop-scanning-after-multifeed") ? SANE_STATUS_JAMMED : SANE_STATUS_GOOD;
}

SANE_Status Scanner::endOfStack()
{
    if (model_.reload != Reload::Never) {
        taken_ = 0;
    }
    return SANE_STATUS_NO_DOCS;
}

int Scanner::stackSize() const
{
    if (model_.sheets.empty()) {
        return 0;
    }
    return model_.stack >= 0 ? model_.stack : static_cast<int>(model_.sheets.size());
}

} // namespace kestrel::sim
