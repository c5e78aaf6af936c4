#include "connections/calendars/CalendarService.h"

#include "connections/SyncSchedule.h"
#include "connections/calendars/CalendarSyncLogic.h"

#include <QCoroFuture>
#include <QtConcurrentRun>

#include <algorithm>

namespace pobblewig {

namespace {

using Items = std::vector<ReferenceItem>;

/// Soonest first, so that the same entries always make the same section.
template <typename Entry, typename Date>
void sort(std::vector<Entry>& entries, Date date)
{
    std::ranges::stable_sort(entries, {},
        [date](const Entry& entry) { return std::tie(entry.*date, entry.title, entry.id); });
}

Items eventItems(std::vector<CalendarEventDTO> events, TimePoint now, const Calendar& calendar)
{
    sort(events, &CalendarEventDTO::startDate);
    Items items;
    items.reserve(events.size());
    for (const auto& event : events)
        items.push_back(CalendarSyncLogic::eventItem(event, now, calendar));
    return items;
}

Items reminderItems(std::vector<ReminderDTO> reminders, TimePoint now, const Calendar& calendar)
{
    sort(reminders, &ReminderDTO::dueDate);
    Items items;
    items.reserve(reminders.size());
    for (const auto& reminder : reminders)
        items.push_back(CalendarSyncLogic::reminderItem(reminder, now, calendar));
    return items;
}

} // namespace

CalendarService::CalendarService(const std::optional<DataDirectory>& directory,
    CalendarDataProviding& provider, ReferenceMemoryStore& reference)
    : m_file(directory, QStringLiteral("calendar.json"), QStringLiteral("calendar state"))
    , m_provider(provider)
    , m_reference(reference)
    , m_state(m_file.load<CalendarSyncState>())
{
}

bool CalendarService::syncDue(TimePoint now, int intervalMinutes) const
{
    return SyncSchedule::syncDue(m_state.lastSyncAt, now, intervalMinutes);
}

void CalendarService::readAgain()
{
    const auto kept = m_file.loadAgain<CalendarSyncState>();
    if (kept && !m_state.lastSyncAt)
        m_state = *kept;
}

Task<CalendarSyncState> CalendarService::sync(Sync sync)
{
    CalendarSyncState outcome { .lastSyncAt = sync.now, .lastStatus = QStringLiteral("ok") };
    QStringList problems;
    auto isAnyRead = false;
    const auto note = [&](const Count& count, int& into) {
        into = count.value_or(0);
        isAnyRead = isAnyRead || count;
        if (!count)
            problems.append(count.error());
    };
    if (sync.includeEvents) {
        const auto count = co_await syncEvents(sync);
        note(count, outcome.eventCount);
    }
    if (sync.includeReminders) {
        const auto count = co_await syncReminders(sync);
        note(count, outcome.reminderCount);
    }
    problems.removeDuplicates();
    if (!problems.isEmpty()) {
        outcome.lastStatus = isAnyRead ? QStringLiteral("partial") : QStringLiteral("failed");
        outcome.lastError = problems.join(QStringLiteral("; "));
    }
    m_state = outcome;
    m_file.save(m_state);
    co_return outcome;
}

auto CalendarService::syncEvents(Sync sync) -> Task<Count>
{
    if (m_provider.authorizationStatus(CalendarEntity::events) != PermissionState::granted)
        co_return tl::unexpected(QStringLiteral("calendar access not granted"));
    const auto until = sync.now + std::chrono::days(CalendarSyncLogic::upcomingWindowDays);
    auto events = co_await m_provider.fetchEvents(sync.now, until);
    if (!events)
        co_return tl::unexpected(events.error().description);
    co_return co_await replace(CalendarSyncLogic::eventsPath, [events = *std::move(events), sync] {
        return eventItems(events, sync.now, sync.calendar);
    });
}

auto CalendarService::syncReminders(Sync sync) -> Task<Count>
{
    if (m_provider.authorizationStatus(CalendarEntity::reminders) != PermissionState::granted)
        co_return tl::unexpected(QStringLiteral("reminders access not granted"));
    auto reminders = co_await m_provider.fetchIncompleteReminders();
    if (!reminders)
        co_return tl::unexpected(reminders.error().description);
    co_return co_await replace(
        CalendarSyncLogic::remindersPath, [reminders = *std::move(reminders), sync] {
            return reminderItems(reminders, sync.now, sync.calendar);
        });
}

auto CalendarService::replace(QStringView path, std::function<Items()> fetched) -> Task<Count>
{
    auto items = co_await QtConcurrent::run(
        [fetched = std::move(fetched), known = m_reference.items(path.toString())] {
            return CalendarSyncLogic::recognised(fetched(), known);
        });
    const auto count = int(items.size());
    co_await m_reference.replaceItems(path.toString(), std::move(items));
    co_return count;
}

} // namespace pobblewig
