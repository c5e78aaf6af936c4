#include "conversation/ScreenshotTaker.h"

#include "screen/ScreenCaptureLogic.h"

namespace pobblewig {

namespace {

void noteTheRequest(AppSettings& settings)
{
    settings.screenCaptureRequestedBefore = true;
}

} // namespace

ScreenshotTaker::ScreenshotTaker(
    ScreenAccess access, SettingsStore& settings, const PlatformWording& wording)
    : m_access(access)
    , m_settings(settings)
    , m_wording(wording)
{
}

Task<ScreenshotTaker::Result> ScreenshotTaker::take()
{
    m_isTaking = true;
    const auto& excluded = m_settings.settings().excludedBundleIDs;
    auto screenshot =
        co_await m_access.capturer->captureForCurrentContext({ excluded.begin(), excluded.end() });
    m_isTaking = false;
    if (!screenshot && screenshot.error().kind == ScreenCaptureError::Kind::permissionDenied)
        co_await requestPermission();
    co_return screenshot;
}

QString ScreenshotTaker::explanation(const ScreenCaptureError& error) const
{
    if (error.kind == ScreenCaptureError::Kind::permissionDenied)
        return m_wording.screenPermissionNeeded.toString();
    return description(error);
}

QString ScreenshotTaker::description(const ScreenCaptureError& error) const
{
    return ScreenCaptureLogic::description(error, m_wording);
}

Task<> ScreenshotTaker::requestPermission()
{
    m_settings.update(noteTheRequest);
    if (m_access.permissions)
        co_await m_access.permissions->requestScreenCapture();
}

} // namespace pobblewig
