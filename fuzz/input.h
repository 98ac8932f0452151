/// @file
/// The bytes of one run, taken as numbers, choices and texts. What is asked for beyond the end is 0
/// or empty, so that every input is a valid one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kestrel::fuzz {

/// Reads from the front to the back; equal bytes give equal answers on every machine.
class Input
{
public:
    Input(const std::uint8_t* data, std::size_t size) : m_at(data), m_end(data + size) {}

    bool isEmpty() const { return m_at == m_end; }
    std::size_t left() const { return static_cast<std::size_t>(m_end - m_at); }

    std::uint8_t byte() { return isEmpty() ? std::uint8_t{0} : *m_at++; }
    bool flag() { return (byte() & 1U) != 0; }
    std::uint32_t word();
    /// @return a number from 0 to @p count - 1; 0 when there is none
    int below(int count);
    /// @return any int, with a liking for small ones and for the ends of the range
    int integer();
    /// @return any double, with a liking for lengths, huge numbers and those that are none
    double real();
    // Arguments of a call are worked out in any order: several numbers are taken by these, or in
    // braces.
    template <std::size_t Count>
    std::array<int, Count> integers()
    {
        std::array<int, Count> values{};
        for (int& value : values) {
            value = integer();
        }
        return values;
    }
    template <std::size_t Count>
    std::array<double, Count> reals()
    {
        std::array<double, Count> values{};
        for (double& value : values) {
            value = real();
        }
        return values;
    }
    /// @return up to @p most bytes; how many is in the input
    std::string text(std::size_t most);
    /// @return everything that is left
    std::string rest();

    template <typename T>
    const T& pick(const std::vector<T>& choices)
    {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }

private:
    const std::uint8_t* m_at;
    const std::uint8_t* m_end;
};

} // namespace kestrel::fuzz
