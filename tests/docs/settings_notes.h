/// @file
/// What the tables of the library do not say about a setting: its name on the screen, its SANE
/// options, the rules that touch it. The document of the settings is made from both, and the tests
/// hold every word here that can be held against the dialog.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestrel::test {

/// A control and what it is set to: index, 0 or 1, or number. Two names are no controls: sideMode
/// sets the side-mode mask, previewArea lets the scan take the selection on the preview.
struct Step
{
    std::string_view control;
    double value;
};
constexpr std::string_view sideMode = "(side mode)";
constexpr std::string_view previewArea = "(preview area)";

/// One setting.
struct Note
{
    using Texts = std::vector<const char*>;

    /// @param theKey key in the settings file; for a control that is not stored its object name in
    ///        brackets
    /// @param theCaption object name of the widget whose text names the setting on the screen;
    ///        empty for none
    Note(const char* theKey, const char* theCaption, const char* theMeaning)
        : key(theKey), caption(theCaption), meaning(theMeaning)
    {
    }
    /// The SANE options that carry it.
    Note& sends(const Texts& names)
    {
        options = names;
        return *this;
    }
    /// Other SANE options that may change with it.
    Note& moves(const Texts& names)
    {
        others = names;
        return *this;
    }
    /// The values of the first option, one an index.
    template <typename Table>
    Note& as(const Table& table)
    {
        values.assign(table.begin(), table.end());
        return *this;
    }
    /// The entries of a list that the form leaves empty.
    template <typename Table>
    Note& lists(const Table& table)
    {
        entries.assign(table.begin(), table.end());
        return *this;
    }
    /// The SANE option from which the control takes its limits.
    Note& within(const char* option)
    {
        limits = option;
        return *this;
    }
    Note& in(const char* theUnit)
    {
        unit = theUnit;
        return *this;
    }
    /// The state in which a change of the control reaches the scanner.
    Note& given(const std::vector<Step>& steps)
    {
        state = steps;
        return *this;
    }
    /// A change that reaches all of its options; without one the next value is taken.
    Note& to(double value)
    {
        change = value;
        hasChange = true;
        return *this;
    }
    Note& rule(const char* text)
    {
        rules.emplace_back(text);
        return *this;
    }

    const char* key;
    const char* caption;
    const char* meaning;
    Texts options;
    Texts others;
    Texts values;
    Texts entries;
    const char* limits = nullptr;
    const char* unit = "";
    std::vector<Step> state;
    double change = 0;
    bool hasChange = false;
    std::vector<std::string> rules;
};

/// The settings of the file, in any order.
const std::vector<Note>& settingNotes();
/// Controls that reach the scanner without being stored.
const std::vector<Note>& unstoredNotes();
/// The options that a scan can be preceded by, in the order in which they are sent.
const std::vector<std::string>& sendingOrder();
/// @return the note on a key; throws std::runtime_error without one
const Note& noteOn(const std::string& key);

} // namespace kestrel::test
