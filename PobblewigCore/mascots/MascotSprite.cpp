#include "mascots/MascotSprite.h"

#include <algorithm>

namespace pobblewig {

namespace {

std::map<MascotGait, MascotSprite::Rows> legsOf(char letter)
{
    std::map<MascotGait, MascotSprite::Rows> legs {
        { MascotGait::idle, { "..BB.BB..BB.BB..", "..BB.BB..BB.BB.." } },
        { MascotGait::walkA, { "..BB.BB..BB.BB..", ".BB..BB..BB..BB." } },
        { MascotGait::walkB, { "..BB.BB..BB.BB..", "..BB.BB..BB.BB.." } },
        { MascotGait::walkC, { "..BB.BB..BB.BB..", "..BBBB....BBBB.." } },
    };
    for (auto& [gait, rows] : legs) {
        for (auto& row : rows)
            std::ranges::replace(row, 'B', letter);
    }
    return legs;
}

MascotPalette paletteOf(const MascotColorScheme& scheme)
{
    MascotPalette palette;
    for (const auto& [letter, color] : scheme.letters)
        palette.emplace(letter, color);
    return palette;
}

MascotSprite colored(const MascotShape& shape, const MascotColorScheme& scheme)
{
    return {
        .id = shape.id,
        .palette = paletteOf(scheme),
        .body = { shape.body.begin(), shape.body.end() },
        .legs = legsOf(shape.legLetter),
        .claws = { shape.claws.begin(), shape.claws.end() },
        .eyeRow = shape.eyeRow,
        .eyeCols = { shape.eyeCols.begin(), shape.eyeCols.end() },
        .eyeColor = scheme.eyeColor,
        .pawColor = scheme.pawColor,
        .hiddenWithGlasses = { shape.hiddenWithGlasses.begin(), shape.hiddenWithGlasses.end() },
    };
}

} // namespace

MascotSprite MascotSprite::sprite(const Mascot& mascot)
{
    return colored(*mascot.shape, *mascot.colors);
}

MascotSprite MascotSprite::forID(QStringView mascotID)
{
    const auto* mascot = Mascot::find(mascotID);
    return sprite(mascot ? *mascot : Mascot::userFacing(mascotID));
}

MascotSprite MascotSprite::chosen(const QString& mascotID, const QString& schemeID)
{
    const auto& mascot = Mascot::userFacing(mascotID);
    return sprite(mascot).recolored(MascotColorScheme::forID(schemeID, mascot));
}

MascotSprite MascotSprite::recolored(const MascotColorScheme& scheme) const
{
    auto copy = *this;
    copy.id = id + u'.' + scheme.id;
    copy.palette = paletteOf(scheme);
    copy.eyeColor = scheme.eyeColor;
    copy.pawColor = scheme.pawColor;
    return copy;
}

MascotSprite::Rows MascotSprite::legRows(MascotGait gait) const
{
    const auto rows = legs.find(gait);
    return rows == legs.end() ? Rows() : rows->second;
}

std::vector<MascotSprite::Cell> MascotSprite::cells(
    const Rows& rows, const std::set<char>& hidden) const
{
    std::vector<Cell> cells;
    for (int row = 0; row < std::ssize(rows); ++row) {
        const auto& letters = rows[size_t(row)];
        for (int col = 0; col < std::ssize(letters); ++col) {
            const auto letter = letters[size_t(col)];
            const auto color = palette.find(letter);
            if (color != palette.end() && !hidden.contains(letter))
                cells.push_back({ row, col, color->second });
        }
    }
    return cells;
}

} // namespace pobblewig
