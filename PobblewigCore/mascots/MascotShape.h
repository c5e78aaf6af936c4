#pragma once

#include <QLatin1String>

#include <array>
#include <span>
#include <string_view>

namespace pobblewig {

/// What a mascot is drawn from: rows of letters. Each row has 16 columns, "." is an empty cell, and
/// every other letter names a colour.
struct MascotShape {
    struct Position {
        int row = 0;
        int col = 0;

        bool operator==(const Position&) const = default;
    };

    QLatin1String id;
    std::span<const std::string_view> body;
    /// The legs walk alike; this is what they are drawn with.
    char legLetter = 'B';
    /// Cells of the body that move as a layer of their own.
    std::span<const Position> claws = {};
    int eyeRow = 0;
    /// The left column of each eye.
    std::array<int, 2> eyeCols;
    /// Letters that are left out while the glasses are worn.
    std::string_view hiddenWithGlasses = {};
};

} // namespace pobblewig
