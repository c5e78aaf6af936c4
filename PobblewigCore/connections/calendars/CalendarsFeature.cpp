#include "connections/calendars/CalendarsFeature.h"

#include "connections/SituationLine.h"
#include "connections/calendars/CalendarSyncLogic.h"

#include <limits>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::days daysAhead(CalendarSyncLogic::upcomingWindowDays);
constexpr auto reminderTime = 48h;
constexpr size_t mostItems = 3;
constexpr auto noLimit = std::numeric_limits<size_t>::max();

/// When the user's day begins and the next one.
std::pair<TimePoint, TimePoint> today(TimePoint now, const Calendar& calendar)
{
    const auto begin = [&](QDate day) {
        return TimePoint(
            std::chrono::milliseconds(day.startOfDay(calendar.timeZone).toMSecsSinceEpoch()));
    };
    const auto day = calendar.day(now);
    return { begin(day), begin(day.addDays(1)) };
}

} // namespace

CalendarsFeature::CalendarsFeature(const Parts& parts, const Moment& moment)
    : m_settings(parts.settings)
    , m_reference(parts.reference)
    , m_provider(parts.provider)
    , m_moment(moment)
    , m_service(parts.directory, parts.provider, parts.reference)
    , m_events(CalendarSyncLogic::eventsPath, u"startAt")
    , m_reminders(CalendarSyncLogic::remindersPath, u"dueAt")
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
    std::vector<QString> lines;
    const auto [morning, midnight] = today(now, m_moment.calendar());
    addSituationLine(lines, QStringLiteral("Today's events: "),
        m_events.within(m_reference, morning - 1ms, midnight - 1ms, noLimit));
    addSituationLine(lines, QStringLiteral("Upcoming events (Calendar): "),
        m_events.within(m_reference, now, now + daysAhead, mostItems));
    addSituationLine(lines, QStringLiteral("Due reminders: "),
        m_reminders.within(m_reference, now, now + reminderTime, mostItems));
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
