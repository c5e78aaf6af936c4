#include "activity/DiscreetFrontmostAppProvider.h"

#include <algorithm>

namespace pobblewig {

namespace {

bool names(const std::vector<QString>& identifiers, const QString& identifier)
{
    return std::ranges::any_of(identifiers,
        [&](const QString& each) { return each.compare(identifier, Qt::CaseInsensitive) == 0; });
}

} // namespace

DiscreetFrontmostAppProvider::DiscreetFrontmostAppProvider(
    FrontmostAppProviding* source, Discretion discretion)
    : m_source(source)
    , m_discretion(std::move(discretion))
{
}

std::optional<FrontmostApp> DiscreetFrontmostAppProvider::frontmostApp()
{
    const auto& settings = m_discretion.settings;
    if (!m_source || settings.isPaused(m_discretion.moment.now()))
        return std::nullopt;
    auto front = m_source->frontmostApp();
    if (front
        && (names(m_discretion.alwaysExcluded, front->bundleIdentifier)
            || names(settings.settings().excludedBundleIDs, front->bundleIdentifier)))
        return std::nullopt;
    return front;
}

double DiscreetFrontmostAppProvider::idleSeconds()
{
    return m_source ? m_source->idleSeconds() : 0;
}

} // namespace pobblewig
