/// @file
/// An open SANE device as the dialog sees it: options by index, read and written with care.
#pragma once

#include <QByteArray>

#include <sane/sane.h>

#include <array>
#include <optional>
#include <vector>

namespace kestrel {

/// Gamma table as it is sent to the scanner: 256 entries of 0..255.
using GammaTable = std::array<int, 256>;

/// No scanner has so many options; a larger count is a broken device and would be walked for hours.
constexpr int kMaxOptions = 100'000;
/// No option value is so large; a larger size is a broken descriptor.
constexpr SANE_Int kMaxOptionSize = 1 << 20;
/// Bytes of a string value that reach the scanner.
constexpr std::size_t kStringValueSize = 64;

/// Smallest and largest value that a constraint admits, in the option's own unit.
struct WordRange
{
    SANE_Word min = 0;
    SANE_Word max = 0;
};

/// Whether the option can be used at present (SANE_CAP_INACTIVE is clear).
bool isActive(const SANE_Option_Descriptor& option) noexcept;
/// Whether the option's values are SANE_Fixed numbers.
bool isFixed(const SANE_Option_Descriptor& option) noexcept;
/// The limits of a range or word list; nothing for any other constraint.
std::optional<WordRange> wordRange(const SANE_Option_Descriptor& option);
/// The entries of a string list; empty for any other constraint. The texts are the device's.
std::vector<const char*> stringList(const SANE_Option_Descriptor& option);

/// Whole units: a SANE_Fixed word loses its fraction, an integer stays.
int wholeUnits(const SANE_Option_Descriptor& option, SANE_Word word) noexcept;
/// Millimetres: a SANE_Fixed word is scaled by 1/65536, an integer stays.
double millimetres(const SANE_Option_Descriptor& option, SANE_Word word) noexcept;
/// A length as SANE_Fixed, whichever way the option counts its millimetres.
SANE_Fixed fixedLength(const SANE_Option_Descriptor& option, SANE_Word word) noexcept;
/// Millimetres of a SANE_Fixed number (16 fractional bits).
constexpr double fixedToMm(SANE_Fixed value) noexcept
{
    return value * 1.52587890625e-5;
}

/// @param mm millimetres
/// @return as SANE_Fixed, toward zero; the nearest there is where the type ends, 0 for no number
SANE_Fixed mmToFixed(double mm) noexcept;

/// A view of an open device; the handle stays its owner's. Everything is synchronous.
class SaneDevice
{
public:
    explicit SaneDevice(SANE_Handle handle) noexcept : handle_(handle) {}

    struct OptionCount
    {
        const SANE_Option_Descriptor* option = nullptr; ///< option 0, null when it has none
        SANE_Word value = 0;                   ///< options, number 0 included, as the device says
        SANE_Status status = SANE_STATUS_GOOD; ///< of reading the value
        /// Where a walk over the options ends.
        int walkEnd() const noexcept { return value < kMaxOptions ? value : kMaxOptions; }
    };
    OptionCount optionCount() const;

    const SANE_Option_Descriptor* descriptor(int index) const;

    /// The option's first word; nothing when the device refuses or the size is absurd.
    std::optional<SANE_Word> readWord(int index, const SANE_Option_Descriptor& option) const;
    /// The option's text up to its terminator; nothing when the device refuses or the size is
    /// absurd.
    std::optional<QByteArray> readText(int index, const SANE_Option_Descriptor& option) const;

    // Backends read as many bytes as their descriptor says, so each value is padded with zeroes to
    // the option's size. An absurd size is refused (SANE_STATUS_INVAL) without asking the device.

    SANE_Status writeWord(int index, SANE_Word word, SANE_Int optionSize) const;
    /// Sets a text in a zero-filled buffer of 64 bytes. One of exactly 64 has no terminator.
    /// A longer one is a fault of the program and ends it.
    SANE_Status writeText(int index, const char* text, SANE_Int optionSize) const;
    /// Sets the table; a larger one repeats the last entry.
    SANE_Status writeGamma(int index, const GammaTable& table, SANE_Int optionSize) const;
    SANE_Status pressButton(int index) const;

private:
    SANE_Status read(int index, const SANE_Option_Descriptor& option,
                     std::vector<SANE_Word>& value) const;
    SANE_Status write(int index, void* value) const;

    SANE_Handle handle_;
};

/// Finds an option by name, ignoring case, and sets it from text, converted by the option's type.
///
/// A name that the device lacks is not looked at specially: the set then goes to the index behind
/// the last option, which the device refuses with a status of its own.
/// @param handle open device; with null nothing happens
/// @param name option name
/// @param value the value as text; may be null for gamma tables and buttons
/// @param gamma what gamma table options are set to
/// @return the status of the set; SANE_STATUS_GOOD without a handle
SANE_Status setOptionByName(SANE_Handle handle, const char* name, const char* value,
                            const GammaTable& gamma);

} // namespace kestrel
