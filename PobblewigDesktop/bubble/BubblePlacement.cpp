#include "PobblewigDesktop/bubble/BubblePlacement.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

using Side = BubblePlacement::Side;

constexpr std::array sides { Side::above, Side::left, Side::right, Side::below };

/// The part of the screen on this side of the buddy.
QRect room(Side side, const QRect& buddy, const QRect& screen)
{
    auto room = screen;
    switch (side) {
    case Side::above:
        room.setBottom(std::min(screen.bottom(), buddy.top() - 1));
        break;
    case Side::left:
        room.setRight(std::min(screen.right(), buddy.left() - 1));
        break;
    case Side::right:
        room.setLeft(std::max(screen.left(), buddy.right() + 1));
        break;
    case Side::below:
        room.setTop(std::max(screen.top(), buddy.bottom() + 1));
        break;
    }
    return room;
}

/// The place next to the buddy, wherever the screen ends.
QRect next(Side side, const QRect& buddy, const QSize& size)
{
    QRect place({}, size);
    place.moveCenter(buddy.center());
    if (side == Side::above)
        place.moveBottom(buddy.top() - 1);
    else if (side == Side::left)
        place.moveRight(buddy.left() - 1);
    else if (side == Side::right)
        place.moveLeft(buddy.right() + 1);
    else
        place.moveTop(buddy.bottom() + 1);
    return place;
}

QRect movedInto(QRect place, const QRect& area)
{
    place.moveRight(std::min(place.right(), area.right()));
    place.moveBottom(std::min(place.bottom(), area.bottom()));
    place.moveLeft(std::max(place.left(), area.left()));
    place.moveTop(std::max(place.top(), area.top()));
    return place;
}

int between(int value, int first, int last)
{
    return first > last ? (first + last) / 2 : std::clamp(value, first, last);
}

QPoint tailPoint(Side side, const QRect& bubble, const QRect& buddy, int inset)
{
    const auto x = between(buddy.center().x(), bubble.left() + inset, bubble.right() - inset);
    const auto y = between(buddy.center().y(), bubble.top() + inset, bubble.bottom() - inset);
    switch (side) {
    case Side::above:
        return { x, bubble.bottom() };
    case Side::left:
        return { bubble.right(), y };
    case Side::right:
        return { bubble.left(), y };
    case Side::below:
        return { x, bubble.top() };
    }
    Q_UNREACHABLE();
}

} // namespace

BubblePlacement::Place BubblePlacement::beside(
    const QRect& buddy, const QSize& bubble, const QRect& screen, const Tail& tail)
{
    const auto taken = buddy.adjusted(-tail.length, -tail.length, tail.length, tail.length);
    const auto fits = [&](Side side) {
        const auto free = room(side, taken, screen);
        return free.width() >= bubble.width() && free.height() >= bubble.height();
    };
    const auto* const found = std::ranges::find_if(sides, fits);
    const auto side = found == sides.end() ? Side::above : *found;
    const auto area = found == sides.end() ? screen : room(side, taken, screen);
    const auto place = movedInto(next(side, taken, bubble), area);
    return { place, side, tailPoint(side, place, buddy, tail.inset) };
}

} // namespace pobblewig
