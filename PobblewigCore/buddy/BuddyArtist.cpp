#include "buddy/BuddyArtist.h"

#include "buddy/BuddySmoothing.h"
#include "buddy/RainGlyphs.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pobblewig {

namespace {

using Stamp = BuddyDrawing::Stamp;

constexpr int spriteColumns = BuddyBitmap::columns / BuddyBitmap::dotsPerCell;
constexpr int spriteRows = BuddyBitmap::rows / BuddyBitmap::dotsPerCell;

/// Points.
constexpr double cardWidth = 124;
constexpr double cardHeight = 104;
constexpr QSizeF sleepGrowth(70, 140);
constexpr double heartRise = 52;
/// Between the head and a badge, with room for the leaps of a messenger.
constexpr double badgeGap = 14;
constexpr double badgeDistance = 4;

int cells(double points)
{
    return int(std::ceil(points / BuddyCanvas::pointsPerCell));
}

/// The rows of cells that the body takes, with a card in its middle.
int bodyCells(const BuddyFrame& frame)
{
    if (!frame.card)
        return spriteRows;
    constexpr auto hidden = (BuddyBitmap::bodyRows - BuddyBitmap::earRows) / 2;
    return spriteRows - hidden + cells(cardHeight);
}

/// Steps that the eye takes for smooth.
int opacity(double amount)
{
    constexpr int steps = 16;
    return qRound(std::clamp(amount, 0.0, 1.0) * steps) * BuddyDrawing::opaque / steps;
}

Stamp::Art letterArt(int size)
{
    return Stamp::Art(int(Stamp::Art::smallZ) + std::clamp(size, 0, PixelArts::letterSizes - 1));
}

/// A point on the drawing's grid of dots, so that pixels of a kind never mix.
QPoint onGrid(double x, double y, int dot)
{
    return { qRound(x / dot) * dot, qRound(y / dot) * dot };
}

void drawHearts(
    const BuddyFrame& frame, const BuddyCanvas& canvas, QPoint head, std::vector<Stamp>& stamps)
{
    for (const auto& heart : frame.hearts) {
        const auto art = heart.isLarge ? Stamp::Art::largeHeart : Stamp::Art::smallHeart;
        const auto shown = BuddyDrawing::art(art);
        const auto rise = heartRise * (1 - (1 - heart.age) * (1 - heart.age));
        const auto sway = 4 * std::sin(2 * std::numbers::pi * (heart.age + heart.x));
        const auto left = 48 * heart.x + sway - shown.width() * 2;
        const auto above = rise + shown.height() * 4 - 8;
        const auto goes = (1 - heart.age) / 0.35;
        stamps.push_back(
            { art, head + QPoint(canvas.pixels(left), -canvas.pixels(above)), opacity(goes) });
    }
}

/// Letters rise on the right, or on the left where the screen ends there.
bool areMirrored(const BuddyCanvas& canvas, const BuddyReach& reach)
{
    return reach.right < canvas.size().width() / 2 && reach.right < reach.left;
}

void drawLetters(const BuddyFrame& frame, const BuddyCanvas& canvas, QPoint head, bool areMirrored,
    std::vector<Stamp>& stamps)
{
    const auto dot = canvas.dot();
    for (const auto& letter : frame.letters) {
        const auto art = letterArt(letter.size);
        const auto strength = opacity(letter.opacity);
        const auto shown = BuddyDrawing::art(art);
        const auto right = 64 + letter.x;
        const auto left = areMirrored ? -right - shown.width() * 4 : right;
        const auto above = letter.y + shown.height() * 4;
        const auto offset = onGrid(canvas.pixels(left), -canvas.pixels(above), dot);
        if (strength > 0)
            stamps.push_back({ art, head + offset, strength });
    }
}

} // namespace

int BuddyPill::shift() const
{
    const auto half = (size.width() + 1) / 2;
    const auto inwards = std::max(0, half - reach.left) - std::max(0, half - reach.right);
    return std::clamp(inwards, -half, half);
}

BuddyArtist::BuddyArtist(const MascotSprite& sprite)
    : m_sprite(sprite)
    , m_claws(BuddyBitmap::claws(sprite))
{
}

BuddyRoom BuddyArtist::room(const BuddyFrame& frame, int cell, const BuddyPill& pill)
{
    const auto body = bodyCells(frame) - spriteRows;
    BuddyRoom room { .beside = 0, .above = body };
    if (frame.sleepAmount > 0) {
        room = room.united({ .beside = cells(sleepGrowth.width() / 2),
            .above = body + cells(sleepGrowth.height()) });
    }
    if (frame.rain > 0)
        room = room.united({ .beside = 3, .above = body + 5 });
    if (!frame.hearts.isEmpty())
        room = room.united({ .beside = 0, .above = body + 8 });
    if (frame.badge) {
        const auto pixels = pill.size.width() + 2 * std::abs(pill.shift());
        const auto width = (pixels + cell - 1) / cell;
        const auto beside = (width - spriteColumns + 1) / 2 - BuddyCanvas::cellsAround;
        const auto above =
            (pill.size.height() + cell - 1) / cell + cells(badgeGap + badgeDistance) + 1;
        room = room.united({ .beside = beside, .above = body + above - 1 });
    }
    return room;
}

