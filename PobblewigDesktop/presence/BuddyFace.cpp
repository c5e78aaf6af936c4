#include "PobblewigDesktop/presence/BuddyFace.h"

#include "PobblewigDesktop/presence/PresenceMark.h"
#include "buddy/BuddyBitmap.h"

#include <QPainter>

namespace pobblewig {

QPixmap BuddyFace::pixmap(const MascotSprite& sprite, PresenceBadge badge, int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    // A standing sprite has whole cells only.
    constexpr auto perCell = BuddyBitmap::dotsPerCell;
    constexpr auto columns = BuddyBitmap::columns / perCell;
    const auto cell = qMax(1, side / columns);
    const auto left = (side - columns * cell) / 2;
    const auto top = (side - BuddyBitmap::rows / perCell * cell) / 2;

    QPainter painter(&pixmap);
    for (const auto& block : BuddyBitmap::standing(sprite).blocks) {
        const QRect rect(left + block.col * cell / perCell, top + block.row * cell / perCell,
            block.cols * cell / perCell, block.rows * cell / perCell);
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
