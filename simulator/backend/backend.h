#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include <sane/sane.h>

#include "config.h"
#include "journal.h"
#include "scanner.h"

namespace kestrel::sim {

/// Everything between sane_init and sane_exit: the devices of the configuration and the opened
/// ones.
class Backend
{
public:
    explicit Backend(const std::string& name);

    /// The devices that are plugged in, as SANE hands them out: valid until the next call.
    const SANE_Device** devices();

    /// Opens device @p name; an empty name opens the first one.
    SANE_Status open(const std::string& name, Scanner** scanner);
    void close(const Scanner* scanner);

private:
    struct Device
    {
        DeviceModel model;
        std::shared_ptr<bool> vanished;
        SANE_Device entry;
    };

    Config config_;
    Journal journal_;
    std::deque<Device> devices_; ///< the entries point into the models, so nothing may move
    std::vector<const SANE_Device*> list_;
    std::vector<std::unique_ptr<Scanner>> scanners_;
};

} // namespace kestrel::sim
