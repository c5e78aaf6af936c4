#pragma once

#include <cmath>
#include <cstdint>

namespace pobblewig {

struct RGB {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const RGB&) const = default;
};

/// Blends from one colour (at 0) to the other (at 1).
inline RGB mixed(const RGB& one, const RGB& other, double amount)
{
    const auto between = [amount](std::uint8_t from, std::uint8_t to) {
        return std::uint8_t(std::lround(from + (to - from) * amount));
    };
    return { between(one.red, other.red), between(one.green, other.green),
        between(one.blue, other.blue) };
}

} // namespace pobblewig
