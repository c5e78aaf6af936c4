#include "PobblewigDesktop/buddy/BuddyPlaces.h"

#include <QGuiApplication>
#include <QScreen>

namespace pobblewig {

namespace {

using Screen = BuddyPlacement::Screen;

std::vector<Screen> presentScreens()
{
    std::vector<Screen> screens;
    for (const auto* screen : QGuiApplication::screens())
        screens.push_back(
            { screen->geometry(), screen->availableGeometry(), screen->devicePixelRatio() });
    return screens;
}

QString placeKey(const std::vector<Screen>& screens)
{
    std::vector<QRect> rects;
    rects.reserve(screens.size());
    for (const auto& screen : screens)
        rects.push_back(screen.geometry);
    return QStringLiteral("buddy/") + BuddyPlacement::layoutName(std::move(rects));
}

} // namespace

BuddyPlaces::BuddyPlaces(QSettings& settings)
    : m_settings(settings)
{
    for (auto* screen : QGuiApplication::screens())
        watch(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &BuddyPlaces::watch);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &BuddyPlaces::screensChanged,
        Qt::QueuedConnection);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &BuddyPlaces::screensChanged,
        Qt::QueuedConnection);
}

std::optional<QPoint> BuddyPlaces::place(QSize size)
{
    m_screens = presentScreens();
    if (m_screens.empty())
        return std::nullopt;
    const auto saved = m_settings.value(placeKey(m_screens));
    if (saved.canConvert<QPoint>())
        m_latest = saved.toPoint();
    const auto first = QGuiApplication::primaryScreen()->availableGeometry();
    const auto wanted = m_latest.value_or(BuddyPlacement::initialPlace(size, first));
    return BuddyPlacement::visiblePlace(wanted, size, m_screens);
}

QRect BuddyPlaces::surroundings(QPoint place, QSize size)
{
    m_screens = presentScreens();
    return BuddyPlacement::placesIn(screenAt(place, size).available, size);
}

BuddyReach BuddyPlaces::reach(QPoint place, QSize size) const
{
    const auto screen = screenAt(place, size);
    const auto pixels = [&](int distance) { return int(distance * screen.devicePixelRatio); };
    const auto& free = screen.available;
    return { .left = pixels(place.x() - free.left()),
        .right = pixels(free.right() + 1 - place.x()),
        .above = pixels(place.y() - free.top()) };
}

QRect BuddyPlaces::screen(QPoint place, QSize size) const
{
    const auto screen = screenAt(place, size);
    const auto pixels = QSizeF(screen.geometry.size()) * screen.devicePixelRatio;
    return { screen.geometry.topLeft(), pixels.toSize() };
}

void BuddyPlaces::keep(QPoint place)
{
    m_latest = place;
    m_settings.setValue(placeKey(presentScreens()), place);
}

void BuddyPlaces::watch(QScreen* screen)
{
    connect(screen, &QScreen::geometryChanged, this, &BuddyPlaces::screensChanged,
        Qt::QueuedConnection);
}

Screen BuddyPlaces::screenAt(QPoint place, QSize size) const
{
    if (m_screens.empty())
        return { { place, QSize(1, 1) }, { place, QSize(1, 1) } };
    return BuddyPlacement::screenAt(place, size, m_screens);
}

} // namespace pobblewig
