#pragma once

#include "buddy/BuddyShape.h"

#include <functional>

namespace pobblewig {

/// The services of the desktop that the buddy's window needs beyond those that every desktop
/// offers. Windows are named by their native id.
class BuddyWindowSystem {
public:
    using WindowID = quintptr;

    virtual ~BuddyWindowSystem() = default;

    /// Keeps the window above the others, on every desktop and out of task lists. To be called at
    /// each show, before the window is up, because the desktop forgets it when the window goes.
    virtual void accompanyUser(WindowID window) = 0;

    /// Lets clicks reach the window only in the pressable parts of the shape. If the desktop cannot
    /// blend windows, nothing outside the shape is shown either. To be called right before the
    /// picture with that shape is painted.
    virtual void setShape(WindowID window, const BuddyShape& shape) = 0;

    /// Returns whether the parts of windows that are not painted are invisible. The answer may
    /// change at any time.
    virtual bool canBlend() const = 0;

    /// Returns whether nothing of the window can be seen; cheap enough to ask every second.
    virtual bool isCovered(WindowID window) = 0;

    /// Calls `changed` whenever the next answer of `isFullScreenInFront` may differ, instead of the
    /// previous function; an empty one ends this.
    virtual void watchFullScreen(std::function<void()> changed) = 0;

    /// Returns whether a window of another program takes the whole of this screen and is the
    /// foremost one there. `screen` is in device pixels.
    virtual bool isFullScreenInFront(const QRect& screen) = 0;
};

/// For desktops that offer none of this: an ordinary window on top.
class UnavailableBuddyWindowSystem : public BuddyWindowSystem {
public:
    void accompanyUser(WindowID) override { }
    void setShape(WindowID, const BuddyShape&) override { }
    bool canBlend() const override { return true; }
    bool isCovered(WindowID) override { return false; }
    void watchFullScreen(std::function<void()>) override { }
    bool isFullScreenInFront(const QRect&) override { return false; }
};

} // namespace pobblewig
