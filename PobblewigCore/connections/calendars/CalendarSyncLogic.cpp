#include "connections/calendars/CalendarSyncLogic.h"

#include "connections/DatedItems.h"

#include <algorithm>

namespace pobblewig {

namespace {

constexpr QStringView startKey = u"startAt";
constexpr QStringView dueKey = u"dueAt";

} // namespace

std::optional<TimePoint> CalendarSyncLogic::startDate(const ReferenceItem& item)
{
    return DatedItems::date(item, startKey);
}

std::optional<TimePoint> CalendarSyncLogic::dueDate(const ReferenceItem& item)
{
    return DatedItems::date(item, dueKey);
}

std::vector<ReferenceItem> CalendarSyncLogic::todaysEvents(
    const std::vector<ReferenceItem>& items, TimePoint now, const Calendar& calendar)
{
    const auto today = calendar.day(now);
    std::vector<ReferenceItem> events;
    std::ranges::copy_if(items, std::back_inserter(events), [&](const auto& item) {
        const auto start = item.path == eventsPath ? startDate(item) : std::nullopt;
        return start && calendar.day(*start) == today;
    });
    std::ranges::stable_sort(events, {}, startDate);
    return events;
}

std::vector<ReferenceItem> CalendarSyncLogic::upcomingEvents(
    const std::vector<ReferenceItem>& items, TimePoint now, int withinDays, int limit)
{
    return DatedItems::within(items,
        { .path = eventsPath,
            .key = startKey,
            .from = now,
            .to = now + std::chrono::days(withinDays),
            .limit = limit });
}

std::vector<ReferenceItem> CalendarSyncLogic::dueReminders(
    const std::vector<ReferenceItem>& items, TimePoint now, int windowHours, int limit)
{
    return DatedItems::within(items,
        { .path = remindersPath,
            .key = dueKey,
            .from = now,
            .to = now + std::chrono::hours(windowHours),
            .limit = limit });
}

} // namespace pobblewig
