#include "buddy/BuddyPlacement.h"

#include <QStringList>

#include <algorithm>
#include <tuple>

namespace pobblewig {

namespace {

/// Far outside every desktop, yet safe to calculate with.
constexpr int farthest = 1 << 20;

QPoint bounded(QPoint place, const QRect& places)
{
    return { std::clamp(place.x(), places.left(), places.right()),
        std::clamp(place.y(), places.top(), places.bottom()) };
}

/// Safe to calculate with.
QPoint finite(QPoint place)
{
    return { std::clamp(place.x(), -farthest, farthest),
        std::clamp(place.y(), -farthest, farthest) };
}

} // namespace

QString BuddyPlacement::layoutName(std::vector<QRect> screens)
{
    std::ranges::sort(screens, {}, [](const QRect& rect) {
        return std::tuple(rect.x(), rect.y(), rect.width(), rect.height());
    });
    QStringList names;
    for (const auto& screen : screens) {
        names.append(QStringLiteral("%1x%2 at %3 %4")
                         .arg(screen.width())
                         .arg(screen.height())
                         .arg(screen.x())
                         .arg(screen.y()));
    }
    return names.join(QStringLiteral(", "));
}

QPoint BuddyPlacement::initialPlace(QSize size, const QRect& available)
{
    constexpr int margin = 24;
    return { available.right() - margin - size.width() / 2, available.bottom() - margin };
}

QRect BuddyPlacement::windowAt(QPoint place, QSize size)
{
    return { place - QPoint(size.width() / 2, size.height()), size };
}

QRect BuddyPlacement::placesIn(const QRect& area, QSize size)
{
    const auto left = area.left() + size.width() / 2;
    const auto right = qMax(left, area.right() + 1 - (size.width() - size.width() / 2));
    const auto bottom = area.bottom() + 1;
    const auto top = qMin(area.top() + size.height(), bottom);
    return { QPoint(left, top), QPoint(right, bottom) };
}

QPoint BuddyPlacement::visiblePlace(QPoint place, QSize size, const std::vector<Screen>& screens)
{
    const auto wanted = finite(place);
    const auto& screen = screenAt(wanted, size, screens);
    if (screen.geometry.contains(windowAt(wanted, size).center()))
        return wanted;
    return bounded(wanted, placesIn(screen.available, size));
}

const BuddyPlacement::Screen& BuddyPlacement::screenAt(
    QPoint place, QSize size, const std::vector<Screen>& screens)
{
    const auto wanted = finite(place);
    const auto middle = windowAt(wanted, size).center();
    const auto distance = [&](const Screen& screen) {
        const auto nearest = bounded(wanted, placesIn(screen.available, size));
        return screen.geometry.contains(middle) ? -1 : (nearest - wanted).manhattanLength();
    };
    return *std::ranges::min_element(screens, {}, distance);
}

} // namespace pobblewig
