/// @file
/// The one table of settings: which key belongs to which control, and what its text looks like.
#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <vector>

namespace kestrel {

/// How a setting meets its control. Written text / what is done with a read text.
enum class Encoding
{
    Mask,             ///< the side-mode mask, no control: decimal text / parseMask()
    Index,            ///< current index of a combo box
    CustomResolution, ///< text of item 7 of the resolution combo if it holds exactly 8 items, else
                      ///< empty
    Integer,          ///< value of a scroll bar, slider or spin box
    Gamma,            ///< as Integer; a read value also rebuilds the gamma table
    Real,             ///< value of a double spin box / parseReal()
    SingleReal,       ///< as Real, but read in single precision: parseSingleReal()
    TruncatedReal,    ///< as Integer, but read as a real and truncated: parseTruncated()
    Bool,             ///< checked: "1" or "0" / checked exactly when the value is 1
    Orientation,      ///< as Bool of vertical_range; any value but 1 checks horizontal_range
    Centering,        ///< as Bool; 1 also centres and locks the left edge
    BookRotation, ///< as Bool of rotation_book; 0 checks rotation_fanfold, others change nothing
    EnableWord,   ///< checked: "Enable" or "Disable"
};

/// The groups of the settings file in which a key is written.
enum class Groups
{
    All,         ///< in the default group, the working group and every template
    DefaultOnly, ///< written once, never read back
    WorkingOnly, ///< in the working group and every template
};

/// One row of the table. All texts are static.
struct Setting
{
    const char* key;
    const char* control; ///< object name in the main dialog's form; nullptr for the side-mode mask
    Encoding encoding;
    Groups groups;
    int renameOrder; ///< position among the keys that a rename carries, from 1; 0: not carried
    const char*
        defaultText; ///< what the default group holds instead of the control's value, or nullptr

    constexpr bool inDefaultGroup() const { return groups != Groups::WorkingOnly; }
    constexpr bool inWorkingGroup() const { return groups != Groups::DefaultOnly; }
};

constexpr std::size_t settingCount = 64;

/// Every setting, in the order in which they are written.
const std::array<Setting, settingCount>& settingsTable() noexcept;

/// The settings of the working group in the order in which they are read: as written, but the
/// custom resolution exists before it can be selected, and a detection's sensitivity comes before
/// its mode.
std::vector<const Setting*> readOrder();

/// The keys that renaming a template carries to the new name, in copying order.
std::vector<QString> renamedKeys();

} // namespace kestrel
