#pragma once

#include "PobblewigLinux/desktop/DesktopEntries.h"
#include "activity/FrontmostAppProviding.h"

namespace pobblewig {

/// The applications that windows belong to, in the words of people and of the system.
class ApplicationNames {
public:
    explicit ApplicationNames(DesktopEntries entries);

    /// Nothing for a window that says nothing of itself. The name is that of the desktop file, in
    /// the user's language; the identifier is the one of ApplicationIdentifiers, else the id of the
    /// desktop file; without either, both are what the window says. Never longer than a line.
    std::optional<FrontmostApp> application(const WindowIdentity& window);

private:
    std::optional<FrontmostApp> lookUp(const WindowIdentity& window);

    DesktopEntries m_entries;
    /// The last question, which a poll mostly repeats.
    WindowIdentity m_window;
    std::optional<FrontmostApp> m_application;
};

} // namespace pobblewig
