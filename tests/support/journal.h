/// @file
/// What a program did to a stand-in scanner, call by call.
#pragma once

#include <sane/sane.h>

#include <string>
#include <vector>

namespace kestrel::test {

/// The kinds of calls that a program makes.
enum class CallKind
{
    Open,
    Close,
    Describe,
    Get,
    Set,
    SetAuto,
    Start,
    Parameters,
    Read,
    Cancel
};

/// One call.
struct Call
{
    CallKind kind = CallKind::Describe;
    SANE_Int index = -1; ///< option index for Describe, Get, Set and SetAuto
    std::string name;    ///< option name; "#" and the index where there is no such option
    bool known = false;  ///< the option exists
    SANE_Value_Type type = SANE_TYPE_INT; ///< type of the option
    std::string value;                    ///< the value that was set or read, decoded
    std::vector<unsigned char> raw;       ///< its bytes
    bool nullValue = false;               ///< the value pointer was null
    bool infoAsked = false;               ///< the info pointer was not null
    SANE_Status status = SANE_STATUS_GOOD;
};

/// The calls in order.
class Journal
{
public:
    Journal() = default;
    explicit Journal(std::vector<Call> calls);

    const std::vector<Call>& calls() const { return m_calls; }
    /// @return the calls of one kind
    std::vector<Call> of(CallKind kind) const;
    int count(CallKind kind) const;

    /// @return "name=value" for every set of an existing option, in order, whatever its status.
    ///         Fixed-point values are written in decimal ("215.9"), buttons with an empty value,
    ///         arrays as their quarter points ("{0,64,128,191,255}")
    std::vector<std::string> sets() const;
    /// @return the names of the options whose values were read, in order; option 0 is left out
    std::vector<std::string> reads() const;
    /// @return the decoded values set to one option, in order
    std::vector<std::string> setsOf(const std::string& name) const;
    /// @return the sets of one option with their raw bytes
    std::vector<Call> setCallsOf(const std::string& name) const;
    /// @return whether an option of this name was set
    bool wasSet(const std::string& name) const { return !setsOf(name).empty(); }
    /// @return the sets made on indexes where there is no option, and on option 0
    std::vector<Call> straySets() const;
    /// @return one line a call, for failure messages
    std::string text() const;

private:
    std::vector<Call> m_calls;
};

} // namespace kestrel::test
