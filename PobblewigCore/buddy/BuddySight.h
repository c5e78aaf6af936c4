#pragma once

#include <QRect>

#include <vector>

/// Decides whether the window in front leaves room for the buddy.
namespace pobblewig::BuddySight {

/// A visible window of another program.
struct Window {
    enum class Kind {
        /// The user works with this window.
        ordinary,
        /// Still an ordinary window, even if there are no panels beside it.
        maximised,
        fullScreen,
        /// The desktop, panels, dialogs, and windows that always stay on top: they tell nothing.
        beside,
    };

    QRect rect;
    Kind kind = Kind::ordinary;
};

/// Returns whether a window that takes the whole screen is the foremost one there, by whatever
/// means it covers the screen. The windows are listed from the top down.
bool isFullScreenInFront(const std::vector<Window>& windows, const QRect& screen);

} // namespace pobblewig::BuddySight
