#include "input.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace kestrel::fuzz {

std::uint32_t Input::word()
{
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) {
        value = value << 8U | byte();
    }
    return value;
}

int Input::below(int count)
{
    if (count <= 1) {
        return 0;
    }
    const unsigned value =
        count <= 256 ? byte() : static_cast<unsigned>(byte()) << 8U | static_cast<unsigned>(byte());
    return static_cast<int>(value % static_cast<unsigned>(count));
}

int Input::integer()
{
    using Limits = std::numeric_limits<int>;
    static const std::vector<int> kSpecial = {
        Limits::min(), Limits::max(), -1,      1,         1 << 16,   -(1 << 16), (1 << 20) + 1,
        1 << 20,       1 << 24,       1 << 28, 1 << 30,   100'001,   100 << 16,  65'535,
        -32'769,       256,           1024,    297 << 16, 215 << 16, 14'090'240};
    switch (byte() % 4) {
    case 0:
        return byte();
    case 1:
        return static_cast<std::int8_t>(byte());
    case 2:
        return pick(kSpecial);
    default: {
        const std::uint32_t bits = word();
        int value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    }
}

double Input::real()
{
    using Limits = std::numeric_limits<double>;
    static const std::vector<double> kSpecial = {Limits::infinity(),
                                                 -Limits::infinity(),
                                                 Limits::quiet_NaN(),
                                                 Limits::max(),
                                                 -Limits::max(),
                                                 Limits::denorm_min(),
                                                 -0.0,
                                                 0.05,
                                                 15.0,
                                                 210.0,
                                                 297.0,
                                                 2147483648.0,
                                                 -2147483649.0,
                                                 1e9};
    switch (byte() % 4) {
    case 0:
        return byte();
    case 1:
        return integer() / 16.0;
    case 2:
        return pick(kSpecial);
    default: {
        const std::uint64_t bits = static_cast<std::uint64_t>(word()) << 32U | word();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    }
}

std::string Input::text(std::size_t most)
{
    const std::size_t length =
        std::min({static_cast<std::size_t>(below(static_cast<int>(most) + 1)), most, left()});
    std::string result(m_at, m_at + length);
    m_at += length;
    return result;
}

std::string Input::rest()
{
    std::string result(m_at, m_end);
    m_at = m_end;
    return result;
}

} // namespace kestrel::fuzz
