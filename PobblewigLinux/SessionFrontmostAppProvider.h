#pragma once

#include "PobblewigLinux/desktop/ActiveWindowProviding.h"
#include "PobblewigLinux/desktop/ApplicationNames.h"
#include "PobblewigLinux/desktop/IdleTimeProviding.h"

#include <memory>

namespace pobblewig {

/// Combines two independent sources of a session, either of which may be missing.
class SessionFrontmostAppProvider : public FrontmostAppProviding {
public:
    SessionFrontmostAppProvider(std::unique_ptr<ActiveWindowProviding> activeWindow,
        std::unique_ptr<IdleTimeProviding> idleTime, ApplicationNames& names);

    std::optional<FrontmostApp> frontmostApp() override;
    double idleSeconds() override;

private:
    std::unique_ptr<ActiveWindowProviding> m_activeWindow;
    std::unique_ptr<IdleTimeProviding> m_idleTime;
    ApplicationNames& m_names;
};

} // namespace pobblewig
