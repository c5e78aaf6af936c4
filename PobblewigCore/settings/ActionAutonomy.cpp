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

} // namespace pobblewig
