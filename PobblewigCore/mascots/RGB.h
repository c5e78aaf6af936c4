#pragma once

#include <cstdint>

namespace pobblewig {

struct RGB {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const RGB&) const = default;
};

} // namespace pobblewig
