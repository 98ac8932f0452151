#pragma once

#include <deque>
#include <string>
#include <vector>

#include "model.h"
#include "option.h"

namespace kestrel::sim {

/// All options of one opened scanner, and how they depend on one another.
class OptionSet
{
public:
    explicit OptionSet(const DeviceModel& model);
    OptionSet(const OptionSet&) = delete;
    OptionSet& operator=(const OptionSet&) = delete;
    OptionSet(OptionSet&&) = delete;
    OptionSet& operator=(OptionSet&&) = delete;
    ~OptionSet() = default;

    /// Description of option @p index; null when there is none or when it is configured to be
    /// missing.
    const SANE_Option_Descriptor* descriptor(SANE_Int index) const;

    /// sane_control_option for everything but the time at which it is allowed. @p info gets the
    /// SANE_INFO_* flags of a successful set.
    SANE_Status control(SANE_Int index, SANE_Action action, void* value, SANE_Int& info);

    /// The option at @p index, or null.
    Option* at(SANE_Int index);

    /// The option with this key, or null when the device lacks it.
    Option* find(const std::string& key);
    const Option* find(const std::string& key) const;

    /// Values by key. A missing or inactive option gives the fallback: it cannot have an effect.
    bool on(const std::string& key) const;
    double number(const std::string& key, double fallback) const;
    std::string string(const std::string& key) const;

    /// A word option's value whether the option is active or not; for counters.
    void setWord(const std::string& key, SANE_Word value);

private:
    void override(const OptionOverride& change);
    bool applyRules();
    bool applyAreaRules();

    const DeviceModel& model_;
    std::deque<Option> options_;
};

} // namespace kestrel::sim
