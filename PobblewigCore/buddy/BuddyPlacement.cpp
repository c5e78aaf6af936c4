#include "buddy/BuddyPlacement.h"

#include <QStringList>

#include <algorithm>
#include <tuple>

namespace pobblewig {

namespace {

/// Far outside every desktop, yet safe to calculate with.
constexpr int farthest = 1 << 20;

QPoint nearestOn(const QRect& screen, QPoint place, QSize size)
{
    const auto left = screen.left() + size.width() / 2;
    const auto right = qMax(left, screen.right() + 1 - (size.width() - size.width() / 2));
    const auto bottom = screen.bottom() + 1;
    const auto top = qMin(screen.top() + size.height(), bottom);
    return { std::clamp(place.x(), left, right), std::clamp(place.y(), top, bottom) };
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

QPoint BuddyPlacement::visiblePlace(QPoint place, QSize size, const std::vector<QRect>& screens)
{
    const QPoint bounded(
        std::clamp(place.x(), -farthest, farthest), std::clamp(place.y(), -farthest, farthest));
    const auto middle = windowAt(bounded, size).center();
    const auto shows = [&](const QRect& screen) { return screen.contains(middle); };
    if (std::ranges::any_of(screens, shows))
        return bounded;

    const auto distance = [&](QPoint candidate) { return (candidate - bounded).manhattanLength(); };
    std::vector<QPoint> candidates;
    candidates.reserve(screens.size());
    for (const auto& screen : screens)
        candidates.push_back(nearestOn(screen, bounded, size));
    return *std::ranges::min_element(candidates, {}, distance);
}

} // namespace pobblewig
