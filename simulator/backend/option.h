#pragma once

#include <string>
#include <variant>
#include <vector>

#include <sane/sane.h>

namespace kestrel::sim {

/// What an option may be set to: anything, a range, one of some words, or one of some texts.
using Constraint =
    std::variant<std::monostate, SANE_Range, std::vector<SANE_Word>, std::vector<std::string>>;

/// One scanner option: its description and its value. The description handed out stays valid and in
/// place for as long as the object lives; it is therefore neither copied nor moved once it is
/// described.
class Option
{
public:
    /// The option's name before any renaming; this is how the simulator itself asks for it.
    std::string key;
    std::string name;
    std::string title;
    std::string text; ///< explanation, and for string options nothing else
    SANE_Value_Type type = SANE_TYPE_GROUP;
    SANE_Unit unit = SANE_UNIT_NONE;
    SANE_Int cap = 0;
    SANE_Int infoWhenSet =
        0; ///< SANE_INFO_RELOAD_PARAMS where the image's size or kind hangs on it
    Constraint constraint;
    std::vector<SANE_Word> words; ///< the value, except of string options
    std::string string;           ///< the value of a string option

    // What a configuration may have done to the option.
    bool pinnedInactive = false;
    bool pinnedConstraint = false;
    bool unnamed = false;
    bool nullDescriptor = false;
    SANE_Int pinnedSize = -1;
    SANE_Status readStatus = SANE_STATUS_GOOD;
    SANE_Status setStatus = SANE_STATUS_GOOD;

    bool isActive() const { return (cap & SANE_CAP_INACTIVE) == 0; }
    bool isSettable() const { return (cap & SANE_CAP_SOFT_SELECT) != 0; }
    SANE_Int size() const;

    /// Makes the description agree with the members above; to be called after any of them changed.
    void describe();
    const SANE_Option_Descriptor& descriptor() const { return descriptor_; }

    /// Each of the three answers whether anything changed. A value outside a new constraint moves
    /// to the nearest one inside, or to the first text.
    bool setActive(bool active);
    bool setRange(const SANE_Range& range);
    bool setTexts(const std::vector<std::string>& texts);

    /// Copies the value to @p value, which has room for size() bytes.
    void read(void* value) const;

    /// Checks the value at @p value, moves it to the nearest permitted one and stores it. Words at
    /// @p value are overwritten with what was stored, then SANE_INFO_INEXACT is added to @p info.
    /// @return SANE_STATUS_INVAL for a value with no permitted one near it
    SANE_Status write(void* value, SANE_Int& info);

    /// The value as one line of text for the journal.
    std::string valueText() const;

    /// Like it, for a value that somebody sends; null gives an empty text.
    std::string sentText(const void* value) const;

private:
    bool moveInside();
    SANE_Status writeWords(SANE_Word* value, SANE_Int& info);
    SANE_Status writeString(char* value);

    SANE_Option_Descriptor descriptor_{};
    SANE_Range range_{};
    std::vector<SANE_Word> wordList_;
    std::vector<const char*> stringList_;
};

/// The permitted word nearest to @p value: clamped to a range and moved to its grid (half a step
/// rounds up), or the nearest of a list (the first of two as near).
SANE_Word nearestWord(const Constraint& constraint, SANE_Word value);

} // namespace kestrel::sim
