#pragma once

#include <QRect>

#include <vector>

/// Whether there is room for the buddy in what the user looks at.
namespace pobblewig::BuddySight {

/// A visible window of another program.
struct Window {
    enum class Kind {
        /// What the user works with.
        ordinary,
        /// An ordinary one too, even where there are no panels beside it.
        maximised,
        fullScreen,
        /// The desktop, panels, dialogs, and what always stays on top: tells nothing.
        beside,
    };

    QRect rect;
    Kind kind = Kind::ordinary;
};

/// Whether a window that takes the whole screen is the foremost one there, by whatever means it
/// covers it. The windows are listed from the top down.
bool isFullScreenInFront(const std::vector<Window>& windows, const QRect& screen);

} // namespace pobblewig::BuddySight
