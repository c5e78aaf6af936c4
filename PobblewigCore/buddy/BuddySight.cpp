#include "buddy/BuddySight.h"

#include <algorithm>

namespace pobblewig {

bool BuddySight::isFullScreenInFront(const std::vector<Window>& windows, const QRect& screen)
{
    // The screen's size is not exact where the desktop scales it.
    const auto nearlyAll = screen.adjusted(1, 1, -1, -1);
    const auto fills = [&](const Window& window) {
        if (window.kind == Window::Kind::fullScreen)
            return window.rect.contains(screen.center());
        return window.kind == Window::Kind::ordinary && window.rect.contains(nearlyAll);
    };
    const auto counts = [&](const Window& window) {
        const auto isOnScreen = fills(window) || screen.contains(window.rect.center());
        return window.kind != Window::Kind::beside && isOnScreen;
    };
    const auto foremost = std::ranges::find_if(windows, counts);
    return foremost != windows.end() && fills(*foremost);
}

} // namespace pobblewig
