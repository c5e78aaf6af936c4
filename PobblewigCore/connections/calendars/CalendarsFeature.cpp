#include "connections/calendars/CalendarsFeature.h"

#include "connections/SituationLine.h"
#include "connections/calendars/CalendarSyncLogic.h"

namespace pobblewig {

namespace {

constexpr int reminderHours = 48;
constexpr int mostItems = 3;

} // namespace

CalendarsFeature::CalendarsFeature(const ReferenceMemoryStore& reference, const Moment& moment)
    : m_reference(reference)
    , m_moment(moment)
{
}

std::vector<QString> CalendarsFeature::situation(TimePoint now) const
{
    const auto& items = m_reference.allItems();
    std::vector<QString> lines;
    addSituationLine(lines, QStringLiteral("Today's events: "),
        CalendarSyncLogic::todaysEvents(items, now, m_moment.calendar()));
    addSituationLine(lines, QStringLiteral("Upcoming events (Calendar): "),
        CalendarSyncLogic::upcomingEvents(
            items, now, CalendarSyncLogic::upcomingWindowDays, mostItems));
    addSituationLine(lines, QStringLiteral("Due reminders: "),
        CalendarSyncLogic::dueReminders(items, now, reminderHours, mostItems));
    return lines;
}

} // namespace pobblewig
