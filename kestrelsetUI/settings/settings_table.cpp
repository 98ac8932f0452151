#include "settings/settings_table.h"

#include <algorithm>
#include <iterator>

namespace kestrel {

namespace {

using E = Encoding;
using G = Groups;

// The default group has gray_value and no invert, the others the reverse: loading the defaults must
// leave the invert control alone. The default group's power times are the maker's, not the
// connected device's.
// clang-format off
constexpr std::array<Setting, settingCount> table{{
    // key                                  control                              encoding             groups          rename  default
    {"multistream",                         nullptr,                             E::Mask,             G::All,          1, nullptr},
    {"source",                              "source",                            E::Index,            G::All,          2, nullptr},
    {"resolution",                          "resolution_gengel_slide",           E::Index,            G::All,          3, nullptr},
    {"custom_resolution",                   "resolution_gengel_slide",           E::CustomResolution, G::All,          4, nullptr},
    {"brightness",                          "brightness_set",                    E::Integer,          G::All,          5, nullptr},
    {"contrast",                            "contrast_set",                      E::Integer,          G::All,          6, nullptr},
    {"gamma",                               "gamma_set",                         E::Gamma,            G::All,          0, nullptr},
    {"gray_doc_type",                       "gray_doc_type",                     E::Index,            G::All,          7, nullptr},
    {"gray_value",                          "gray_value",                        E::Integer,          G::DefaultOnly,  0, nullptr},
    {"binarization",                        "binarization",                      E::Index,            G::All,          8, nullptr},
    {"binarization_value",                  "binarization_value",                E::Integer,          G::All,          9, nullptr},
    {"invert",                              "invert",                            E::Index,            G::WorkingOnly, 10, nullptr},
    {"color_register",                      "color_correction",                  E::Index,            G::All,         11, nullptr},
    {"redhead",                             "redhead",                           E::Bool,             G::All,          0, nullptr},
    {"acd_nocolor_mode_front",              "acd_nocolor_mode_front",            E::Index,            G::All,          0, nullptr},
    {"acd_mode_front",                      "acd_mode_front",                    E::Index,            G::All,          0, nullptr},
    {"acd_sensitivity_front",               "acd_sensitivity_front",             E::Integer,          G::All,          0, nullptr},
    {"acd_nocolor_mode_back",               "acd_nocolor_mode_back",             E::Index,            G::All,          0, nullptr},
    {"acd_mode_back",                       "acd_mode_back",                     E::Index,            G::All,          0, nullptr},
    {"acd_sensitivity_back",                "acd_sensitivity_back",              E::Integer,          G::All,          0, nullptr},
    {"color_dropout",                       "color_dropout",                     E::Index,            G::All,         12, nullptr},
    {"adv_color_dropout",                   "adv_color_dropout",                 E::Bool,             G::All,         13, nullptr},
    {"autocropdeskew",                      "autocropdeskew",                    E::Index,            G::All,         14, nullptr},
    {"long_paper_scan",                     "long_paper_scan",                   E::Bool,             G::All,          0, nullptr},
    {"vertical_range",                      "vertical_range",                    E::Orientation,      G::All,         15, nullptr},
    {"scanrange_setting",                   "scanrange_setting",                 E::Index,            G::All,         16, nullptr},
    {"center_alignment",                    "center_alignment",                  E::Centering,        G::All,         17, nullptr},
    {"br_x",                                "br_x",                              E::Real,             G::All,         18, nullptr},
    {"br_y",                                "br_y",                              E::Real,             G::All,         19, nullptr},
    {"tl_x",                                "tl_x",                              E::SingleReal,       G::All,         20, nullptr},
    {"tl_y",                                "tl_y",                              E::SingleReal,       G::All,         21, nullptr},
    {"crop_adjust_top",                     "crop_adjust_top",                   E::Real,             G::All,         22, nullptr},
    {"crop_adjust_bottom",                  "crop_adjust_bottom",                E::Real,             G::All,         23, nullptr},
    {"crop_adjust_left",                    "crop_adjust_left",                  E::Real,             G::All,         24, nullptr},
    {"crop_adjust_right",                   "crop_adjust_right",                 E::Real,             G::All,         25, nullptr},
    {"background_setting_combobox",         "background_setting_combobox",       E::Index,            G::All,          0, nullptr},
    {"prefeed",                             "prefeed",                           E::Bool,             G::All,         26, nullptr},
    {"prefeed_time",                        "prefeed_time",                      E::Real,             G::All,         27, nullptr},
    {"waitingjob_time",                     "waitingjob_time",                   E::TruncatedReal,    G::All,          0, nullptr},
    {"ultrasonic",                          "ultrasonic",                        E::EnableWord,       G::All,         28, nullptr},
    {"additional_length_detection",         "length_detection",                  E::EnableWord,       G::All,          0, nullptr},
    {"additional_length_detection_length",  "length_detection_value",            E::Real,             G::All,          0, nullptr},
    {"stop_scanning_after_multifeed",       "stop_scanning_after_multifeed",     E::Bool,             G::All,          0, nullptr},
    {"rotate",                              "rotate",                            E::Index,            G::All,         29, nullptr},
    {"auto_orientation_mode",               "auto_orientation_mode",             E::Index,            G::All,         30, nullptr},
    {"split_image",                         "split_image",                       E::Index,            G::All,          0, nullptr},
    {"two_side_rotate",                     "rotation_book",                     E::BookRotation,     G::All,          0, nullptr},
    {"remove_blankpage",                    "remove_blankpage",                  E::Bool,             G::All,         32, nullptr},
    {"blankpage_threshold",                 "blankpage_threshold",               E::Integer,          G::All,         33, nullptr},
    {"punch_hole_removal",                  "punch_hole_removal",                E::Bool,             G::All,         34, nullptr},
    {"despeckle",                           "despeckle",                         E::Bool,             G::All,         35, nullptr},
    {"despeckle_ratios",                    "despeckle_ratios",                  E::Integer,          G::All,         36, nullptr},
    {"despeckle_dotsnumber",                "despeckle_dotsnumber",              E::Integer,          G::All,         37, nullptr},
    {"background_processing",               "background_processing",             E::Index,            G::All,         38, nullptr},
    {"background_processing_sensitivity",   "background_processing_sensitivity", E::Integer,          G::All,         39, nullptr},
    {"background_processing_setting",       "background_processing_setting",     E::Index,            G::All,         40, nullptr},
    {"cachemode",                           "cachemode",                         E::Index,            G::All,         41, nullptr},
    {"cachemode_value",                     "cachemode_value",                   E::Integer,          G::All,         42, nullptr},
    {"cachemode_use_default",               "cachemode_use_default",             E::Bool,             G::All,         43, nullptr},
    {"powersaving",                         "powersaving",                       E::EnableWord,       G::All,         44, nullptr},
    {"powersaving_time",                    "powersaving_time",                  E::Integer,          G::All,         45, "15"},
    {"poweroff",                            "poweroff",                          E::EnableWord,       G::All,         46, nullptr},
    {"poweroff_time",                       "poweroff_time",                     E::Integer,          G::All,         47, "240"},
    {"eject_paper_opposite_side",           "eject_paper_opposite_side",         E::Bool,             G::All,         31, nullptr},
}};
// clang-format on

} // namespace

const std::array<Setting, settingCount>& settingsTable() noexcept
{
    return table;
}

std::vector<const Setting*> readOrder()
{
    std::vector<const Setting*> order;
    order.reserve(table.size());
    for (const Setting& setting : table) {
        if (setting.inWorkingGroup()) {
            order.push_back(&setting);
        }
    }
    // Written second, read first.
    for (const char* const key :
         {"custom_resolution", "acd_sensitivity_front", "acd_sensitivity_back"}) {
        const auto second = std::find_if(order.begin(), order.end(), [key](const Setting* setting) {
            return qstrcmp(setting->key, key) == 0;
        });
        std::iter_swap(std::prev(second), second);
    }
    return order;
}

std::vector<QString> renamedKeys()
{
    const auto carried = std::count_if(
        table.begin(), table.end(), [](const Setting& setting) { return setting.renameOrder > 0; });
    std::vector<QString> keys(static_cast<std::size_t>(carried));
    for (const Setting& setting : table) {
        if (setting.renameOrder > 0) {
            keys.at(static_cast<std::size_t>(setting.renameOrder - 1)) =
                QString::fromLatin1(setting.key);
        }
    }
    return keys;
}

} // namespace kestrel
