#include "buddy/BuddyCanvas.h"

#include "buddy/BuddyBitmap.h"

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int spriteColumns = BuddyBitmap::columns / BuddyBitmap::dotsPerCell;
constexpr int spriteRows = BuddyBitmap::rows / BuddyBitmap::dotsPerCell;

} // namespace

BuddyRoom BuddyRoom::united(const BuddyRoom& other) const
{
    return { .beside = std::max(beside, other.beside), .above = std::max(above, other.above) };
}

BuddyCanvas BuddyCanvas::ofScale(double sizeScale, double devicePixelRatio)
{
    return { .cell = qMax(1, qRound(pointsPerCell * sizeScale * devicePixelRatio)), .room = {} };
}

QSize BuddyCanvas::size() const
{
    return { (spriteColumns + 2 * (cellsAround + room.beside)) * cell,
        (spriteRows + cellsAbove + room.above) * cell };
}

int BuddyCanvas::pixels(double points) const
{
    return qRound(points * cell / pointsPerCell);
}

int BuddyCanvas::dot() const
{
    return qMax(1, cell / BuddyBitmap::dotsPerCell);
}

} // namespace pobblewig
