/// @file
/// The dialog with its inner state open to tests.
#pragma once

#include <kestrelsetting.h>

#include <cstdint>

namespace kestrel::test {

/// Create it where a test would create a KestrelSettingUI; host() is what the exported functions
/// take.
class DialogProbe : public KestrelSettingUI
{
public:
    using KestrelSettingUI::KestrelSettingUI;

    /// @return the pointer that the exported functions take
    void* host() { return static_cast<KestrelSettingUI*>(this); }

    /// @return the side-mode mask
    int mask() const { return multistream_mask.bits(); }
    void setMask(int bits)
    {
        multistream_mask = kestrel::SideMode(static_cast<std::uint8_t>(bits));
    }

    using KestrelSettingUI::backend_name;
    using KestrelSettingUI::br_y_option;
    using KestrelSettingUI::closeEvent;
    using KestrelSettingUI::config_path;
    using KestrelSettingUI::counter_text;
    using KestrelSettingUI::counters;
    using KestrelSettingUI::custom_resolution;
    using KestrelSettingUI::device_kind;
    using KestrelSettingUI::device_name;
    using KestrelSettingUI::double_side;
    using KestrelSettingUI::edit_template;
    using KestrelSettingUI::flatbed_max_length;
    using KestrelSettingUI::flatbed_multi_crop;
    using KestrelSettingUI::gamma_table;
    using KestrelSettingUI::has_both_paths;
    using KestrelSettingUI::long_paper_available;
    using KestrelSettingUI::long_paper_max_height;
    using KestrelSettingUI::long_paper_option;
    using KestrelSettingUI::normal_max_height;
    using KestrelSettingUI::pid;
    using KestrelSettingUI::portrait;
    using KestrelSettingUI::preview_rect;
    using KestrelSettingUI::preview_selected;
    using KestrelSettingUI::sane_handle;
    using KestrelSettingUI::save_path;
    using KestrelSettingUI::scan_source_type;
    using KestrelSettingUI::serial_text;
    using KestrelSettingUI::settings;
    using KestrelSettingUI::source_option;
    using KestrelSettingUI::system_text;
    using KestrelSettingUI::ui;
    using KestrelSettingUI::updating;
    using KestrelSettingUI::use_preview_area;
    using KestrelSettingUI::vendor_driver;
    using KestrelSettingUI::vendor_lib_path;
    using KestrelSettingUI::vid;
};

} // namespace kestrel::test
