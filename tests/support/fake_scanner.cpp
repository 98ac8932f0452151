#include "support/fake_scanner.h"

#include "support/fake_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace kestrel::test {

namespace {

using Lock = std::lock_guard<std::recursive_mutex>;

} // namespace

std::recursive_mutex& fakeSaneMutex()
{
    static std::recursive_mutex mutex;
    return mutex;
}

std::vector<FakeScanner::State*>& livingScanners()
{
    static std::vector<FakeScanner::State*> scanners;
    return scanners;
}

FakeScanner::State* stateOf(SANE_Handle handle)
{
    const auto& living = livingScanners();
    const auto found = std::find(living.begin(), living.end(), handle);
    if (found == living.end()) {
        ADD_FAILURE() << "a sane_* function was called with a handle that is not open";
        return nullptr;
    }
    return *found;
}

FakeOption* FakeScanner::State::at(SANE_Int index)
{
    if (index == 0) {
        return &count;
    }
    if (index < 0 || static_cast<std::size_t>(index) > options.size()) {
        return nullptr;
    }
    return options[static_cast<std::size_t>(index) - 1].get();
}

SANE_Status FakeScanner::State::admit(CallKind kind, const std::string& name)
{
    const auto hooks = beforeHooks.find(kind);
    if (hooks != beforeHooks.end()) {
        for (const auto& hook : hooks->second) {
            hook(*owner);
        }
    }
    const int number = ++callsOfKind[kind];
    if (callsUntilFailure && (*callsUntilFailure)-- <= 0) {
        callsUntilFailure = 0;
        return lasting;
    }
    const auto nth = failNth.find({kind, number});
    if (nth != failNth.end()) {
        return nth->second;
    }
    const auto byName = failOption.find({kind, name});
    return byName != failOption.end() ? byName->second : SANE_STATUS_GOOD;
}

FakeScanner::FakeScanner(const std::string& deviceName) : m_state(std::make_unique<State>())
{
    const Lock lock(fakeSaneMutex());
    m_state->deviceName = deviceName;
    m_state->owner = this;
    livingScanners().push_back(m_state.get());
}

FakeScanner::~FakeScanner()
{
    const Lock lock(fakeSaneMutex());
    auto& living = livingScanners();
    living.erase(std::remove(living.begin(), living.end(), m_state.get()), living.end());
}

FakeScanner::FakeScanner(FakeScanner&& other) noexcept : m_state(std::move(other.m_state))
{
    m_state->owner = this;
}

FakeScanner& FakeScanner::operator=(FakeScanner&& other) noexcept
{
    std::swap(m_state, other.m_state);
    m_state->owner = this;
    if (other.m_state) {
        other.m_state->owner = &other;
    }
    return *this;
}

FakeScanner& FakeScanner::add(const FakeOption& option)
{
    const Lock lock(fakeSaneMutex());
    m_state->options.push_back(std::make_unique<FakeOption>(option));
    if (!m_state->countReported) {
        m_state->count.word(static_cast<SANE_Word>(m_state->options.size() + 1));
    }
    return *this;
}

FakeScanner& FakeScanner::remove(const std::string& name)
{
    const Lock lock(fakeSaneMutex());
    m_state->options.erase(m_state->options.begin() + indexOf(name) - 1);
    if (!m_state->countReported) {
        m_state->count.word(static_cast<SANE_Word>(m_state->options.size() + 1));
    }
    return *this;
}

SANE_Int FakeScanner::indexOf(const std::string& name) const
{
    const Lock lock(fakeSaneMutex());
    for (std::size_t i = 0; i < m_state->options.size(); ++i) {
        if (m_state->options[i]->name() == name) {
            return static_cast<SANE_Int>(i) + 1;
        }
    }
    throw std::out_of_range("the stand-in has no option " + name);
}

FakeOption& FakeScanner::option(const std::string& name)
{
    return *m_state->options[static_cast<std::size_t>(indexOf(name)) - 1];
}

bool FakeScanner::has(const std::string& name) const
{
    const std::vector<std::string> all = names();
    return std::find(all.begin(), all.end(), name) != all.end();
}

std::vector<std::string> FakeScanner::names() const
{
    const Lock lock(fakeSaneMutex());
    std::vector<std::string> names;
    for (const auto& option : m_state->options) {
        names.push_back(option->name());
    }
    return names;
}

FakeScanner& FakeScanner::reportCount(SANE_Word count)
{
    m_state->count.word(count);
    m_state->countReported = true;
    return *this;
}

FakeScanner& FakeScanner::hideCount()
{
    m_state->countHidden = true;
    return *this;
}

FakeScanner& FakeScanner::onSet(const std::string& name, std::function<void(FakeScanner&)> hook)
{
    m_state->setHooks[name].push_back(std::move(hook));
    return *this;
}

FakeScanner& FakeScanner::before(CallKind kind, std::function<void(FakeScanner&)> hook)
{
    m_state->beforeHooks[kind].push_back(std::move(hook));
    return *this;
}

FakeScanner& FakeScanner::failNth(CallKind kind, int n, SANE_Status status)
{
    m_state->failNth[{kind, m_state->callsOfKind[kind] + n}] = status;
    return *this;
}

FakeScanner& FakeScanner::failOption(CallKind kind, const std::string& name, SANE_Status status)
{
    m_state->failOption[{kind, name}] = status;
    return *this;
}

FakeScanner& FakeScanner::failAllAfter(int n, SANE_Status status)
{
    m_state->callsUntilFailure = n;
    m_state->lasting = status;
    return *this;
}

FakeScanner& FakeScanner::mend()
{
    m_state->failNth.clear();
    m_state->failOption.clear();
    m_state->callsUntilFailure.reset();
    return *this;
}

FakeScanner& FakeScanner::takeTexts()
{
    const Lock lock(fakeSaneMutex());
    for (auto& option : m_state->options) {
        const bool single = option->size() == sizeof(SANE_Word);
        if (option->type() == SANE_TYPE_STRING || (option->isNumber() && single)) {
            *option = FakeOption::text(option->name(), option->decoded());
        }
    }
    return *this;
}

FakeScanner& FakeScanner::recordWholeBuffers()
{
    m_state->wholeBuffers = true;
    return *this;
}

FakeScanner& FakeScanner::addFrame(const FakeFrame& frame)
{
    const Lock lock(fakeSaneMutex());
    m_state->frames.push_back(frame);
    return *this;
}

int FakeScanner::framesLeft() const
{
    const Lock lock(fakeSaneMutex());
    return static_cast<int>(m_state->frames.size());
}

SANE_Handle FakeScanner::handle()
{
    return m_state.get();
}

Journal FakeScanner::journal() const
{
    const Lock lock(fakeSaneMutex());
    return Journal(m_state->calls);
}

void FakeScanner::clearJournal()
{
    const Lock lock(fakeSaneMutex());
    m_state->calls.clear();
}

} // namespace kestrel::test
