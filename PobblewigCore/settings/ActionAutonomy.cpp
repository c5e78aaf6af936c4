#include "settings/ActionAutonomy.h"

#include <algorithm>

namespace pobblewig {

bool ActionAutonomy::requiresConfirmation(QStringView actionClass, const AppSettings& settings)
{
    return requiresConfirmation(actionClass, settings.actionConfirmations);
}

bool ActionAutonomy::requiresConfirmation(
    QStringView actionClass, const std::map<QString, bool>& confirmations)
{
    if (std::ranges::find(alwaysConfirm, actionClass) != alwaysConfirm.end())
        return true;
    const auto chosen = confirmations.find(actionClass.toString());
    return chosen == confirmations.end() || chosen->second;
}

void ActionAutonomy::setAsks(
    AppSettings& settings, const QString& actionClass, bool asks, TimePoint now)
{
    settings.actionConfirmations[actionClass] = asks;
    auto since = settings.allowedSince.value_or(std::map<QString, TimePoint>());
    since.erase(actionClass);
    if (!asks)
        since[actionClass] = now;
    settings.allowedSince = since.empty() ? std::nullopt : std::optional(since);
}

std::optional<TimePoint> ActionAutonomy::allowedSince(
    const AppSettings& settings, const QString& actionClass)
{
    if (!settings.allowedSince || requiresConfirmation(actionClass, settings))
        return std::nullopt;
    const auto since = settings.allowedSince->find(actionClass);
    return since == settings.allowedSince->end() ? std::nullopt : std::optional(since->second);
}

} // namespace pobblewig
