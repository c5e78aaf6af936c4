#pragma once

#include <QtGlobal>

namespace pobblewig {

/// Brings the program's windows to the user who has just asked for them. Windows are named by their
/// native id.
class WindowActivating {
public:
    virtual ~WindowActivating() = default;

    /// Raises the window and gives it the keyboard. While the user types into another window,
    /// desktops hinder a program that merely asks for this: they cannot know of a request that did
    /// not come through a window.
    virtual void activate(quintptr window) = 0;
};

/// For desktops where Qt's own way of activating windows is the only one.
class UnavailableWindowActivation : public WindowActivating {
public:
    void activate(quintptr) override { }
};

} // namespace pobblewig
