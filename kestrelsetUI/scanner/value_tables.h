/// @file
/// What the scanner is told and what the user reads, entry by entry in the order of the combo
/// boxes.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <strings.h>

namespace kestrel::tables {

template <std::size_t Size>
using Texts = std::array<const char*, Size>;

// clang-format off
// Values of SANE string options.
inline constexpr Texts<5> source                    = {"Automatic", "Flatbed", "ADF Front", "ADF Back", "ADF Duplex"};
inline constexpr Texts<2> auto_scan_source_setting  = {"ADF Duplex", "ADF Front"};
inline constexpr Texts<5> Multistream               = {"No Multi-Stream", "Gray + BW", "Color + Gray", "Color + BW", "Color + Gray + BW"};
inline constexpr Texts<3> gray_doc_type             = {"Document", "Photo", "Normal"};
inline constexpr Texts<3> binarization_str          = {"Dynamic Threshold", "Fixed Processing", "Diffusion"};
inline constexpr Texts<2> auto_nocolor_mode         = {"BW", "Gray"};
inline constexpr Texts<2> auto_color_detection_mode = {"Normal", "Ignore Paper Color"};
inline constexpr Texts<4> color_dropout             = {"No color dropout", "Red", "Green", "Blue"};
inline constexpr Texts<3> bg_color_setting          = {"No processing", "Black", "White"};
inline constexpr Texts<5> rotate_mode               = {"None", "90", "180", "270", "Auto Orientation"};
inline constexpr Texts<3> auto_orientation_mode     = {"Quick", "Full text", "Complexity"};
inline constexpr Texts<3> splitimage                = {"None", "Horizontal", "Vertical"};
inline constexpr Texts<3> backendground_processing  = {"None", "Smooth", "Removal"};
inline constexpr Texts<2> backendground_setting     = {"Auto", "Moire"};
inline constexpr Texts<2> backendground_removal     = {"White", "Auto"};
inline constexpr Texts<3> cachemode                 = {"None", "Page Number", "Memory Size"};

// Texts that the user reads and that rules compare with.
inline constexpr Texts<3> scanner_source            = {"文档进纸器", "平板", "自动选择纸张来源"};
inline constexpr Texts<3> crop_option_label         = {"固定尺寸", "原稿尺寸", "自动多张图像-平台"};
inline constexpr Texts<2> background_smoothing_label = {"自动", "网纹"};
inline constexpr Texts<2> background_removal_label  = {"白色", "自动"};
// clang-format on

/// Whether two words of a scanner are the same one; upper or lower case says nothing.
inline bool sameText(const char* a, const char* b)
{
    return strcasecmp(a, b) == 0;
}

/// The entry at an enumerator.
template <std::size_t Size, typename Index>
constexpr const char* at(const Texts<Size>& table, Index index)
{
    return table[static_cast<std::size_t>(index)];
}

/// Index of a text in a table, ignoring case; -1 when it is not there.
template <std::size_t Size>
int indexIn(const Texts<Size>& table, const char* text)
{
    const auto found = std::find_if(table.begin(), table.end(),
                                    [text](const char* entry) { return sameText(entry, text); });
    return found != table.end() ? static_cast<int>(found - table.begin()) : -1;
}

} // namespace kestrel::tables
