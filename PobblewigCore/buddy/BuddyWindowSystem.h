#pragma once

#include "buddy/BuddyShape.h"

#include <functional>

namespace pobblewig {

/// What the buddy's window asks of the desktop beyond what every desktop offers. Windows are named
/// by their native id.
class BuddyWindowSystem {
public:
    using WindowID = quintptr;

    virtual ~BuddyWindowSystem() = default;

    /// Keeps the window above the others, on every desktop and out of the task lists. To be called
    /// at each show, before the window is up: the desktop forgets it when the window goes.
    virtual void accompanyUser(WindowID window) = 0;

    /// Clicks reach the window only in the pressable parts of the shape. Where the desktop cannot
    /// blend windows, nothing outside of the shape is shown either. To be called right before the
    /// picture of that shape is painted.
    virtual void setShape(WindowID window, const BuddyShape& shape) = 0;

    /// Whether nothing of the window can be seen; cheap enough to ask every second.
    virtual bool isCovered(WindowID window) = 0;

    /// Calls each time the answer to the next question may be another one, in the place of who was
    /// called before; an empty function ends it.
    virtual void watchFullScreen(std::function<void()> changed) = 0;

    /// Whether a window of another program takes the whole of this screen and is the foremost one
    /// there. In device pixels.
    virtual bool isFullScreenInFront(const QRect& screen) = 0;
};

/// For desktops that offer none of it: an ordinary window on top.
class UnavailableBuddyWindowSystem : public BuddyWindowSystem {
public:
    void accompanyUser(WindowID) override { }
    void setShape(WindowID, const BuddyShape&) override { }
    bool isCovered(WindowID) override { return false; }
    void watchFullScreen(std::function<void()>) override { }
    bool isFullScreenInFront(const QRect&) override { return false; }
};

} // namespace pobblewig
