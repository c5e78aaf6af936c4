#include "connections/calendars/CalendarSyncLogic.h"

#include "connections/DatedItems.h"
#include "connections/ItemDetails.h"
#include "foundation/ISO8601.h"

#include <QHash>

#include <algorithm>

namespace pobblewig {

using ItemDetails::add;
using ItemDetails::words;

namespace {

constexpr QStringView startKey = u"startAt";
constexpr QStringView dueKey = u"dueAt";
constexpr auto dayFormat = "yyyy-MM-dd";
constexpr auto timeFormat = "HH:mm";

QString formatted(TimePoint date, const char* format, const Calendar& calendar)
{
    return QLocale::c().toString(calendar.dateTime(date), QLatin1String(format));
}

/// "2026-11-24 09:00–10:00", or both stamps of an event that ends on another day.
QString span(const CalendarEventDTO& event, const Calendar& calendar)
{
    auto text = CalendarSyncLogic::stamp(event.startDate, event.isAllDay, calendar);
    if (!event.endDate || *event.endDate <= event.startDate)
        return text;
    if (calendar.day(*event.endDate) == calendar.day(event.startDate))
        return text + u'–' + formatted(*event.endDate, timeFormat, calendar);
    return text + QStringLiteral(" – ")
        + CalendarSyncLogic::stamp(*event.endDate, event.isAllDay, calendar);
}

void addDate(ReferenceItem& item, QStringView key, const std::optional<TimePoint>& date)
{
    if (date)
        item.details[key.toString()] = JSONValue(ISO8601::format(*date));
}

ReferenceItem newItem(QStringView path, const QString& title, TimePoint now)
{
    constexpr QStringView source = u"calendar_sync";
    auto item = ItemDetails::newItem(path, title, source, now);
    add(item, u"source", source.toString());
    return item;
}

/// The end of the day for what is due that day.
TimePoint dueAt(const ReminderDTO& reminder, const Calendar& calendar)
{
    if (!reminder.isAllDay)
        return *reminder.dueDate;
    const QDateTime end(calendar.day(*reminder.dueDate), QTime(23, 59), calendar.timeZone);
    return TimePoint(std::chrono::milliseconds(end.toMSecsSinceEpoch()));
}

/// What stays the same as long as it is the same event, or the same reminder.
QString identity(const ReferenceItem& item)
{
    const auto text = [&](QStringView key) { return ItemDetails::text(item, key); };
    return text(u"eventID") + u'\n' + text(startKey) + u'\n' + text(u"reminderID");
}

} // namespace

ReferenceItem CalendarSyncLogic::eventItem(
    const CalendarEventDTO& event, TimePoint now, const Calendar& calendar)
{
    const auto title = words(event.title).value_or(QStringLiteral("(untitled event)"));
    auto item = newItem(eventsPath, title, now);
    item.summary = span(event, calendar);
    if (const auto name = words(event.calendarName))
        item.summary += QStringLiteral(" · ") + *name;
    add(item, u"eventID", event.id);
    addDate(item, startKey, event.startDate);
    addDate(item, u"endAt", event.endDate);
    add(item, u"calendar", event.calendarName);
    add(item, u"notes", event.notes);
    item.details[QStringLiteral("allDay")] = JSONValue(event.isAllDay);
    return item;
}

ReferenceItem CalendarSyncLogic::reminderItem(
    const ReminderDTO& reminder, TimePoint now, const Calendar& calendar)
{
    const auto title = words(reminder.title).value_or(QStringLiteral("(untitled reminder)"));
    auto item = newItem(remindersPath, title, now);
    if (reminder.dueDate) {
        addDate(item, dueKey, dueAt(reminder, calendar));
        item.summary =
            QStringLiteral("Due ") + stamp(*reminder.dueDate, reminder.isAllDay, calendar);
    }
    add(item, u"reminderID", reminder.id);
    add(item, u"list", reminder.listName);
    add(item, u"notes", reminder.notes);
    item.details[QStringLiteral("completed")] = JSONValue(reminder.isCompleted);
    if (reminder.isAllDay)
        item.details[QStringLiteral("allDay")] = JSONValue(true);
    return item;
}

QString CalendarSyncLogic::stamp(TimePoint date, bool allDay, const Calendar& calendar)
{
    const auto day = formatted(date, dayFormat, calendar);
    return allDay ? day : day + u' ' + formatted(date, timeFormat, calendar);
}

std::vector<ReferenceItem> CalendarSyncLogic::recognised(
    std::vector<ReferenceItem> fetched, const std::vector<ReferenceItem>& known)
{
    QMultiHash<QString, const ReferenceItem*> earlier;
    for (const auto& item : known)
        earlier.insert(identity(item), &item);
    for (auto& item : fetched) {
        const auto same = earlier.find(identity(item));
        if (same == earlier.end())
            continue;
        const auto& before = **same;
        // Each is recognised once, even if a calendar has the same event twice.
        earlier.erase(same);
        item.id = before.id;
        item.createdAt = before.createdAt;
        const auto now = std::exchange(item.updatedAt, before.updatedAt);
        if (item != before)
            item.updatedAt = now;
    }
    return fetched;
}

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
