#include "connections/calendars/CalendarsFeature.h"

#include "connections/SituationLine.h"
#include "connections/calendars/CalendarSyncLogic.h"

namespace pobblewig {

namespace {

constexpr int reminderHours = 48;
constexpr int mostItems = 3;

} // namespace

CalendarsFeature::CalendarsFeature(const Parts& parts, const Moment& moment)
    : m_settings(parts.settings)
    , m_reference(parts.reference)
    , m_provider(parts.provider)
    , m_moment(moment)
    , m_service(parts.directory, parts.provider, parts.reference)
{
}

Task<> CalendarsFeature::tick()
{
    m_service.readAgain();
    const auto interval = m_settings.settings().calendarSyncIntervalMinutes;
    if (isWanted() && !m_isSyncing && m_service.syncDue(m_moment.now(), interval))
        co_await syncNow();
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

void CalendarsFeature::publish(PublishedState& state) const
{
    state.set(CalendarState {
        .sync = m_service.state(),
        .isSyncing = m_isSyncing,
        .calendarPermission = m_provider.authorizationStatus(CalendarEntity::events),
        .remindersPermission = m_provider.authorizationStatus(CalendarEntity::reminders),
        .source = m_provider.sourceName(),
        .choice = m_provider.source(),
        .unavailable = m_provider.problem(),
    });
}

Task<> CalendarsFeature::syncNow()
{
    m_isWantedAgain = m_isSyncing;
    if (m_isSyncing || !isWanted())
        co_return;
    m_isSyncing = true;
    do {
        m_isWantedAgain = false;
        changed();
        const auto settings = m_settings.settings();
        co_await m_service.sync({ .now = m_moment.now(),
            .includeEvents = settings.calendarSyncEnabled,
            .includeReminders = settings.remindersSyncEnabled,
            .calendar = m_moment.calendar() });
    } while (m_isWantedAgain);
    m_isSyncing = false;
    changed();
}

Task<> CalendarsFeature::requestAccess()
{
    co_await m_provider.requestAccess(CalendarEntity::events);
    co_await m_provider.requestAccess(CalendarEntity::reminders);
    changed();
}

void CalendarsFeature::chooseSource(const CalendarSource& source)
{
    m_provider.chooseSource(source);
    changed();
    spawn(syncNow());
}

bool CalendarsFeature::isWanted() const
{
    const auto& settings = m_settings.settings();
    return settings.calendarSyncEnabled || settings.remindersSyncEnabled;
}

} // namespace pobblewig
