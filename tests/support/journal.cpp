#include "support/journal.h"

#include <array>
#include <utility>

namespace kestrel::test {

namespace {

const char* kindName(CallKind kind)
{
    constexpr std::array<const char*, 10> names{"open", "close",    "describe", "get",
                                                "set",  "set-auto", "start",    "parameters",
                                                "read", "cancel"};
    return names.at(static_cast<std::size_t>(kind));
}

} // namespace

Journal::Journal(std::vector<Call> calls) : m_calls(std::move(calls)) {}

std::vector<Call> Journal::of(CallKind kind) const
{
    std::vector<Call> found;
    for (const Call& call : m_calls) {
        if (call.kind == kind) {
            found.push_back(call);
        }
    }
    return found;
}

int Journal::count(CallKind kind) const
{
    return static_cast<int>(of(kind).size());
}

std::vector<std::string> Journal::sets() const
{
    std::vector<std::string> found;
    for (const Call& call : of(CallKind::Set)) {
        if (call.known && call.index > 0) {
            found.push_back(call.name + "=" + call.value);
        }
    }
    return found;
}

std::vector<std::string> Journal::reads() const
{
    std::vector<std::string> names;
    for (const Call& call : of(CallKind::Get)) {
        if (call.index > 0) {
            names.push_back(call.name);
        }
    }
    return names;
}

std::vector<std::string> Journal::setsOf(const std::string& name) const
{
    std::vector<std::string> found;
    for (const Call& call : setCallsOf(name)) {
        found.push_back(call.value);
    }
    return found;
}

std::vector<Call> Journal::setCallsOf(const std::string& name) const
{
    std::vector<Call> found;
    for (const Call& call : of(CallKind::Set)) {
        if (call.known && call.name == name) {
            found.push_back(call);
        }
    }
    return found;
}

std::vector<Call> Journal::straySets() const
{
    std::vector<Call> found;
    for (const Call& call : of(CallKind::Set)) {
        if (!call.known || call.index == 0) {
            found.push_back(call);
        }
    }
    return found;
}

std::string Journal::text() const
{
    std::string text;
    for (const Call& call : m_calls) {
        text += std::string(kindName(call.kind)) + " " + call.name + " " + call.value + " -> " +
                std::to_string(call.status) + "\n";
    }
    return text;
}

} // namespace kestrel::test
