#pragma once

#include "activity/FrontmostAppProviding.h"
#include "screen/ScreenCapturing.h"

#include <QDBusConnection>

#include <chrono>

namespace pobblewig {

/// Takes pictures through the desktop's own screenshot dialog, for sessions in which programs
/// cannot read the screen.
///
/// Refuses if an excluded application is known to be in front. Nothing else can be promised:
/// neither our own windows nor those of excluded applications can be left out. So the dialog is
/// always shown, and the user chooses and sees what is captured.
class PortalScreenCapture : public ScreenCapturing {
public:
    using Result = tl::expected<CapturedScreenshot, ScreenCaptureError>;

    /// `alwaysExcluded` is added to the user's own excluded applications. `patience` is the time
    /// for the user to find the right window.
    PortalScreenCapture(QDBusConnection bus, FrontmostAppProviding& frontmost,
        std::set<QString> alwaysExcluded,
        std::chrono::milliseconds patience = std::chrono::minutes(2));

    Task<Result> captureForCurrentContext(std::set<QString> excludedBundleIDs) override;

private:
    QDBusConnection m_bus;
    FrontmostAppProviding& m_frontmost;
    std::set<QString> m_alwaysExcluded;
    std::chrono::milliseconds m_patience;
};

} // namespace pobblewig
