/// @file
/// The inside of a FakeScanner, shared by its setters and the sane_* functions.
#pragma once

#include "support/fake_scanner.h"

#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace kestrel::test {

struct FakeScanner::State
{
    std::string deviceName;
    std::vector<std::unique_ptr<FakeOption>> options; ///< from index 1 on
    FakeOption count = FakeOption::integer("", 1);
    bool countReported = false;
    bool countHidden = false;
    bool wholeBuffers = false;

    FakeScanner* owner = nullptr; ///< handed to hooks
    std::map<std::string, std::vector<std::function<void(FakeScanner&)>>> setHooks;
    std::map<CallKind, std::vector<std::function<void(FakeScanner&)>>> beforeHooks;

    std::map<CallKind, int> callsOfKind;
    std::map<std::pair<CallKind, int>, SANE_Status> failNth;
    std::map<std::pair<CallKind, std::string>, SANE_Status> failOption;
    std::optional<int> callsUntilFailure;
    SANE_Status lasting = SANE_STATUS_IO_ERROR;

    std::deque<FakeFrame> frames;
    std::optional<FakeFrame> current;
    std::size_t position = 0;
    std::size_t chunk = 0;

    std::vector<Call> calls;

    /// @return the option, or null
    FakeOption* at(SANE_Int index);
    /// Counts a call, runs the hooks and says whether it has to fail.
    SANE_Status admit(CallKind kind, const std::string& name);
};

/// Guards all scanners: hosts read images in a thread of their own.
std::recursive_mutex& fakeSaneMutex();

/// @return the scanner behind a handle; null, and a failed test, when the handle belongs to none
FakeScanner::State* stateOf(SANE_Handle handle);

/// @return the living scanners in the order of their creation
std::vector<FakeScanner::State*>& livingScanners();

} // namespace kestrel::test
