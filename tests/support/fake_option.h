/// @file
/// One option of a stand-in scanner: what its descriptor says and what its value is. Nothing is
/// checked; a contradictory or hostile option is made on purpose.
#pragma once

#include <sane/sane.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::test {

/// Options are values: make one with a factory, change it with the chained setters, hand it to
/// FakeScanner::add().
class FakeOption
{
public:
    /// A check box.
    static FakeOption boolean(const std::string& name, bool value);
    /// An integer, with no constraint unless range() or words() is called.
    static FakeOption integer(const std::string& name, SANE_Word value);
    /// A fixed-point number; @p value as a plain number, in the unit of the option.
    static FakeOption fixed(const std::string& name, double value);
    /// A text with room for 64 bytes.
    static FakeOption text(const std::string& name, const std::string& value);
    /// A text out of a list; as long as the longest entry needs.
    static FakeOption choice(const std::string& name, const std::vector<std::string>& entries,
                             const std::string& value);
    /// A button.
    static FakeOption button(const std::string& name);
    /// A group heading; it has no name.
    static FakeOption group(const std::string& title);
    /// @p count words.
    static FakeOption array(const std::string& name, const std::vector<SANE_Word>& values);

    FakeOption& unit(SANE_Unit unit);
    FakeOption& inactive(bool inactive = true);
    FakeOption& cap(SANE_Int cap);
    /// What the descriptor says about the size, true or not.
    FakeOption& size(SANE_Int size);
    FakeOption& type(SANE_Value_Type type);
    /// Limits as words.
    FakeOption& range(SANE_Word min, SANE_Word max, SANE_Word quant = 0);
    /// Limits as plain numbers for a fixed-point option.
    FakeOption& limits(double min, double max);
    /// A word list.
    FakeOption& words(const std::vector<SANE_Word>& words);
    /// A string list.
    FakeOption& strings(const std::vector<std::string>& entries);
    /// No constraint.
    FakeOption& unconstrained();
    /// The constraint type stays, the pointer behind it becomes null.
    FakeOption& nullConstraint();
    /// The descriptor's name pointer is null; the name stays known to the tests.
    FakeOption& unnamed();
    /// sane_get_option_descriptor() answers null.
    /// @param times how often; it is described after that
    FakeOption& undescribed(int times = std::numeric_limits<int>::max());
    /// The bytes of the value.
    FakeOption& bytes(const std::vector<unsigned char>& value);
    FakeOption& word(SANE_Word value);
    FakeOption& string(const std::string& value);

    const std::string& name() const { return m_name; }
    SANE_Value_Type type() const { return m_type; }
    SANE_Int size() const { return m_size; }
    bool isActive() const { return (m_cap & SANE_CAP_INACTIVE) == 0; }
    /// @return whether the value is one word or several
    bool isNumber() const;
    const std::vector<unsigned char>& value() const { return m_value; }
    /// @return the value, decoded as in Journal::sets()
    std::string decoded() const { return decode(m_type, m_value); }

    /// Writes what a client may read into @p buffer: never more than the descriptor promises,
    /// though a whole word at least for word types.
    /// @return the bytes written
    std::vector<unsigned char> readInto(void* buffer) const;
    /// Takes the value a client sets. Words are read as the descriptor says, texts up to their NUL
    /// or 64 bytes (all 64 with @p wholeBuffer).
    /// @return the bytes taken
    std::vector<unsigned char> takeFrom(const void* buffer, bool wholeBuffer) const;

    /// @return the descriptor; valid until the option is changed or destroyed
    const SANE_Option_Descriptor* descriptor();

    /// @return the bytes as text for people, see Journal::sets()
    static std::string decode(SANE_Value_Type type, const std::vector<unsigned char>& bytes);

private:
    FakeOption(const std::string& name, SANE_Value_Type type, SANE_Int size);
    void describe();

    std::string m_name;
    std::string m_title;
    SANE_Value_Type m_type;
    SANE_Unit m_unit = SANE_UNIT_NONE;
    SANE_Int m_size;
    SANE_Int m_cap = SANE_CAP_SOFT_SELECT | SANE_CAP_SOFT_DETECT;
    SANE_Constraint_Type m_constraint = SANE_CONSTRAINT_NONE;
    bool m_nullConstraint = false;
    bool m_named = true;
    int m_timesUndescribed = 0;
    SANE_Range m_range{};
    std::vector<SANE_Word> m_words;
    std::vector<std::string> m_strings;
    std::vector<unsigned char> m_value;

    std::vector<SANE_String_Const> m_stringPointers;
    SANE_Option_Descriptor m_descriptor{};
};

} // namespace kestrel::test
