#pragma once

#include "PobblewigLinux/x11/X11Connection.h"

#include <QAbstractNativeEventFilter>

#include <functional>
#include <optional>

namespace pobblewig {

/// Follows the owner of a selection that announces a desktop service, such as a compositor or a
/// tray.
class X11SelectionWatch : public QAbstractNativeEventFilter {
public:
    /// `changed` is called whenever the service appears or disappears.
    X11SelectionWatch(
        X11Connection& connection, const std::string& selection, std::function<void()> changed);

    bool isOwned() const { return m_isOwned; }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    xcb_atom_t m_selection;
    std::function<void()> m_changed;
    std::optional<int> m_eventType;
    bool m_isOwned;
};

} // namespace pobblewig
