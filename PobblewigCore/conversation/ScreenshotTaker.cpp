#include "conversation/ScreenshotTaker.h"

#include "screen/ScreenCaptureLogic.h"

namespace pobblewig {

ScreenshotTaker::ScreenshotTaker(Dependencies dependencies)
    : m_dependencies(std::move(dependencies))
{
}

Task<ScreenshotTaker::Result> ScreenshotTaker::take()
{
    m_isTaking = true;
    const auto excluded = co_await m_dependencies.excludedBundleIDs();
    auto screenshot = co_await m_dependencies.capturer->captureForCurrentContext(excluded);
    m_isTaking = false;
    const auto isDenied =
        !screenshot && screenshot.error().kind == ScreenCaptureError::Kind::permissionDenied;
    if (isDenied && m_dependencies.requestScreenPermission)
        co_await m_dependencies.requestScreenPermission();
    co_return screenshot;
}

QString ScreenshotTaker::explanation(const ScreenCaptureError& error)
{
    if (error.kind == ScreenCaptureError::Kind::permissionDenied)
        return PlatformWording::linuxDesktop.screenPermissionNeeded.toString();
    return ScreenCaptureLogic::description(error);
}

} // namespace pobblewig
