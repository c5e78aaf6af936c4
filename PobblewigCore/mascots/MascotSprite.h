#pragma once

#include "mascots/Mascot.h"

#include <compare>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace pobblewig {

/// The leg frames.
enum class MascotGait { idle, walkA, walkB, walkC };

enum class EyeStyle { normal, closed, wide, happy };

/// The colour of each letter of a shape.
using MascotPalette = std::map<char, RGB>;

/// A shape with its colours.
struct MascotSprite {
    using Rows = std::vector<std::string>;
    using Position = MascotShape::Position;

    struct Cell {
        int row = 0;
        int col = 0;
        RGB rgb;

        bool operator==(const Cell&) const = default;
    };

    /// Differs between recoloured copies, so that their pictures are never confused.
    QString id;
    MascotPalette palette;
    Rows body;
    /// Drawn under the body.
    std::map<MascotGait, Rows> legs;
    /// Cells of the body that move as a separate layer.
    std::vector<Position> claws;
    int eyeRow = 0;
    /// The left column of each eye.
    std::vector<int> eyeCols;
    RGB eyeColor;
    /// The colour of the petting paw and the claws.
    RGB pawColor;
    /// Letters that are not drawn while the mascot wears glasses.
    std::set<char> hiddenWithGlasses;

    /// The sprite in the mascot's own colours.
    static MascotSprite sprite(const Mascot& mascot);

    /// The sprite for a mascot's id, the crab included. An unknown id gives the mouse.
    static MascotSprite forID(QStringView mascotID);

    /// The sprite that the user has chosen, in the colours chosen for it. Unknown ids give the
    /// mouse and the mascot's own colours.
    static MascotSprite chosen(const QString& mascotID, const QString& schemeID);

    MascotSprite recolored(const MascotColorScheme& scheme) const;

    /// Empty for a gait that the sprite lacks.
    Rows legRows(MascotGait gait) const;

    /// The row of the glasses.
    int glassesRowOffset() const { return eyeRow - 1; }

    /// The cells to paint, row by row, without hidden letters and letters that have no colour.
    std::vector<Cell> cells(const Rows& rows, const std::set<char>& hidden = {}) const;

    bool operator==(const MascotSprite&) const = default;
};

/// Identifies one rendered picture of a mascot.
struct BitmapKey {
    QString sprite;
    MascotGait gait = MascotGait::idle;
    EyeStyle eyeStyle = EyeStyle::normal;
    /// The direction in which the eyes look.
    int dx = 0;
    int dy = 0;
    bool showGlasses = false;
    bool showLaptop = false;
    int pawFrame = 0;

    std::weak_ordering operator<=>(const BitmapKey&) const = default;
    bool operator==(const BitmapKey&) const = default;
};

} // namespace pobblewig
