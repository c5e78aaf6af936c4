#include "PobblewigDesktop/chat/PanelPlacement.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

constexpr int gap = 12;
constexpr int titleHeight = 16;
/// How much of the title's width is enough to take hold of it.
constexpr int leastTitle = 80;

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

QPoint PanelPlacement::inReach(const QRect& panel, const QList<QRect>& screens)
{
    const QRect title(panel.topLeft(), QSize(panel.width(), titleHeight));
    const auto isReached = [&title](const QRect& screen) {
        const auto seen = screen & title;
        return seen.height() == titleHeight && seen.width() >= leastTitle;
    };
    if (screens.isEmpty() || std::ranges::any_of(screens, isReached))
        return panel.topLeft();
    const auto distance = [&title](const QRect& screen) {
        return (screen.center() - title.center()).manhattanLength();
    };
    const auto& screen = *std::ranges::min_element(screens, {}, distance);
    return placed(panel.size().boundedTo(screen.size()), panel.bottomRight(), screen).topLeft();
}

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
