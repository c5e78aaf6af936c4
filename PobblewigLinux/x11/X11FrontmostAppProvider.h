#pragma once

#include "PobblewigLinux/desktop/ApplicationNames.h"
#include "PobblewigLinux/x11/X11Connection.h"

namespace pobblewig {

/// The application of the active window, as the window manager announces it. A poll costs three
/// round trips.
///
/// Our own windows are an application like any other. A window that vanishes between two questions,
/// and a server that does, are nothing in front.
class X11FrontmostAppProvider : public FrontmostAppProviding {
public:
    /// Whether the server counts the seconds since the last input.
    static bool tellsIdleTime(X11Connection& connection);

    X11FrontmostAppProvider(X11Connection& connection, ApplicationNames& names);

    std::optional<FrontmostApp> frontmostApp() override;
    double idleSeconds() override;

private:
    X11Connection& m_connection;
    ApplicationNames& m_names;
    bool m_tellsIdleTime;
};

} // namespace pobblewig
