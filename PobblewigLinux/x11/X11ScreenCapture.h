#pragma once

#include "PobblewigLinux/x11/X11FrontWindow.h"
#include "PobblewigLinux/x11/X11WindowTree.h"
#include "activity/FrontmostAppProviding.h"
#include "screen/ScreenCaptureLogic.h"

#include <functional>

namespace pobblewig {

/// Pictures of the windows of an X server; nothing of them touches the disk.
///
/// A window is taken without its title bar. The screen is put together from the windows' own
/// pixels, from the bottom up: where ours would be, one sees what lies beneath; an excluded
/// application is a black rectangle as large as its window, wherever nothing covers it.
class X11ScreenCapture : public ScreenCapturing {
public:
    /// Whose a window is; nothing if that cannot be told.
    using AppOfWindow = std::function<std::optional<FrontmostApp>(xcb_window_t)>;

    using Result = tl::expected<CapturedScreenshot, ScreenCaptureError>;

    /// The applications that are `alwaysExcluded` come on top of the user's own.
    X11ScreenCapture(
        X11Connection& connection, AppOfWindow appOfWindow, std::set<QString> alwaysExcluded);

    /// While the user talks with us, the front window is the one that was active before.
    Task<Result> captureForCurrentContext(std::set<QString> excludedBundleIDs) override;

private:
    Task<QImage> windowPicture(xcb_window_t client);
    Task<QImage> displayPicture(std::set<QString> excludedBundleIDs);
    ScreenWindow described(const X11TopLevel& topLevel);

    X11Connection& m_connection;
    AppOfWindow m_appOfWindow;
    std::set<QString> m_alwaysExcluded;
    X11FrontWindow m_front;
};

} // namespace pobblewig
