#include "buddy/BuddyBitmap.h"

#include "buddy/BuddyPaws.h"
#include "buddy/DotCanvas.h"

#include <QPoint>

#include <array>

namespace pobblewig {

namespace {

constexpr int perCell = BuddyBitmap::dotsPerCell;
constexpr RGB white { 255, 255, 255 };

/// The cells of hidden letters, in the colour of the fur around them.
std::vector<MascotSprite::Cell> furBehind(const MascotSprite& sprite)
{
    auto plain = sprite;
    plain.palette.clear();
    for (const auto letter : sprite.hiddenWithGlasses)
        plain.palette[letter] = sprite.palette.at('B');
    return plain.cells(plain.body);
}

DotCanvas bare(const MascotSprite& sprite, MascotGait gait, bool hasGlasses)
{
    DotCanvas canvas;
    if (hasGlasses) {
        canvas.paint(sprite.cells(sprite.body, sprite.hiddenWithGlasses), 0);
        canvas.paint(furBehind(sprite), 0);
    } else {
        canvas.paint(sprite.cells(sprite.body), 0);
    }
    canvas.paint(sprite.cells(sprite.legRows(gait)), BuddyBitmap::bodyRows / perCell);
    return canvas;
}

void paintClaws(const MascotSprite& sprite, DotCanvas& canvas)
{
    std::vector<MascotSprite::Cell> cells;
    cells.reserve(sprite.claws.size());
    for (const auto& claw : sprite.claws)
        cells.push_back({ claw.row, claw.col, sprite.pawColor });
    canvas.paint(cells, 0);
}

void paintEyes(const MascotSprite& sprite, EyeStyle style, QPoint look, DotCanvas& canvas)
{
    const auto art = PixelArts::eye(style);
    const auto outset = (art.width() - PixelArts::eye(EyeStyle::normal).width()) / 2;
    const auto row = sprite.eyeRow * perCell - outset + look.y();
    for (const auto left : sprite.eyeCols) {
        const auto col = left * perCell - outset + look.x();
        canvas.paint(art, row, col, { .fill = sprite.eyeColor, .outline = sprite.eyeColor });
    }
}

/// Where a lens begins for the eye that begins in a column of cells.
int lensColumn(int eyeColumn)
{
    return eyeColumn * perCell
        - (PixelArts::lens().width() - PixelArts::eye(EyeStyle::normal).width()) / 2;
}

/// Shows through the lenses what is behind them, a little lighter.
void paintLenses(const MascotSprite& sprite, DotCanvas& canvas)
{
    const auto lens = PixelArts::lens();
    for (const auto left : sprite.eyeCols) {
        for (int row = 0; row < lens.height(); ++row) {
            for (int col = 0; col < lens.width(); ++col) {
                if (lens.rows[size_t(row)][size_t(col)] != '.')
                    canvas.tint(sprite.glassesRowOffset() * perCell + row, lensColumn(left) + col,
                        white, 0.5);
            }
        }
    }
}

void paintRims(const MascotSprite& sprite, DotCanvas& canvas)
{
    const auto rim = PixelArts::rim();
    const auto top = sprite.glassesRowOffset() * perCell;
    const DotCanvas::Colors colors { .fill = sprite.eyeColor, .outline = sprite.eyeColor };
    auto end = perCell;
    for (const auto left : sprite.eyeCols) {
        const auto col = lensColumn(left);
        for (auto bar = end; bar < col; ++bar)
            canvas.paint(top + 3, bar, sprite.eyeColor);
        canvas.paint(rim, top, col, colors);
        end = col + rim.width();
    }
    for (auto bar = end; bar < BuddyBitmap::columns - perCell; ++bar)
        canvas.paint(top + 3, bar, sprite.eyeColor);
}

void paintLaptop(const MascotSprite& sprite, DotCanvas& canvas)
{
    const auto laptop = PixelArts::laptop();
    canvas.paint(laptop, BuddyBitmap::rows - laptop.height(),
        (BuddyBitmap::columns - laptop.width()) / 2,
        { .fill = { 92, 98, 112 }, .outline = { 58, 62, 74 }, .light = sprite.palette.at('B') });
}

DotCanvas::Colors pawColors(const MascotSprite& sprite)
{
    return { .fill = mixed(sprite.pawColor, white, 0.15),
        .outline = mixed(sprite.pawColor, sprite.eyeColor, 0.55),
        .light = white };
}

void paintTypingPaws(const MascotSprite& sprite, int frame, DotCanvas& canvas)
{
    const auto paw = PixelArts::typingPaw();
    constexpr int row = 10;
    constexpr int left = 5;
    const auto right = BuddyBitmap::columns - left - paw.width();
    canvas.paint(paw, frame == 0 ? row - 1 : row, left, pawColors(sprite));
    canvas.paint(paw, frame == 0 ? row : row - 1, right, pawColors(sprite));
}

void paintPettingPaw(const MascotSprite& sprite, int frame, DotCanvas& canvas)
{
    constexpr std::array<QPoint, BuddyPaws::pettingFrames> strokes { QPoint(-6, 0), { -1, 1 },
        { 5, 0 }, { 0, 1 } };
    const auto paw = PixelArts::paw();
    const auto stroke = strokes.at(size_t(frame));
    const auto col = (BuddyBitmap::columns - paw.width()) / 2 + stroke.x();
    canvas.paint(paw, 2 - paw.height() + stroke.y(), col, pawColors(sprite));
}

} // namespace

BuddyBitmap BuddyBitmap::standing(const MascotSprite& sprite)
{
    auto canvas = bare(sprite, MascotGait::idle, false);
    paintClaws(sprite, canvas);
    paintEyes(sprite, EyeStyle::normal, {}, canvas);
    return { .blocks = canvas.blocks() };
}

BuddyBitmap BuddyBitmap::rendered(const MascotSprite& sprite, const BitmapKey& key)
{
    auto canvas = bare(sprite, key.gait, key.showGlasses);
    if (key.showGlasses)
        paintLenses(sprite, canvas);
    paintEyes(sprite, key.eyeStyle, { key.dx, key.dy }, canvas);
    if (key.showGlasses)
        paintRims(sprite, canvas);
    if (key.showLaptop)
        paintLaptop(sprite, canvas);
    if (key.pawFrame >= BuddyPaws::petting)
        paintPettingPaw(sprite, key.pawFrame - BuddyPaws::petting, canvas);
    else if (key.pawFrame >= BuddyPaws::typing)
        paintTypingPaws(sprite, key.pawFrame - BuddyPaws::typing, canvas);
    return { .blocks = canvas.blocks() };
}

BuddyBitmap BuddyBitmap::claws(const MascotSprite& sprite)
{
    DotCanvas canvas;
    paintClaws(sprite, canvas);
    return { .blocks = canvas.blocks() };
}

BuddyBitmap BuddyBitmap::cardHolder(const MascotSprite& sprite, MascotGait gait)
{
    auto blocks = bare(sprite, gait, false).blocks();
    std::erase_if(blocks,
        [](const BuddyBlock& block) { return block.row >= earRows && block.row < bodyRows; });
    return { .blocks = std::move(blocks) };
}

} // namespace pobblewig
