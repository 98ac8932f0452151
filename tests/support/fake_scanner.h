/// @file
/// A stand-in for a scanner behind libsane. The library kestrel_fake_sane defines the sane_*
/// functions; an object of this class is the device they act on, and its address is the
/// SANE_Handle.
///
/// @code
///   FakeScanner scanner = fullScanner();
///   scanner.option("source").string("Flatbed");
///   initKestrelSetUI(ui, scanner.handle(), &identity, dir.path());
///   EXPECT_EQ(scanner.journal().sets(), ...);
/// @endcode
#pragma once

#include "support/fake_option.h"
#include "support/journal.h"

#include <sane/sane.h>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kestrel::test {

/// One image that the scanner delivers between sane_start() and SANE_STATUS_EOF.
struct FakeFrame
{
    SANE_Parameters parameters{};
    std::vector<SANE_Byte> bytes;
    std::vector<SANE_Int>
        chunks; ///< most bytes for each read, the last one repeats; empty: as asked
    SANE_Status start = SANE_STATUS_GOOD; ///< answer of sane_start()
    SANE_Status parametersStatus = SANE_STATUS_GOOD;
    SANE_Status end = SANE_STATUS_EOF; ///< answer of sane_read() after the last byte
};

/// A device. Moving it keeps its handle.
class FakeScanner
{
public:
    /// @param deviceName the name under which sane_get_devices() lists it and sane_open() finds it
    explicit FakeScanner(const std::string& deviceName = "fake:0");
    ~FakeScanner();
    FakeScanner(FakeScanner&&) noexcept;
    FakeScanner& operator=(FakeScanner&&) noexcept;
    FakeScanner(const FakeScanner&) = delete;
    FakeScanner& operator=(const FakeScanner&) = delete;

    /// Adds an option behind the others; option 0, the count, is there already.
    FakeScanner& add(const FakeOption& option);
    /// Removes an option; throws std::out_of_range when there is none.
    FakeScanner& remove(const std::string& name);
    /// @return the option of this name; throws std::out_of_range when there is none
    FakeOption& option(const std::string& name);
    bool has(const std::string& name) const;
    /// @return the index of an option of this name; throws std::out_of_range when there is none
    SANE_Int indexOf(const std::string& name) const;
    /// @return the names of the options from index 1 on
    std::vector<std::string> names() const;
    /// Lets option 0 report another count than there are options.
    FakeScanner& reportCount(SANE_Word count);
    /// Option 0 cannot be described.
    FakeScanner& hideCount();

    /// Runs @p hook after each successful set of an option.
    FakeScanner& onSet(const std::string& name, std::function<void(FakeScanner&)> hook);
    /// Runs @p hook before each call of a kind.
    FakeScanner& before(CallKind kind, std::function<void(FakeScanner&)> hook);

    /// The @p n-th call of a kind (from 1, counted from now on) fails; a Describe answers null.
    FakeScanner& failNth(CallKind kind, int n, SANE_Status status);
    /// Every call of a kind on one option fails.
    FakeScanner& failOption(CallKind kind, const std::string& name, SANE_Status status);
    /// After @p n more calls of any kind, every call fails; a Describe answers null.
    FakeScanner& failAllAfter(int n, SANE_Status status);
    /// All is well again.
    FakeScanner& mend();

    /// Turns every option but buttons and arrays into an unconstrained text, so that what a client
    /// sends is recorded letter by letter. To be called when it has read the descriptors it needs.
    FakeScanner& takeTexts();
    /// Texts that a client sets are recorded with all 64 bytes of its buffer.
    FakeScanner& recordWholeBuffers();

    /// Adds an image to the stack; when there is none left sane_start() says SANE_STATUS_NO_DOCS.
    FakeScanner& addFrame(const FakeFrame& frame);
    int framesLeft() const;

    /// @return the handle; it stays valid while the object lives, also when that is moved
    SANE_Handle handle();
    /// @return a copy of what happened so far
    Journal journal() const;
    void clearJournal();

    struct State;

private:
    std::unique_ptr<State> m_state;
};

} // namespace kestrel::test
