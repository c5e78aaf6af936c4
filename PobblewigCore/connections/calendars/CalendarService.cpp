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

QFuture<Items> recognisedItems(
    std::vector<CalendarEventDTO> events, CalendarService::Sync sync, Items known)
{
    return QtConcurrent::run([events = std::move(events), sync = std::move(sync),
                                 known = std::move(known)] {
        return CalendarSyncLogic::recognised(eventItems(events, sync.now, sync.calendar), known);
    });
}

QFuture<Items> recognisedItems(
    std::vector<ReminderDTO> reminders, CalendarService::Sync sync, Items known)
{
    return QtConcurrent::run(
        [reminders = std::move(reminders), sync = std::move(sync), known = std::move(known)] {
            return CalendarSyncLogic::recognised(
                reminderItems(reminders, sync.now, sync.calendar), known);
        });
}

/// How the sides of a sync went.
class Tally {
public:
    int count(const tl::expected<int, QString>& side)
    {
        m_isAnyRead = m_isAnyRead || side;
        if (!side && !m_problems.contains(side.error()))
            m_problems.append(side.error());
        return side.value_or(0);
    }

    QString status() const
    {
        if (m_problems.isEmpty())
            return QStringLiteral("ok");
        return m_isAnyRead ? QStringLiteral("partial") : QStringLiteral("failed");
    }

    std::optional<QString> error() const
    {
        return m_problems.isEmpty() ? std::nullopt
                                    : std::optional(m_problems.join(QStringLiteral("; ")));
    }

private:
    QStringList m_problems;
    bool m_isAnyRead = false;
};

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
    CalendarSyncState outcome { .lastSyncAt = sync.now };
    Tally tally;
    if (sync.includeEvents) {
        const auto events = co_await syncEvents(sync);
        outcome.eventCount = tally.count(events);
    }
    if (sync.includeReminders) {
        const auto reminders = co_await syncReminders(sync);
        outcome.reminderCount = tally.count(reminders);
    }
    outcome.lastStatus = tally.status();
    outcome.lastError = tally.error();
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
    const auto path = CalendarSyncLogic::eventsPath.toString();
    auto items = co_await recognisedItems(*std::move(events), sync, m_reference.items(path));
    co_return co_await replace(path, std::move(items));
}

auto CalendarService::syncReminders(Sync sync) -> Task<Count>
{
    if (m_provider.authorizationStatus(CalendarEntity::reminders) != PermissionState::granted)
        co_return tl::unexpected(QStringLiteral("reminders access not granted"));
    auto reminders = co_await m_provider.fetchIncompleteReminders();
    if (!reminders)
        co_return tl::unexpected(reminders.error().description);
    const auto path = CalendarSyncLogic::remindersPath.toString();
    auto items = co_await recognisedItems(*std::move(reminders), sync, m_reference.items(path));
    co_return co_await replace(path, std::move(items));
}

auto CalendarService::replace(QString path, std::vector<ReferenceItem> items) -> Task<Count>
{
    const auto count = int(items.size());
    co_await m_reference.replaceItems(std::move(path), std::move(items));
    co_return count;
}

} // namespace pobblewig
