#include "screen/ScreenCaptureLogic.h"

#include "foundation/Text.h"

#include <algorithm>
#include <ranges>

namespace pobblewig {

namespace {

bool isOfOneProgram(const ScreenWindow& window, const ScreenWindow& other)
{
    return window.connection == other.connection
        || (window.processID && window.processID == other.processID);
}

} // namespace

QSize ScreenCaptureLogic::targetSize(QSize size, int most)
{
    const auto longer = std::max({ size.width(), size.height(), most });
    const auto scaled = [=](int length) {
        return std::max(2, int(qint64(length) * most / longer));
    };
    return { scaled(size.width()), scaled(size.height()) };
}

QString ScreenCaptureLogic::windowLabel(const QString& title, const QString& appName)
{
    const auto app = Text::foreignLine(appName);
    const auto line = Text::foreignLine(title);
    return line.isEmpty() ? app : QStringLiteral("\"%1\" of %2").arg(line, app);
}

std::vector<Visibility> ScreenCaptureLogic::visibilities(
    std::span<const ScreenWindow> windows, const ExcludedApps& excluded)
{
    const auto isExcluded = [&](const ScreenWindow& window) {
        return excluded.contains(window.bundleIdentifier);
    };
    const auto isBlanked = [&](const ScreenWindow& window) {
        return std::ranges::any_of(windows, [&](const ScreenWindow& other) {
            return isExcluded(other) && isOfOneProgram(window, other);
        });
    };
    std::vector<Visibility> visibilities;
    visibilities.reserve(windows.size());
    for (const auto& window : windows) {
        if (window.isOurs)
            visibilities.push_back(Visibility::leftOut);
        else
            visibilities.push_back(isBlanked(window) ? Visibility::blanked : Visibility::shown);
    }
    return visibilities;
}

ScreenComposition ScreenCaptureLogic::composition(std::span<const ScreenWindow> windows,
    std::span<const Visibility> visibilities, const QRect& display)
{
    ScreenComposition composition { .layers = {}, .desktop = display };
    QRegion open(display);
    for (auto index = windows.size(); index-- > 0;) {
        const auto& window = windows[index];
        if (visibilities[index] == Visibility::leftOut) {
            composition.desktop -= window.frame;
            continue;
        }
        if (!open.intersects(window.frame))
            continue;
        composition.layers.push_back(index);
        if (window.isOpaque || visibilities[index] == Visibility::blanked)
            open -= window.frame;
    }
    std::ranges::reverse(composition.layers);
    composition.desktop &= open;
    if (std::ranges::count(visibilities, Visibility::blanked) > 0)
        composition.desktop = {};
    return composition;
}

QRegion ScreenCaptureLogic::coveredPart(
    std::span<const ScreenWindow> windows, std::size_t index, const QRect& screen)
{
    const QRegion frame(windows[index].frame);
    auto visible = frame & screen;
    for (const auto& above : windows.subspan(index + 1))
        visible -= above.frame;
    return frame - visible;
}

QString ScreenCaptureLogic::description(
    const ScreenCaptureError& error, const PlatformWording& wording)
{
    switch (error.kind) {
    case ScreenCaptureError::Kind::excludedApp:
        return QStringLiteral("Screenshots are disabled while %1 is frontmost (excluded app).")
            .arg(Text::foreignLine(error.app));
    case ScreenCaptureError::Kind::permissionDenied:
        return wording.screenCaptureDenied.toString();
    case ScreenCaptureError::Kind::noCaptureTarget:
        return QStringLiteral("No window or display available to capture.");
    case ScreenCaptureError::Kind::encodingFailed:
        return QStringLiteral("Could not compress the screenshot.");
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
