/// @file
/// The simulated scanner behind the real libsane, for tests. Link Sane::Sane;
/// kestrel_use_simulator() in this folder's CMakeLists.txt defines the two folders and builds the
/// backend first.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <strings.h>
#include <unistd.h>

#include <sane/sane.h>

namespace kestrel::test {

/// Points libsane at the simulator, with a configuration of its own. libsane remembers the first
/// SANE_CONFIG_DIR of a process, so that one stays the build tree's and only the simulator's own
/// file changes. To be made before sane_init; removes its files at the end.
class SimEnv
{
public:
    /// @param config text of the simulator's configuration; empty: the default configuration
    explicit SimEnv(const std::string& config = {})
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "kestrel-sim-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        folder_ = pattern;
        setenv("SANE_CONFIG_DIR", KESTREL_SIM_ETC_DIR, 1);
        setenv("LD_LIBRARY_PATH", KESTREL_SIM_SANE_DIR, 1);
        setenv("KESTREL_SIM_JOURNAL", (folder_ / "journal").c_str(), 1);
        if (config.empty()) {
            unsetenv("KESTREL_SIM_CONFIG");
        } else {
            std::ofstream(folder_ / "sim.conf") << config;
            setenv("KESTREL_SIM_CONFIG", (folder_ / "sim.conf").c_str(), 1);
        }
    }
    ~SimEnv()
    {
        unsetenv("KESTREL_SIM_CONFIG");
        unsetenv("KESTREL_SIM_JOURNAL");
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    SimEnv(const SimEnv&) = delete;
    SimEnv& operator=(const SimEnv&) = delete;

    const std::filesystem::path& folder() const { return folder_; }

    /// What the simulator wrote down so far, oldest first.
    std::vector<std::string> journal() const
    {
        std::vector<std::string> lines;
        std::ifstream file(folder_ / "journal");
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }

private:
    std::filesystem::path folder_;
};

/// One image as it was read.
struct SimImage
{
    SANE_Status started = SANE_STATUS_GOOD; ///< what sane_start answered
    SANE_Status ended = SANE_STATUS_GOOD;   ///< what the last sane_read answered
    SANE_Parameters parameters{};           ///< after sane_start
    std::vector<std::uint8_t> bytes;

    /// Rows that arrived whole.
    int rows() const
    {
        return parameters.bytes_per_line > 0
                   ? static_cast<int>(bytes.size()) / parameters.bytes_per_line
                   : 0;
    }

    /// Red, green and blue; gray three times; 0 or 255 in black-and-white.
    std::array<int, 3> pixel(int x, int y) const
    {
        const auto line =
            static_cast<std::size_t>(y) * static_cast<std::size_t>(parameters.bytes_per_line);
        const auto column = static_cast<std::size_t>(x);
        if (parameters.format == SANE_FRAME_RGB) {
            const std::size_t at = line + column * 3;
            return {bytes.at(at), bytes.at(at + 1), bytes.at(at + 2)};
        }
        if (parameters.depth == 1) {
            const int level = (bytes.at(line + column / 8) >> (7 - column % 8) & 1) != 0 ? 0 : 255;
            return {level, level, level};
        }
        const int level = bytes.at(line + column);
        return {level, level, level};
    }

    /// The pixel at a fraction of the width and height.
    std::array<int, 3> at(double u, double v) const
    {
        return pixel(std::min(parameters.pixels_per_line - 1,
                              static_cast<int>(u * parameters.pixels_per_line)),
                     std::min(rows() - 1, static_cast<int>(v * rows())));
    }
};

/// An opened simulated scanner. Options are set and read by name and as text.
class SimSession : public SimEnv
{
public:
    /// @throws std::runtime_error when the device cannot be opened
    explicit SimSession(const std::string& config, const std::string& device = "kestrel_adv:sim")
        : SimEnv(config)
    {
        SANE_Int version = 0;
        sane_init(&version, nullptr);
        openStatus_ = sane_open(device.c_str(), &handle_);
        if (openStatus_ != SANE_STATUS_GOOD) {
            sane_exit();
            throw std::runtime_error(device + ": " + sane_strstatus(openStatus_));
        }
    }
    ~SimSession()
    {
        sane_close(handle_);
        sane_exit();
    }
    SimSession(const SimSession&) = delete;
    SimSession& operator=(const SimSession&) = delete;

