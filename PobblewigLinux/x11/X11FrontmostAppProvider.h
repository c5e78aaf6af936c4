#pragma once

#include "PobblewigLinux/desktop/ApplicationNames.h"
#include "PobblewigLinux/x11/X11Connection.h"

namespace pobblewig {

/// The application of the active window, as announced by the window manager. A poll takes three
/// round trips.
///
/// Our own windows count like those of any application. If the window or the server vanishes
/// between two queries, nothing is in front.
class X11FrontmostAppProvider : public FrontmostAppProviding {
public:
    /// Whether the server measures the time since the last input.
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
