#pragma once

#include "prompts/PlatformWording.h"
#include "screen/ScreenCapturing.h"

#include <QRect>
#include <QRegion>
#include <QSize>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace pobblewig {

/// A window as it lies on the screen, with what tells whose it is.
struct ScreenWindow {
    QRect frame;
    /// Whether nothing shows through it.
    bool isOpaque = true;
    bool isOurs = false;
    /// Windows of one program share its connection to the display and its process, which is how a
    /// menu without a name of its own is known.
    std::uint32_t connection = 0;
    std::optional<std::uint32_t> processID = {};
    QString bundleIdentifier = {};
};

/// What becomes of a window in a picture of the screen.
enum class Visibility { shown, leftOut, blanked };

/// Which pixels a picture of the screen is made of.
struct ScreenComposition {
    /// By index, from the bottom up: what has to be painted.
    std::vector<std::size_t> layers;
    /// Where the bare desktop may be shown.
    QRegion desktop;
};

namespace ScreenCaptureLogic {

inline constexpr int maxDimension = 1568;
inline constexpr double jpegQuality = 0.7;

/// Scaled down so that the longer side is at most `most`, and each at least 2 pixels.
QSize targetSize(QSize size, int most = maxDimension);

/// `"Draft" of Writer`, or the application's name alone for a window without a title.
QString windowLabel(const QString& title, const QString& appName);

/// Ours are left out; blanked is whatever belongs to the program of an excluded application, its
/// menus included.
std::vector<Visibility> visibilities(
    std::span<const ScreenWindow> windows, const std::set<QString>& excludedBundleIDs);

/// For windows from the bottom up. What nobody could see is not painted. The desktop does not show
/// where one of our windows lies on it, and nowhere at all while something is blanked: some
/// desktops draw small pictures of the windows onto it.
ScreenComposition composition(std::span<const ScreenWindow> windows,
    std::span<const Visibility> visibilities, const QRect& display);

/// The part of a window that the screen does not show, by whatever it is covered.
QRegion coveredPart(std::span<const ScreenWindow> windows, std::size_t index, const QRect& screen);

/// For the user and the model.
QString description(const ScreenCaptureError& error, const PlatformWording& wording);

} // namespace ScreenCaptureLogic

} // namespace pobblewig