    SANE_Handle handle() const { return handle_; }

    /// The number of the option called @p name; 0 when there is none.
    SANE_Int find(const std::string& name) const
    {
        SANE_Int count = 0;
        sane_control_option(handle_, 0, SANE_ACTION_GET_VALUE, &count, nullptr);
        for (SANE_Int i = 1; i < count; ++i) {
            const SANE_Option_Descriptor* const each = sane_get_option_descriptor(handle_, i);
            if (each != nullptr && each->name != nullptr && name == each->name) {
                return i;
            }
        }
        return 0;
    }

    /// @throws std::runtime_error when there is no such option
    const SANE_Option_Descriptor& describe(const std::string& name) const
    {
        const SANE_Int index = find(name);
        if (index == 0) {
            throw std::runtime_error("no option " + name);
        }
        return *sane_get_option_descriptor(handle_, index);
    }

    bool isActive(const std::string& name) const
    {
        return SANE_OPTION_IS_ACTIVE(describe(name).cap);
    }

    /// Sets from text; @p info gets the SANE_INFO_* flags.
    SANE_Status set(const std::string& name, const std::string& value, SANE_Int* info = nullptr)
    {
        const SANE_Option_Descriptor& option = describe(name);
        if (option.type == SANE_TYPE_STRING) {
            std::vector<char> text(
                std::max(value.size() + 1, static_cast<std::size_t>(option.size)), '\0');
            std::copy(value.begin(), value.end(), text.begin());
            return control(name, text.data(), info);
        }
        SANE_Word word = 0;
        if (option.type == SANE_TYPE_FIXED) {
            word = SANE_FIX(std::stod(value));
        } else if (option.type != SANE_TYPE_BUTTON) {
            word = std::stoi(value);
        }
        return control(name, option.type == SANE_TYPE_BUTTON ? nullptr : &word, info);
    }

    SANE_Status control(const std::string& name, void* value, SANE_Int* info = nullptr)
    {
        return sane_control_option(handle_, find(name), SANE_ACTION_SET_VALUE, value, info);
    }

    /// The first word of the option's value.
    SANE_Word word(const std::string& name) const
    {
        std::vector<SANE_Word> words(std::max<std::size_t>(
            1, static_cast<std::size_t>(describe(name).size) / sizeof(SANE_Word)));
        sane_control_option(handle_, find(name), SANE_ACTION_GET_VALUE, words.data(), nullptr);
        return words.front();
    }

    double millimetres(const std::string& name) const { return SANE_UNFIX(word(name)); }

    std::string text(const std::string& name) const
    {
        std::vector<char> text(static_cast<std::size_t>(describe(name).size) + 1, '\0');
        sane_control_option(handle_, find(name), SANE_ACTION_GET_VALUE, text.data(), nullptr);
        return text.data();
    }

    /// sane_start and sane_read to the end, @p chunk bytes at a time.
    SimImage scan(SANE_Int chunk = 32768)
    {
        SimImage image;
        image.started = sane_start(handle_);
        if (image.started != SANE_STATUS_GOOD) {
            return image;
        }
        sane_get_parameters(handle_, &image.parameters);
        std::vector<SANE_Byte> buffer(static_cast<std::size_t>(chunk));
        while (image.ended == SANE_STATUS_GOOD) {
            SANE_Int length = 0;
            image.ended = sane_read(handle_, buffer.data(), chunk, &length);
            image.bytes.insert(image.bytes.end(), buffer.begin(), buffer.begin() + length);
        }
        return image;
    }

    /// Everything until sane_start fails; at most @p most images.
    std::vector<SimImage> scanAll(std::size_t most = 50)
    {
        std::vector<SimImage> images;
        while (images.size() < most) {
            images.push_back(scan());
            if (images.back().started != SANE_STATUS_GOOD) {
                images.pop_back();
                break;
            }
        }
        sane_cancel(handle_);
        return images;
    }

private:
    SANE_Handle handle_ = nullptr;
    SANE_Status openStatus_ = SANE_STATUS_GOOD;
};

} // namespace kestrel::test
