#include "settings/settings_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

using namespace kestrel;

namespace {

std::vector<std::string> keysOf(bool (*belongs)(const Setting&))
{
    std::vector<std::string> keys;
    for (const Setting& setting : settingsTable()) {
        if (belongs(setting)) {
            keys.emplace_back(setting.key);
        }
    }
    return keys;
}

// Written out once more on purpose: a slip in the table shows here.
const std::vector<std::string> workingKeys{"multistream",
                                           "source",
                                           "resolution",
                                           "custom_resolution",
                                           "brightness",
                                           "contrast",
                                           "gamma",
                                           "gray_doc_type",
                                           "binarization",
                                           "binarization_value",
                                           "invert",
                                           "color_register",
                                           "redhead",
                                           "acd_nocolor_mode_front",
                                           "acd_mode_front",
                                           "acd_sensitivity_front",
                                           "acd_nocolor_mode_back",
                                           "acd_mode_back",
                                           "acd_sensitivity_back",
                                           "color_dropout",
                                           "adv_color_dropout",
                                           "autocropdeskew",
                                           "long_paper_scan",
                                           "vertical_range",
                                           "scanrange_setting",
                                           "center_alignment",
                                           "br_x",
                                           "br_y",
                                           "tl_x",
                                           "tl_y",
                                           "crop_adjust_top",
                                           "crop_adjust_bottom",
                                           "crop_adjust_left",
                                           "crop_adjust_right",
                                           "background_setting_combobox",
                                           "prefeed",
                                           "prefeed_time",
                                           "waitingjob_time",
                                           "ultrasonic",
                                           "additional_length_detection",
                                           "additional_length_detection_length",
                                           "stop_scanning_after_multifeed",
                                           "rotate",
                                           "auto_orientation_mode",
                                           "split_image",
                                           "two_side_rotate",
                                           "remove_blankpage",
                                           "blankpage_threshold",
                                           "punch_hole_removal",
                                           "despeckle",
                                           "despeckle_ratios",
                                           "despeckle_dotsnumber",
                                           "background_processing",
                                           "background_processing_sensitivity",
                                           "background_processing_setting",
                                           "cachemode",
                                           "cachemode_value",
                                           "cachemode_use_default",
                                           "powersaving",
                                           "powersaving_time",
                                           "poweroff",
                                           "poweroff_time",
                                           "eject_paper_opposite_side"};

std::vector<std::string> exchanged(std::vector<std::string> keys, const char* a, const char* b)
{
    std::iter_swap(std::find(keys.begin(), keys.end(), a), std::find(keys.begin(), keys.end(), b));
    return keys;
}

} // namespace

TEST(SettingsTable, WorkingGroupHas63KeysInWritingOrder)
{
    EXPECT_EQ(workingKeys.size(), 63U);
    EXPECT_EQ(keysOf([](const Setting& s) { return s.inWorkingGroup(); }), workingKeys);
}

TEST(SettingsTable, DefaultGroupHasGrayValueInPlaceOfInvert)
{
    std::vector<std::string> expected = workingKeys;
    expected.erase(std::find(expected.begin(), expected.end(), "invert"));
    expected.insert(std::find(expected.begin(), expected.end(), "binarization"), "gray_value");
    EXPECT_EQ(keysOf([](const Setting& s) { return s.inDefaultGroup(); }), expected);
}

TEST(SettingsTable, OnlyPowerTimesHaveDefaultsOfTheirOwn)
{
    std::map<std::string, std::string> defaults;
    for (const Setting& setting : settingsTable()) {
        if (setting.defaultText != nullptr) {
            defaults.emplace(setting.key, setting.defaultText);
        }
    }
    EXPECT_EQ(defaults, (std::map<std::string, std::string>{{"powersaving_time", "15"},
                                                            {"poweroff_time", "240"}}));
}

TEST(SettingsTable, KeysAreUnique)
{
    std::set<std::string> keys;
    for (const Setting& setting : settingsTable()) {
        EXPECT_TRUE(keys.insert(setting.key).second) << setting.key;
    }
    EXPECT_EQ(keys.size(), settingCount);
}

