#pragma once

#include "activity/FrontmostAppProviding.h"
#include "screen/ScreenCapturing.h"

#include <QDBusConnection>

#include <chrono>

namespace pobblewig {

/// Pictures by the desktop's own screenshot dialog, for sessions that let no program read the
/// screen by itself.
///
/// Where the session tells which application is in front, an excluded one is refused. Beyond that
/// nothing can be promised: neither our own windows nor those of excluded applications can be left
/// out. So the dialog is always shown, and the user chooses and sees what is taken.
class PortalScreenCapture : public ScreenCapturing {
public:
    using Result = tl::expected<CapturedScreenshot, ScreenCaptureError>;

    /// The applications that are `alwaysExcluded` come on top of the user's own. `patience` is for
    /// a user who looks for the right window.
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
