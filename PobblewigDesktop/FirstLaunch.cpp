#include "PobblewigDesktop/FirstLaunch.h"

#include "presence/FirstMinute.h"

namespace pobblewig {

namespace {

const auto greetedKey = QStringLiteral("firstLaunch/greeted");

bool isKnown(AppCoordinator& coordinator)
{
    return coordinator.state().of<SettingsState>().settings.hasCompletedOnboarding
        || !coordinator.chat().messages().empty() || coordinator.usage().snapshot().chatCalls > 0;
}

bool isWatching(AppCoordinator& coordinator)
{
    return coordinator.diagnostics().observation.frontmostBackend != u"none"
        && !coordinator.state().of<SettingsState>().isPaused;
}

} // namespace

void FirstLaunch::greet(AppCoordinator& coordinator)
{
    if (m_settings.value(greetedKey).toBool())
        return;
    m_settings.setValue(greetedKey, true);
    if (isKnown(coordinator))
        return;
    m_bubbles.say({ Bubble::Kind::greeting, FirstMinute::greeting() });
    if (isWatching(coordinator))
        m_bubbles.say({ Bubble::Kind::sight, FirstMinute::sight() });
}

} // namespace pobblewig
