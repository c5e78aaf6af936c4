#include "buddy/BuddyDrawing.h"

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int halfTransparent = BuddyDrawing::opaque / 2;

void appendRuns(const BuddyDrawing::Stamp& stamp, int dot, std::vector<QRect>& rects)
{
    const auto art = BuddyDrawing::art(stamp.art);
    for (int row = 0; row < art.height(); ++row) {
        const auto letters = art.rows[size_t(row)];
        const auto end = letters.size();
        for (size_t from = letters.find_first_not_of('.'); from < end;) {
            const auto to = std::min(letters.find('.', from), end);
            rects.emplace_back(stamp.corner.x() + int(from) * dot, stamp.corner.y() + row * dot,
                int(to - from) * dot, dot);
            from = letters.find_first_not_of('.', to);
        }
    }
}

/// A drop's tile reaches to its neighbours.
QRect tile(const BuddyDrawing::Rain& rain, const BuddyRain::Drop& drop)
{
    const auto corner = rain.place(drop);
    const auto next = rain.place({ drop.column + 1, drop.row + 1, 0, 0 });
    return { corner, next - QPoint(1, 1) };
}

} // namespace

QPoint BuddyDrawing::Rain::place(const BuddyRain::Drop& drop) const
{
    return origin + QPoint(qRound(drop.column * columnWidth), drop.row * rowHeight);
}

bool BuddyDrawing::Rain::operator==(const Rain& other) const
{
    if (opacity == 0 || other.opacity == 0)
        return opacity == other.opacity;
    return dot == other.dot && opacity == other.opacity && origin == other.origin
        && columnWidth == other.columnWidth && rowHeight == other.rowHeight && drops == other.drops;
}

bool BuddyDrawing::Card::operator==(const Card& other) const
{
    return frame == other.frame && dot == other.dot && rgb == other.rgb
        && picture.cacheKey() == other.picture.cacheKey()
        && next.cacheKey() == other.next.cacheKey() && nextOpacity == other.nextOpacity;
}

PixelArt BuddyDrawing::art(Stamp::Art art)
{
    switch (art) {
    case Stamp::Art::smallHeart:
        return PixelArts::heart(false);
    case Stamp::Art::largeHeart:
        return PixelArts::heart(true);
    case Stamp::Art::smallZ:
        return PixelArts::letterZ(0);
    case Stamp::Art::middleZ:
        return PixelArts::letterZ(1);
    case Stamp::Art::largeZ:
        return PixelArts::letterZ(2);
    }
    return PixelArts::heart(false);
}

void BuddyDrawing::outline(BuddyShape& shape) const
{
    shape.pressable.clear();
    for (const auto& part : parts)
        shape.pressable.push_back(part.rect);
    if (card) {
        shape.pressable.push_back(card->frame.adjusted(card->dot, 0, -card->dot, 0));
        shape.pressable.push_back(card->frame.adjusted(0, card->dot, 0, -card->dot));
    }

    shape.seen.clear();
    if (rain.opacity > halfTransparent) {
        for (const auto& drop : rain.drops)
            shape.seen.push_back(tile(rain, drop));
    }
    for (const auto& stamp : stamps) {
        if (stamp.opacity > halfTransparent)
            appendRuns(stamp, stampDot, shape.seen);
    }
}

} // namespace pobblewig
