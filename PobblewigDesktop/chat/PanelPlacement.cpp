#include "PobblewigDesktop/chat/PanelPlacement.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

constexpr int gap = 12;

/// The screen's parts beside the buddy, the better one first where two are equally good.
std::array<QRect, 4> roomsAround(const QRect& buddy, const QRect& screen)
{
    const auto taken = buddy.adjusted(-gap, -gap, gap, gap);
    auto left = screen;
    left.setRight(std::min(screen.right(), taken.left() - 1));
    auto right = screen;
    right.setLeft(std::max(screen.left(), taken.right() + 1));
    auto above = screen;
    above.setBottom(std::min(screen.bottom(), taken.top() - 1));
    auto below = screen;
    below.setTop(std::max(screen.top(), taken.bottom() + 1));
    if (right.width() > left.width())
        std::swap(left, right);
    return { left, right, above, below };
}

/// Its bottom right corner as close to the given one as the room allows.
QRect placed(const QSize& size, const QPoint& bottomRight, const QRect& room)
{
    const auto left = bottomRight.x() - size.width() + 1;
    const auto top = bottomRight.y() - size.height() + 1;
    return { QPoint(std::clamp(left, room.left(), room.right() - size.width() + 1),
                 std::clamp(top, room.top(), room.bottom() - size.height() + 1)),
        size };
}

} // namespace

QRect PanelPlacement::beside(const QRect& buddy, const QSize& wanted, const QRect& screen)
{
    const auto areaIn = [&wanted](const QRect& room) {
        const auto size = wanted.boundedTo(room.size());
        return std::max(0, size.width()) * std::max(0, size.height());
    };
    const auto rooms = roomsAround(buddy, screen);
    const auto& best = *std::ranges::max_element(rooms, {}, areaIn);
    const auto& room = areaIn(best) > 0 ? best : screen;
    return placed(wanted.boundedTo(room.size()), buddy.bottomRight(), room);
}

} // namespace pobblewig
