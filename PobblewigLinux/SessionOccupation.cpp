#include "PobblewigLinux/SessionOccupation.h"

#include "PobblewigLinux/desktop/CallLogic.h"
#include "PobblewigLinux/x11/X11FullScreenWatch.h"

#include <QGuiApplication>
#include <QScreen>

namespace pobblewig {

SessionOccupation::SessionOccupation(
    X11Connection* x11, FrontmostAppProviding& frontmost, const QDBusConnection& bus)
    : m_x11(x11)
    , m_frontmost(frontmost)
    , m_inhibitors(bus)
{
}

Task<Occupation> SessionOccupation::occupation()
{
    if (isFullScreenInFront())
        co_return Occupation::fullScreen;
    const auto isCall = co_await isInCall();
    co_return isCall ? Occupation::call : Occupation::none;
}

bool SessionOccupation::isFullScreenInFront() const
{
    if (!m_x11)
        return false;
    const auto windows = X11FullScreenWatch::windows(*m_x11);
    return std::ranges::any_of(QGuiApplication::screens(), [&](const auto* screen) {
        const auto place = screen->geometry();
        return BuddySight::isFullScreenInFront(
            windows, { place.topLeft(), place.size() * screen->devicePixelRatio() });
    });
}

Task<bool> SessionOccupation::isInCall()
{
    const auto front = m_frontmost.frontmostApp();
    if (front && CallLogic::isCallApp(front->bundleIdentifier))
        co_return true;
    const auto reasons = co_await m_inhibitors.reasons();
    co_return std::ranges::any_of(reasons, CallLogic::isCallReason);
}

} // namespace pobblewig
