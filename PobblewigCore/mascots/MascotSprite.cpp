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

MascotSprite skritSprite()
{
    return {
        .id = QStringLiteral("skrit"),
        .palette = { { 'B', { 217, 119, 87 } } },
        .body = MascotSprite::Rows(6, "..BBBBBBBBBBBB.."),
        .legs = legsOf('B'),
        .claws = { { 2, 1 }, { 3, 0 }, { 3, 1 }, { 2, 14 }, { 3, 14 }, { 3, 15 } },
        .eyeRow = 1,
        .eyeCols = { 4, 10 },
        .eyeColor = { 64, 33, 23 },
        .pawColor = { 217, 119, 87 },
        .hiddenWithGlasses = {},
    };
}

MascotSprite mouseSprite()
{
    const auto& colors = MascotColorScheme::mouseSchemes().front();
    return {
        .id = QStringLiteral("mouse"),
        .palette = colors.palette,
        .body = {
            "..EE........EE..",
            ".EeeEBBBBBBEeeE.",
            ".BBBBBBBBBBBBBB.",
            ".BBBBBBBBBBBBBB.",
            ".BBBBBBNNBBBBBB.",
            ".BBBBLLLLLLBBBB.",
        },
        .legs = legsOf('F'),
        .claws = {},
        .eyeRow = 2,
        .eyeCols = { 4, 10 },
        .eyeColor = colors.eyeColor,
        .pawColor = colors.pawColor,
        .hiddenWithGlasses = { 'N' },
    };
}

MascotSprite axolotlSprite()
{
    const auto& colors = MascotColorScheme::axolotlSchemes().front();
    return {
        .id = QStringLiteral("axolotl"),
        .palette = colors.palette,
        .body = {
            "GG............GG",
            ".GGBBBBBBBBBBGG.",
            "GGGBBBBBBBBBBGGG",
            ".GBBBBBBBBBBBBG.",
            ".BBBBBSSSSBBBBB.",
            ".BBBBLLLLLLBBBB.",
        },
        .legs = legsOf('G'),
        .claws = {},
        .eyeRow = 2,
        .eyeCols = { 4, 10 },
        .eyeColor = colors.eyeColor,
        .pawColor = colors.pawColor,
        .hiddenWithGlasses = { 'S' },
    };
}

} // namespace

const MascotSprite& MascotSprite::sprite(Mascot mascot)
{
    static const auto skrit = skritSprite();
    static const auto mouse = mouseSprite();
    static const auto axolotl = axolotlSprite();
    if (mascot == Mascot::skrit)
        return skrit;
    return mascot == Mascot::axolotl ? axolotl : mouse;
}

const MascotSprite& MascotSprite::forID(const QString& mascotID)
{
    return sprite(mascotID == u"skrit" ? Mascot::skrit : userFacingMascot(mascotID));
}

MascotSprite MascotSprite::recolored(const MascotColorScheme& scheme) const
{
    auto copy = *this;
    copy.id = id + u'.' + scheme.id;
    copy.palette = scheme.palette;
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
