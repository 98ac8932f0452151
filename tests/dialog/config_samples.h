/// @file
/// Values for every control of a setting, and their texts in the settings file.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace kestrel::test {

/// What is put into a control, and the text that has to be in the file then.
struct Sample
{
    const char* value;
    const char* text;
};

/// At least two values of every control but the side-mode mask and the custom resolution, the ends
/// of its range among them. The scanner is the full stand-in.
inline const std::map<std::string, std::vector<Sample>>& samples()
{
    static const std::vector<Sample> box{{"1", "1"}, {"0", "0"}};
    static const std::vector<Sample> word{{"1", "Enable"}, {"0", "Disable"}};
    static const std::vector<Sample> crop{{"-15", "-15"}, {"15", "15"}, {"2.5", "2.5"}, {"0", "0"}};
    static const std::map<std::string, std::vector<Sample>> table{
        {"source", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"resolution", {{"0", "0"}, {"6", "6"}, {"3", "3"}}},
        {"brightness", {{"-100", "-100"}, {"100", "100"}, {"7", "7"}}},
        {"contrast", {{"-100", "-100"}, {"100", "100"}, {"-7", "-7"}}},
        {"gamma", {{"30", "30"}, {"300", "300"}, {"115", "115"}, {"100", "100"}}},
        {"gray_doc_type", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"gray_value", {{"30", "30"}, {"1", "1"}}},
        {"binarization", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"binarization_value", {{"1", "1"}, {"30", "30"}, {"17", "17"}}},
        {"invert", {{"1", "1"}, {"0", "0"}}},
        {"color_register", {{"0", "0"}, {"3", "3"}, {"1", "1"}}},
        {"redhead", box},
        {"acd_nocolor_mode_front", {{"1", "1"}, {"0", "0"}}},
        {"acd_mode_front", {{"1", "1"}, {"0", "0"}}},
        {"acd_sensitivity_front", {{"1", "1"}, {"99", "99"}}},
        {"acd_nocolor_mode_back", {{"1", "1"}, {"0", "0"}}},
        {"acd_mode_back", {{"1", "1"}, {"0", "0"}}},
        {"acd_sensitivity_back", {{"1", "1"}, {"99", "99"}}},
        {"color_dropout", {{"3", "3"}, {"1", "1"}, {"0", "0"}}},
        {"adv_color_dropout", box},
        {"autocropdeskew", {{"1", "1"}, {"0", "0"}}},
        {"long_paper_scan", box},
        {"vertical_range", {{"1", "1"}}},
        {"scanrange_setting", {{"0", "0"}, {"1", "1"}, {"4", "4"}, {"6", "6"}, {"2", "2"}}},
        {"center_alignment", box},
        {"br_x", {{"100", "100"}, {"148.5", "148.5"}, {"215.9", "215.9"}, {"0", "0"}}},
        {"br_y", {{"100", "100"}, {"148.5", "148.5"}, {"355.6", "355.6"}, {"0", "0"}}},
        {"tl_x", {{"5.9", "5.9"}, {"0", "0"}, {"2.1", "2.1"}}},
        {"tl_y", {{"12.3", "12.3"}, {"58.6", "58.6"}, {"0.1", "0.1"}, {"0", "0"}}},
        {"crop_adjust_top", crop},
        {"crop_adjust_bottom", crop},
        {"crop_adjust_left", crop},
        {"crop_adjust_right", crop},
        {"background_setting_combobox", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"prefeed", box},
        {"prefeed_time", {{"0", "0"}, {"5", "5"}, {"2.5", "2.5"}}},
        {"waitingjob_time", {{"120", "120"}, {"5", "5"}, {"0", "0"}}},
        {"ultrasonic", word},
        {"additional_length_detection", word},
        {"additional_length_detection_length", {{"10.5", "10.5"}, {"58.6", "58.6"}, {"0", "0"}}},
        {"stop_scanning_after_multifeed", box},
        {"rotate", {{"4", "4"}, {"1", "1"}, {"0", "0"}}},
        {"auto_orientation_mode", {{"2", "2"}, {"1", "1"}, {"0", "0"}}},
        {"split_image", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"two_side_rotate", {{"1", "1"}}},
        {"remove_blankpage", box},
        {"blankpage_threshold", {{"99", "99"}, {"0", "0"}, {"50", "50"}}},
        {"punch_hole_removal", box},
        {"despeckle", box},
        {"despeckle_ratios", {{"30", "30"}, {"1", "1"}, {"12", "12"}}},
        {"despeckle_dotsnumber", {{"255", "255"}, {"24", "24"}, {"0", "0"}}},
        {"background_processing", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"background_processing_sensitivity", {{"20", "20"}, {"0", "0"}, {"11", "11"}}},
        {"background_processing_setting", {{"1", "1"}, {"0", "0"}}},
        {"cachemode", {{"1", "1"}, {"2", "2"}, {"0", "0"}}},
        {"cachemode_value", {{"512", "512"}, {"1", "1"}, {"64", "64"}}},
        {"cachemode_use_default", box},
        {"powersaving", word},
        {"powersaving_time", {{"1", "1"}, {"240", "240"}, {"30", "30"}}},
        {"poweroff", word},
        {"poweroff_time", {{"480", "480"}, {"15", "15"}, {"200", "200"}}},
        {"eject_paper_opposite_side", box},
    };
    return table;
}

/// The control of a key: most are named alike.
inline const char* controlNamed(const char* key)
{
    static const std::map<std::string, const char*> others{
        {"resolution", "resolution_gengel_slide"},
        {"brightness", "brightness_set"},
        {"contrast", "contrast_set"},
        {"gamma", "gamma_set"},
        {"color_register", "color_correction"},
        {"additional_length_detection", "length_detection"},
        {"additional_length_detection_length", "length_detection_value"},
        {"two_side_rotate", "rotation_book"}};
    const auto found = others.find(key);
    return found != others.end() ? found->second : key;
}

} // namespace kestrel::test
