#pragma once

#include <QLatin1String>

#include <array>
#include <span>
#include <string_view>

namespace pobblewig {

/// The drawing of a mascot as rows of letters. Each row has 16 columns, "." is an empty cell, and
/// every other letter stands for a colour.
struct MascotShape {
    struct Position {
        int row = 0;
        int col = 0;

        bool operator==(const Position&) const = default;
    };

    QLatin1String id;
    std::span<const std::string_view> body;
    /// The letter that draws the legs, whose frames all mascots share.
    char legLetter = 'B';
    /// Cells of the body that move as a separate layer.
    std::span<const Position> claws = {};
    int eyeRow = 0;
    /// The left column of each eye.
    std::array<int, 2> eyeCols;
    /// Letters that are not drawn while the mascot wears glasses.
    std::string_view hiddenWithGlasses = {};
};

} // namespace pobblewig
