#include "PobblewigStarterMemes/Figure.h"

#include "PobblewigStarterMemes/FacePainter.h"

namespace pobblewig {

namespace {

constexpr int columns = 16;
constexpr int bodyRows = 6;
constexpr int legRows = 2;
/// The first row that the head fills from ear to ear.
constexpr int crownRow = 1;
constexpr char axolotlsMouth = 'S';
constexpr char mousesNose = 'N';

void paintCells(
    Canvas& canvas, const std::vector<MascotSprite::Cell>& cells, QPoint corner, int cell)
{
    for (const auto& [row, col, color] : cells)
        canvas.box({ corner + QPoint(col, row) * cell, QSize(cell, cell) }, color);
}

/// The sprite without the mouth, which the face brings, and from behind without the nose.
MascotSprite plain(MascotSprite sprite, bool isTurnedAway)
{
    for (const auto letter : sprite.hiddenWithGlasses) {
        if (isTurnedAway || letter == axolotlsMouth)
            sprite.palette[letter] = sprite.palette.at('B');
    }
    return sprite;
}

MascotSprite chosen(const char* mascot, const char* scheme)
{
    return MascotSprite::chosen(QString::fromLatin1(mascot), QString::fromLatin1(scheme));
}

} // namespace

QRect Figure::body() const
{
    const QSize size(columns * cell, bodyRows * cell);
    const auto legs = hasLegs ? legRows * cell : 0;
    return { feet - QPoint(size.width() / 2, size.height() + legs), size };
}

QPoint Figure::crown() const
{
    return body().topLeft() + QPoint(columns / 2, crownRow) * cell;
}

QPoint Figure::mouth() const
{
    const auto isMouse = sprite.palette.contains(mousesNose);
    return body().topLeft() + QPoint(columns / 2 * cell, (isMouse ? 11 : 9) * cell / 2);
}

QRect Figure::eye(Side side) const
{
    const auto column = sprite.eyeCols[size_t(side)];
    return { body().topLeft() + QPoint(column, sprite.eyeRow) * cell, QSize(2 * cell, 2 * cell) };
}

QPoint Figure::cheek(Side side) const
{
    const auto outwards = side == Side::left ? -3 * cell / 2 : 3 * cell / 2;
    return eye(side).center() + QPoint(outwards, 3 * cell / 2);
}

void Figure::paint(Canvas& canvas) const
{
    canvas.place(layer());
}

Canvas Figure::layer() const
{
    Canvas canvas;
    const auto bare = plain(sprite, isTurnedAway);
    const auto corner = body().topLeft();
    paintCells(canvas, bare.cells(bare.body), corner, cell);
    if (hasLegs)
        paintCells(
            canvas, bare.cells(bare.legRows(gait)), corner + QPoint(0, bodyRows * cell), cell);
    canvas.outline(mixed(sprite.eyeColor, Ink::black, 0.5));
    if (!isTurnedAway)
        FacePainter(*this, canvas).paint();
    return canvas;
}

void Figure::paintPaw(Canvas& canvas, QPoint middle) const
{
    const auto paw = PixelArts::typingPaw();
    const LetterColor colors[] { { 'X', mixed(sprite.pawColor, Ink::white, 0.15) },
        { 'O', mixed(sprite.pawColor, sprite.eyeColor, 0.55) } };
    const auto scale = cell > 3 ? 2 : 1;
    canvas.art(paw, middle - QPoint(paw.width(), paw.height()) * scale / 2, scale, colors);
}

MascotSprite Figures::grayMouse()
{
    return chosen("mouse", "original");
}

MascotSprite Figures::brownMouse()
{
    return chosen("mouse", "brown");
}

MascotSprite Figures::whiteMouse()
{
    return chosen("mouse", "white");
}

MascotSprite Figures::goldenAxolotl()
{
    return chosen("axolotl", "golden");
}

MascotSprite Figures::pinkAxolotl()
{
    return chosen("axolotl", "pink");
}

MascotSprite Figures::blueAxolotl()
{
    return chosen("axolotl", "blue");
}

MascotSprite Figures::lavenderAxolotl()
{
    return chosen("axolotl", "lavender");
}

} // namespace pobblewig
