#pragma once

#include "PobblewigLinux/desktop/DesktopEntries.h"
#include "activity/FrontmostAppProviding.h"

namespace pobblewig {

/// Finds the applications that windows belong to, with their names and identifiers.
class ApplicationNames {
public:
    explicit ApplicationNames(DesktopEntries entries);

    /// Returns nothing for a window without an identity. The name is the desktop file's in the
    /// user's language; the identifier comes from ApplicationIdentifiers, or else is the desktop
    /// file's id. Without either, both are the window's own text. All texts fit on one line.
    std::optional<FrontmostApp> application(const WindowIdentity& window);

private:
    std::optional<FrontmostApp> lookUp(const WindowIdentity& window);

    DesktopEntries m_entries;
    /// The last query, which polls mostly repeat.
    WindowIdentity m_window;
    std::optional<FrontmostApp> m_application;
};

} // namespace pobblewig
