#include "PobblewigDesktop/presence/BuddyFace.h"

#include "PobblewigDesktop/presence/PresenceMark.h"
#include "buddy/BuddyBitmap.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace pobblewig {

namespace {

QRect extent(const BuddyBitmap& bitmap)
{
    QRect extent;
    for (const auto& block : bitmap.blocks)
        extent |= QRect(block.col, block.row, block.cols, block.rows);
    return extent;
}

/// How many pixels a dot is wide; whole cells where they leave little room at the sides.
double scale(const QRect& extent, int side)
{
    constexpr double nearly = 0.85;
    constexpr auto perCell = BuddyBitmap::dotsPerCell;
    const auto widest = double(side) / std::max(extent.width(), extent.height());
    const auto whole = std::floor(widest * perCell) / perCell;
    return whole >= nearly * widest ? whole : widest;
}

} // namespace

QPixmap BuddyFace::pixmap(const MascotSprite& sprite, PresenceBadge badge, int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    const auto bitmap = BuddyBitmap::standing(sprite);
    const auto area = extent(bitmap);
    const auto dot = scale(area, side);
    const QPointF middle = QRectF(area).center();
    // Counted from the middle, so that both sides are alike.
    const auto at = [&](int col, int row) {
        return QPoint(side / 2 + qRound((col - middle.x()) * dot),
            side / 2 + qRound((row - middle.y()) * dot));
    };

    QPainter painter(&pixmap);
    for (const auto& block : bitmap.blocks) {
        const QRect rect(at(block.col, block.row),
            at(block.col + block.cols, block.row + block.rows) - QPoint(1, 1));
        painter.fillRect(rect, QColor(block.rgb.red, block.rgb.green, block.rgb.blue));
    }
    PresenceMark::paint(painter, badge, pixmap.rect());
    return pixmap;
}

QIcon BuddyFace::icon(const MascotSprite& sprite, PresenceBadge badge)
{
    QIcon icon;
    for (const auto side : { 16, 22, 24, 32, 48, 64 })
        icon.addPixmap(pixmap(sprite, badge, side));
    return icon;
}

} // namespace pobblewig
