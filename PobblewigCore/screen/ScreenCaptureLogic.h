#pragma once

#include "prompts/PlatformWording.h"
#include "screen/ScreenCapturing.h"
#include "settings/ExcludedApps.h"

#include <QRect>
#include <QRegion>
#include <QSize>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace pobblewig {

/// A window on the screen, with what identifies its program.
struct ScreenWindow {
    QRect frame;
    /// Whether nothing shows through the window.
    bool isOpaque = true;
    bool isOurs = false;
    /// The windows of a program share its display connection and process, which identifies even a
    /// menu without a name of its own.
    std::uint32_t connection = 0;
    std::optional<std::uint32_t> processID = {};
    QString bundleIdentifier = {};
};

/// How a window appears in a picture of the screen.
enum class Visibility { shown, leftOut, blanked };

/// The sources of the pixels in a picture of the screen.
struct ScreenComposition {
    /// The indices of the windows to paint, from the bottom up.
    std::vector<std::size_t> layers;
    /// The area in which the bare desktop may be shown.
    QRegion desktop;
};

namespace ScreenCaptureLogic {

inline constexpr int maxDimension = 1568;
inline constexpr double jpegQuality = 0.7;

/// Scales down so that the longer side is at most `most`, and each side at least 2 pixels.
QSize targetSize(QSize size, int most = maxDimension);

/// `"Draft" of Writer` on one line, or the application's name alone for a window without a title.
QString windowLabel(const QString& title, const QString& appName);

/// Our own windows are left out. All windows of an excluded application's program are blanked,
/// including its menus.
std::vector<Visibility> visibilities(
    std::span<const ScreenWindow> windows, const ExcludedApps& excluded);

/// `windows` is ordered from the bottom up. Windows that are entirely covered are not painted. The
/// desktop is hidden beneath our own windows, and everywhere while a window is blanked, because
/// some desktops draw thumbnails of the windows onto it.
ScreenComposition composition(std::span<const ScreenWindow> windows,
    std::span<const Visibility> visibilities, const QRect& display);

/// The part of a window that is not visible on the screen, whatever covers it.
QRegion coveredPart(std::span<const ScreenWindow> windows, std::size_t index, const QRect& screen);

/// For both the user and the model.
QString description(const ScreenCaptureError& error, const PlatformWording& wording);

} // namespace ScreenCaptureLogic

} // namespace pobblewig