TEST(SettingsTable, ControlsThatAreNotNamedAfterTheirKey)
{
    std::map<std::string, std::string> renamed;
    for (const Setting& setting : settingsTable()) {
        const std::string control = setting.control == nullptr ? "" : setting.control;
        if (control != setting.key) {
            renamed.emplace(setting.key, control);
        }
    }
    const std::map<std::string, std::string> expected{
        {"multistream", ""},
        {"resolution", "resolution_gengel_slide"},
        {"custom_resolution", "resolution_gengel_slide"},
        {"brightness", "brightness_set"},
        {"contrast", "contrast_set"},
        {"gamma", "gamma_set"},
        {"color_register", "color_correction"},
        {"additional_length_detection", "length_detection"},
        {"additional_length_detection_length", "length_detection_value"},
        {"two_side_rotate", "rotation_book"},
    };
    EXPECT_EQ(renamed, expected);
}

TEST(SettingsTable, EncodingsAsGrouped)
{
    std::map<Encoding, std::set<std::string>> byEncoding;
    for (const Setting& setting : settingsTable()) {
        byEncoding[setting.encoding].insert(setting.key);
    }
    using Keys = std::set<std::string>;
    EXPECT_EQ(byEncoding[Encoding::Mask], Keys{"multistream"});
    EXPECT_EQ(byEncoding[Encoding::CustomResolution], Keys{"custom_resolution"});
    EXPECT_EQ(byEncoding[Encoding::Gamma], Keys{"gamma"});
    EXPECT_EQ(byEncoding[Encoding::SingleReal], (Keys{"tl_x", "tl_y"}));
    EXPECT_EQ(byEncoding[Encoding::TruncatedReal], Keys{"waitingjob_time"});
    EXPECT_EQ(byEncoding[Encoding::Orientation], Keys{"vertical_range"});
    EXPECT_EQ(byEncoding[Encoding::Centering], Keys{"center_alignment"});
    EXPECT_EQ(byEncoding[Encoding::BookRotation], Keys{"two_side_rotate"});
    EXPECT_EQ(byEncoding[Encoding::EnableWord],
              (Keys{"ultrasonic", "additional_length_detection", "powersaving", "poweroff"}));
    EXPECT_EQ(byEncoding[Encoding::Real],
              (Keys{"br_x", "br_y", "crop_adjust_top", "crop_adjust_bottom", "crop_adjust_left",
                    "crop_adjust_right", "prefeed_time", "additional_length_detection_length"}));
    EXPECT_EQ(byEncoding[Encoding::Bool],
              (Keys{"redhead", "adv_color_dropout", "long_paper_scan", "prefeed",
                    "stop_scanning_after_multifeed", "remove_blankpage", "punch_hole_removal",
                    "despeckle", "cachemode_use_default", "eject_paper_opposite_side"}));
    EXPECT_EQ(byEncoding[Encoding::Integer],
              (Keys{"brightness", "contrast", "gray_value", "binarization_value",
                    "acd_sensitivity_front", "acd_sensitivity_back", "blankpage_threshold",
                    "despeckle_ratios", "despeckle_dotsnumber", "background_processing_sensitivity",
                    "cachemode_value", "powersaving_time", "poweroff_time"}));
    // All the others.
    EXPECT_EQ(byEncoding[Encoding::Index].size(), 20U);
}

TEST(SettingsTable, ReadOrderDiffersFromWriteOrderInThreePairsOnly)
{
    std::vector<std::string> order;
    for (const Setting* const setting : readOrder()) {
        order.emplace_back(setting->key);
    }
    auto expected = exchanged(workingKeys, "resolution", "custom_resolution");
    expected = exchanged(expected, "acd_mode_front", "acd_sensitivity_front");
    expected = exchanged(expected, "acd_mode_back", "acd_sensitivity_back");
    EXPECT_EQ(order, expected);
}

TEST(SettingsTable, RenameCarries47KeysInCopyingOrder)
{
    std::vector<std::string> expected = workingKeys;
    for (const char* const stays :
         {"gamma", "redhead", "acd_nocolor_mode_front", "acd_mode_front", "acd_sensitivity_front",
          "acd_nocolor_mode_back", "acd_mode_back", "acd_sensitivity_back", "long_paper_scan",
          "background_setting_combobox", "waitingjob_time", "additional_length_detection",
          "additional_length_detection_length", "stop_scanning_after_multifeed", "split_image",
          "two_side_rotate", "eject_paper_opposite_side"}) {
        expected.erase(std::find(expected.begin(), expected.end(), stays));
    }
    expected.insert(std::find(expected.begin(), expected.end(), "remove_blankpage"),
                    "eject_paper_opposite_side");
    EXPECT_EQ(expected.size(), 47U);
    std::vector<std::string> keys;
    for (const QString& key : renamedKeys()) {
        keys.push_back(key.toStdString());
    }
    EXPECT_EQ(keys, expected);
}
