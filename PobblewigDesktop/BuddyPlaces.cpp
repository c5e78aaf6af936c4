#include "PobblewigDesktop/BuddyPlaces.h"

#include <QGuiApplication>
#include <QScreen>

namespace pobblewig {

namespace {

std::vector<BuddyPlacement::Screen> presentScreens()
{
    std::vector<BuddyPlacement::Screen> screens;
    for (const auto* screen : QGuiApplication::screens())
        screens.push_back({ screen->geometry(), screen->availableGeometry() });
    return screens;
}

QString placeKey(const std::vector<BuddyPlacement::Screen>& screens)
{
    std::vector<QRect> rects;
    for (const auto& screen : screens)
        rects.push_back(screen.geometry);
    return QStringLiteral("buddy/") + BuddyPlacement::layoutName(std::move(rects));
}

} // namespace

BuddyPlaces::BuddyPlaces(QSettings& settings)
    : m_settings(settings)
{
}

std::optional<QPoint> BuddyPlaces::place(QSize size)
{
    const auto screens = presentScreens();
    if (screens.empty())
        return std::nullopt;
    const auto saved = m_settings.value(placeKey(screens));
    if (saved.canConvert<QPoint>())
        m_latest = saved.toPoint();
    const auto first = QGuiApplication::primaryScreen()->availableGeometry();
    const auto wanted = m_latest.value_or(BuddyPlacement::initialPlace(size, first));
    return BuddyPlacement::visiblePlace(wanted, size, screens);
}

QRect BuddyPlaces::surroundings(QPoint place, QSize size) const
{
    const auto screens = presentScreens();
    if (screens.empty())
        return { place, QSize(1, 1) };
    const auto& screen = BuddyPlacement::screenAt(place, size, screens);
    return BuddyPlacement::placesIn(screen.available, size);
}

void BuddyPlaces::keep(QPoint place)
{
    m_latest = place;
    m_settings.setValue(placeKey(presentScreens()), place);
}

} // namespace pobblewig
