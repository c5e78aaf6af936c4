#include "PobblewigDesktop/BuddyFace.h"

#include "PobblewigDesktop/PresenceMark.h"
#include "buddy/BuddyBitmap.h"

#include <QPainter>

namespace pobblewig {

QPixmap BuddyFace::pixmap(const MascotSprite& sprite, PresenceBadge badge, int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    const auto cell = qMax(1, side / BuddyBitmap::columns);
    const auto left = (side - BuddyBitmap::columns * cell) / 2;
    const auto top = (side - BuddyBitmap::rows * cell) / 2;

    QPainter painter(&pixmap);
    for (const auto& run : BuddyBitmap::standing(sprite).runs) {
        const QRect rect(left + run.col * cell, top + run.row * cell, run.length * cell, cell);
        painter.fillRect(rect, QColor(run.rgb.red, run.rgb.green, run.rgb.blue));
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
