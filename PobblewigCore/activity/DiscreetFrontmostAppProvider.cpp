#include "activity/DiscreetFrontmostAppProvider.h"

#include "foundation/Text.h"

namespace pobblewig {

DiscreetFrontmostAppProvider::DiscreetFrontmostAppProvider(
    FrontmostAppProviding* source, Discretion discretion)
    : m_source(source)
    , m_discretion(std::move(discretion))
{
}

std::optional<FrontmostApp> DiscreetFrontmostAppProvider::frontmostApp()
{
    if (!m_source || m_discretion.settings.isPaused(m_discretion.moment.now()))
        return std::nullopt;
    const auto front = m_source->frontmostApp();
    if (!front || excluded().contains(front->bundleIdentifier))
        return std::nullopt;
    return FrontmostApp { .name = Text::foreignLine(front->name),
        .bundleIdentifier = Text::foreignLine(front->bundleIdentifier) };
}

double DiscreetFrontmostAppProvider::idleSeconds()
{
    return m_source ? m_source->idleSeconds() : 0;
}

ExcludedApps DiscreetFrontmostAppProvider::excluded() const
{
    const auto& chosen = m_discretion.settings.settings().excludedBundleIDs;
    std::set<QString> names(chosen.begin(), chosen.end());
    names.insert(m_discretion.alwaysExcluded.begin(), m_discretion.alwaysExcluded.end());
    return { names, m_discretion.identifierOf };
}

} // namespace pobblewig
