#pragma once

#include "PobblewigLinux/x11/X11FrontWindow.h"
#include "PobblewigLinux/x11/X11WindowTree.h"
#include "activity/FrontmostAppProviding.h"
#include "screen/ScreenCaptureLogic.h"

#include <functional>

namespace pobblewig {

/// Takes pictures of the windows of an X server, without writing to disk.
///
/// A window is captured without its title bar. The screen is composed of the windows' own pixels,
/// from the bottom up: our windows are left out and show what lies beneath, and an excluded
/// application is a black rectangle as large as its window, where nothing covers it.
class X11ScreenCapture : public ScreenCapturing {
public:
    /// The application of a window, or nothing if it is unknown.
    using AppOfWindow = std::function<std::optional<FrontmostApp>(xcb_window_t)>;

    using Result = tl::expected<CapturedScreenshot, ScreenCaptureError>;

    /// `alwaysExcluded` is added to the user's own excluded applications.
    X11ScreenCapture(
        X11Connection& connection, AppOfWindow appOfWindow, std::set<QString> alwaysExcluded);

    /// While the user talks to us, the front window is the one that was active before.
    Task<Result> captureForCurrentContext(std::set<QString> excludedBundleIDs) override;

private:
    Task<QImage> windowPicture(xcb_window_t client);
    Task<QImage> displayPicture(ExcludedApps excluded);
    ScreenWindow described(const X11TopLevel& topLevel);

    X11Connection& m_connection;
    AppOfWindow m_appOfWindow;
    std::set<QString> m_alwaysExcluded;
    X11FrontWindow m_front;
};

} // namespace pobblewig
