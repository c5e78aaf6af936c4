#include "PobblewigDesktop/activity/UsagePage.h"

#include "PobblewigDesktop/activity/ActivityCharts.h"

namespace pobblewig {

UsagePage::UsagePage(AppCoordinator& coordinator)
    : FormPage(tr("Usage"))
    , m_coordinator(coordinator)
    , m_lanes(new ChartPane(tr("Tokens in all")))
    , m_days(new ChartPane(tr("Tokens of the last two weeks")))
{
    addExplanation(tr("A token is a piece of a word. Models read your messages and what belongs to "
                      "them, and write their answers. Servers that do not report tokens count as "
                      "0."));
    addGap();
    add(*m_days);
    add(*m_lanes);
}

void UsagePage::showState(const PublishedState&)
{
    const auto& desk = m_coordinator.activityDesk();
    const auto calendar = desk.calendar();
    const auto& usage = m_coordinator.usage();
    m_lanes->setContents(ActivityCharts::lanes(usage.snapshot(), calendar.locale));
    m_days->setContents(
        ActivityCharts::usage(usage.days(), calendar.day(desk.now()), calendar.locale));
}

void UsagePage::setTheme(const Palette& palette)
{
    m_lanes->setTheme(palette);
    m_days->setTheme(palette);
}

} // namespace pobblewig
