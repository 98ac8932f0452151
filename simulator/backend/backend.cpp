#include "backend.h"

#include <algorithm>

#include "status.h"

namespace kestrel::sim {

Backend::Backend(const std::string& name) : config_(loadConfig(name)), journal_(config_.journal)
{
    journal_.write("init " + name);
    for (const std::string& complaint : config_.complaints) {
        journal_.write("config " + complaint);
    }
    for (const DeviceModel& model : config_.devices) {
        Device& device = devices_.emplace_back(Device{model, std::make_shared<bool>(false), {}});
        device.entry = {device.model.name.c_str(), device.model.vendor.c_str(),
                        device.model.model.c_str(), device.model.type.c_str()};
    }
}

const SANE_Device** Backend::devices()
{
    list_.clear();
    for (const Device& device : devices_) {
        if (!*device.vanished) {
            list_.push_back(&device.entry);
        }
    }
    list_.push_back(nullptr);
    return list_.data();
}

SANE_Status Backend::open(const std::string& name, Scanner** scanner)
{
    const auto found =
        std::find_if(devices_.begin(), devices_.end(), [&name](const Device& device) {
            return name.empty() || device.model.name == name;
        });
    if (found == devices_.end()) {
        return SANE_STATUS_INVAL;
    }
    if (*found->vanished) {
        return SANE_STATUS_IO_ERROR;
    }
    if (found->model.faults.open != SANE_STATUS_GOOD) {
        journal_.write("open " + found->model.name + " " + statusName(found->model.faults.open));
        return found->model.faults.open;
    }
    scanners_.push_back(std::make_unique<Scanner>(found->model, journal_, found->vanished));
    *scanner = scanners_.back().get();
    return SANE_STATUS_GOOD;
}

void Backend::close(const Scanner* scanner)
{
    scanners_.erase(std::remove_if(scanners_.begin(), scanners_.end(),
                                   [scanner](const std::unique_ptr<Scanner>& each) {
                                       return each.get() == scanner;
                                   }),
                    scanners_.end());
}

} // namespace kestrel::sim
