#include "PobblewigLinux/SessionFrontmostAppProvider.h"

namespace pobblewig {

SessionFrontmostAppProvider::SessionFrontmostAppProvider(
    std::unique_ptr<ActiveWindowProviding> activeWindow,
    std::unique_ptr<IdleTimeProviding> idleTime, ApplicationNames& names)
    : m_activeWindow(std::move(activeWindow))
    , m_idleTime(std::move(idleTime))
    , m_names(names)
{
}

std::optional<FrontmostApp> SessionFrontmostAppProvider::frontmostApp()
{
    const auto window = m_activeWindow ? m_activeWindow->activeWindow() : std::nullopt;
    return window ? m_names.application(*window) : std::nullopt;
}

double SessionFrontmostAppProvider::idleSeconds()
{
    return m_idleTime ? m_idleTime->idleSeconds() : 0;
}

} // namespace pobblewig