void BuddyArtist::setSprite(const MascotSprite& sprite)
{
    m_sprite = sprite;
    m_claws = BuddyBitmap::claws(sprite);
}

void BuddyArtist::draw(const BuddyFrame& frame, const BuddyCanvas& canvas, const BuddyPill& pill,
    BuddyDrawing& drawing)
{
    const BuddyLayout layout(frame.pose, canvas);
    drawing.parts.clear();
    drawing.card.reset();
    drawRain(frame, canvas, drawing.rain);
    if (frame.card)
        drawCard(frame, canvas, layout, drawing);
    else
        drawBody(frame, layout, drawing);

    const auto headTop = frame.card ? drawing.parts.front().rect.top() : layout.top(0);
    const QPoint head(layout.middle(), headTop);
    drawing.stampDot = canvas.dot();
    drawing.stamps.clear();
    drawHearts(frame, canvas, head, drawing.stamps);
    drawLetters(frame, canvas, head, areMirrored(canvas, pill.reach), drawing.stamps);

    drawing.badge.reset();
    if (frame.badge)
        drawBadge(frame, canvas, pill, headTop, drawing);
}

const BuddyBitmap& BuddyArtist::bitmap(const BitmapKey& look)
{
    auto key = look;
    key.sprite = m_sprite.id;
    auto found = m_bitmaps.find(key);
    if (found == m_bitmaps.end())
        found = m_bitmaps.emplace(key, BuddyBitmap::rendered(m_sprite, key)).first;
    return found->second;
}

const BuddyBitmap& BuddyArtist::cardHolder(MascotGait gait)
{
    const std::pair key(m_sprite.id, gait);
    auto found = m_cardHolders.find(key);
    if (found == m_cardHolders.end())
        found = m_cardHolders.emplace(key, BuddyBitmap::cardHolder(m_sprite, gait)).first;
    return found->second;
}

void BuddyArtist::drawRain(
    const BuddyFrame& frame, const BuddyCanvas& canvas, BuddyDrawing::Rain& rain)
{
    rain.drops.clear();
    rain.opacity = opacity(frame.rain);
    if (rain.opacity == 0)
        return;
    const auto size = canvas.size();
    rain.columnWidth = double(size.width()) / BuddyRain::columns;
    rain.dot = std::max(1, int(rain.columnWidth / (RainGlyphs::columns + 1)));
    rain.rowHeight = rain.dot * (RainGlyphs::rows + 1);
    const auto rows = size.height() / rain.rowHeight;
    rain.origin = { 0, size.height() - rows * rain.rowHeight };
    const auto rowPoints = rain.rowHeight * BuddyCanvas::pointsPerCell / canvas.cell;
    m_rain.fall({ rows, rowPoints }, frame.time, rain.drops);
}

void BuddyArtist::drawBody(
    const BuddyFrame& frame, const BuddyLayout& layout, BuddyDrawing& drawing)
{
    for (const auto& block : m_claws.blocks) {
        auto raised = block;
        raised.row -= block.col < BuddyBitmap::columns / 2 ? frame.claws.left : frame.claws.right;
        drawing.parts.push_back({ layout.rect(raised), block.rgb });
    }
    for (const auto& block : bitmap(frame.look).blocks)
        drawing.parts.push_back({ layout.rect(block), block.rgb });
}

void BuddyArtist::drawBadge(const BuddyFrame& frame, const BuddyCanvas& canvas,
    const BuddyPill& pill, int headTop, BuddyDrawing& drawing)
{
    const auto ground = canvas.size().height();
    const auto restingHead = ground - bodyCells(frame) * canvas.cell;
    const auto bottom =
        std::min(restingHead - canvas.pixels(badgeGap), headTop - canvas.pixels(badgeDistance));
    const auto middle = canvas.size().width() / 2 + pill.shift();
    const auto top = std::max(bottom - pill.size.height(), ground - pill.reach.above);
    const QPoint corner(middle - pill.size.width() / 2, top);
    drawing.badge = { frame.badge->mark, frame.badge->label, QRect(corner, pill.size),
        opacity(frame.badge->opacity) };
}

void BuddyArtist::drawCard(const BuddyFrame& frame, const BuddyCanvas& canvas,
    const BuddyLayout& layout, BuddyDrawing& drawing)
{
    const QSize size(canvas.pixels(cardWidth), canvas.pixels(cardHeight));
    const auto bottom = layout.top(BuddyBitmap::bodyRows);
    const QRect place(QPoint(layout.middle() - size.width() / 2, bottom - size.height()), size);
    const auto earsRise = layout.top(BuddyBitmap::earRows) - place.top();
    for (const auto& block : cardHolder(frame.look.gait).blocks) {
        const auto isEar = block.row < BuddyBitmap::earRows;
        const auto rect = layout.rect(block).translated(0, isEar ? -earsRise : 0);
        drawing.parts.push_back({ rect, block.rgb });
    }
    drawing.card = BuddyDrawing::Card { .frame = place,
        .dot = canvas.dot(),
        .rgb = m_sprite.palette.at('B'),
        .picture = frame.card->picture,
        .next = frame.card->next,
        .nextOpacity = opacity(frame.card->nextOpacity) };
}

} // namespace pobblewig
