#pragma once

#include <QtGlobal>

namespace pobblewig {

/// Brings our windows to the user who has just asked for them. They are named by their native id.
class WindowActivating {
public:
    virtual ~WindowActivating() = default;

    /// Raises the window and gives it the keyboard. Desktops hinder a program that only asks, while
    /// the user types into another one: they cannot know of a wish that did not reach us through
    /// a window.
    virtual void activate(quintptr window) = 0;
};

/// For desktops where windows are activated in no other way than Qt's.
class UnavailableWindowActivation : public WindowActivating {
public:
    void activate(quintptr) override { }
};

} // namespace pobblewig
