#include "connections/calendars/CalendarSyncLogic.h"

#include "connections/DatedItems.h"
#include "foundation/ISO8601.h"
#include "foundation/Text.h"

#include <QHash>

#include <algorithm>

namespace pobblewig {

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

void add(ReferenceItem& item, QStringView key, const std::optional<QString>& text)
{
    if (text && !text->trimmed().isEmpty())
        item.details[key.toString()] = JSONValue(Text::foreignLine(*text));
}

void add(ReferenceItem& item, QStringView key, const std::optional<TimePoint>& date)
{
    if (date)
        item.details[key.toString()] = JSONValue(ISO8601::format(*date));
}

ReferenceItem item(QStringView path, const QString& title, QStringView untitled, TimePoint now)
{
    const auto line = Text::foreignLine(title);
    const auto source = QStringLiteral("calendar_sync");
    return { .path = path.toString(),
        .title = line.trimmed().isEmpty() ? untitled.toString() : line,
        .details = { { QStringLiteral("source"), JSONValue(source) } },
        .source = source,
        .createdAt = now,
        .updatedAt = now };
}

/// What stays the same as long as it is the same event, or the same reminder.
QString identity(const ReferenceItem& item)
{
    QStringList parts;
    for (const auto key : { u"eventID", u"startAt", u"reminderID" }) {
        const auto found = item.details.find(QString::fromUtf16(key));
        parts.append(found == item.details.end() ? QString() : found->second.displayString());
    }
    return parts.join(u'\n');
}

} // namespace

bool CalendarSyncLogic::syncDue(
    const std::optional<TimePoint>& lastSyncAt, TimePoint now, int intervalMinutes)
{
    return !lastSyncAt || now - *lastSyncAt >= std::chrono::minutes(std::max(intervalMinutes, 1));
}

ReferenceItem CalendarSyncLogic::eventItem(
    const CalendarEventDTO& event, TimePoint now, const Calendar& calendar)
{
    auto made = item(eventsPath, event.title, u"(untitled event)", now);
    made.summary = span(event, calendar);
    if (const auto name = Text::foreignLine(event.calendarName.value_or(QString()));
        !name.trimmed().isEmpty())
        made.summary += QStringLiteral(" · ") + name;
    add(made, u"eventID", event.id);
    add(made, startKey, event.startDate);
    add(made, u"endAt", event.endDate);
    add(made, u"calendar", event.calendarName);
    add(made, u"notes", event.notes);
    made.details[QStringLiteral("allDay")] = JSONValue(event.isAllDay);
    return made;
}

ReferenceItem CalendarSyncLogic::reminderItem(
    const ReminderDTO& reminder, TimePoint now, const Calendar& calendar)
{
    auto made = item(remindersPath, reminder.title, u"(untitled reminder)", now);
    if (reminder.dueDate)
        made.summary =
            QStringLiteral("Due ") + stamp(*reminder.dueDate, reminder.isAllDay, calendar);
    add(made, u"reminderID", reminder.id);
    add(made, dueKey, reminder.dueDate);
    add(made, u"list", reminder.listName);
    add(made, u"notes", reminder.notes);
    made.details[QStringLiteral("completed")] = JSONValue(reminder.isCompleted);
    return made;
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
        if (same == earlier.end()) {
            item.id = QUuid::createUuid();
            continue;
        }
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
