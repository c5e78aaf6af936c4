#include "PobblewigDesktop/activity/WeekPage.h"

#include "PobblewigDesktop/activity/ActivityCharts.h"
#include "PobblewigDesktop/activity/DateSteps.h"

namespace pobblewig {

WeekPage::WeekPage(ActivityDesk& desk)
    : FormPage(tr("Week"))
    , m_desk(desk)
    , m_steps(new DateSteps({ tr("Previous week"), tr("Next week"), tr("This week") }))
    , m_days(new ChartPane(tr("Day by day")))
    , m_categories(new ChartPane(tr("By category")))
    , m_applications(new ChartPane(tr("By application")))
{
    add(*m_steps);
    add(*m_days);
    add(*m_categories);
    add(*m_applications);
    addExplanation(tr("The record goes back two weeks at most."));
    connect(m_steps, &DateSteps::stepped, this, [this](int direction) {
        m_week += direction;
        showWeek();
    });
    connect(m_steps, &DateSteps::presentRequested, this, [this] {
        m_week = 0;
        showWeek();
    });
}

void WeekPage::showState(const PublishedState&)
{
    showWeek();
}

void WeekPage::setTheme(const Palette& palette)
{
    m_steps->setTheme(palette);
    for (auto* const pane : { m_days, m_categories, m_applications })
        pane->setTheme(palette);
}

void WeekPage::showWeek()
{
    const auto calendar = m_desk.calendar();
    const auto day = calendar.day(m_desk.now()).addDays(qint64(m_week) * 7);
    const auto week = ActivityDayLogic::week(m_desk.sessions(), day, calendar);
    m_steps->setShown(tr("%1 to %2")
                          .arg(calendar.locale.toString(week.front().day, QLocale::ShortFormat),
                              calendar.locale.toString(week.back().day, QLocale::ShortFormat)),
        m_week == 0);
    m_days->setContents(ActivityCharts::days(week, calendar));
    m_categories->setContents(ActivityCharts::categories(week));
    m_applications->setContents(ActivityCharts::applications(week));
    const auto isEmpty = ActivityDayLogic::applications(week).empty();
    m_categories->setHidden(isEmpty);
    m_applications->setHidden(isEmpty);
}

} // namespace pobblewig
