#include "PobblewigDesktop/activity/ActivityWindow.h"

#include "PobblewigDesktop/activity/DayPage.h"
#include "PobblewigDesktop/activity/RulesPage.h"
#include "PobblewigDesktop/activity/UsagePage.h"
#include "PobblewigDesktop/activity/WeekPage.h"

namespace pobblewig {

namespace {

PageEntries entries(AppCoordinator& from)
{
    using enum Icons::Name;
    return {
        { QStringLiteral("day"), ActivityWindow::tr("Day"), clock,
            [&from] { return std::make_unique<DayPage>(from.activityDesk()); } },
        { QStringLiteral("week"), ActivityWindow::tr("Week"), week,
            [&from] { return std::make_unique<WeekPage>(from.activityDesk()); } },
        { QStringLiteral("rules"), ActivityWindow::tr("Rules"), check,
            [&from] { return std::make_unique<RulesPage>(from); } },
        { QStringLiteral("usage"), ActivityWindow::tr("Usage"), chart,
            [&from] { return std::make_unique<UsagePage>(from); } },
    };
}

} // namespace

ActivityWindow::ActivityWindow(AppCoordinator& coordinator)
    : PageWindow(tr("Pobblewig Activity"), entries(coordinator))
{
}

} // namespace pobblewig
