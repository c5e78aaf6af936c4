#include "PobblewigLinux/calendars/ICalendarReader.h"

#include "PobblewigLinux/calendars/ICalendarOccurrences.h"
#include "PobblewigLinux/calendars/ICalendarText.h"

#include <map>

namespace pobblewig {

namespace {

using Replaced = std::map<QByteArray, std::set<TimePoint>>;

QByteArray uid(icalcomponent* component)
{
    const auto* const uid = icalcomponent_get_uid(component);
    return uid ? QByteArray(uid) : QByteArray();
}

bool isCancelled(icalcomponent* component)
{
    return icalcomponent_get_status(component) == ICAL_STATUS_CANCELLED;
}

bool isCompleted(icalcomponent* reminder)
{
    return icalcomponent_get_status(reminder) == ICAL_STATUS_COMPLETED
        || icalcomponent_get_first_property(reminder, ICAL_COMPLETED_PROPERTY);
}

QString title(icalcomponent* component)
{
    return ICalendarText::text(component, ICAL_SUMMARY_PROPERTY).value_or(QString());
}

/// The name that many programs give to a calendar.
std::optional<QString> name(icalcomponent* calendar)
{
    for (auto* const property : ICalendarText::properties(calendar, ICAL_X_PROPERTY)) {
        if (qstricmp(icalproperty_get_x_name(property), "X-WR-CALNAME") == 0)
            return QString::fromUtf8(icalproperty_get_value_as_string(property));
    }
    return std::nullopt;
}

/// The events of series that are replaced by events of their own.
Replaced replaced(const std::vector<icalcomponent*>& events, ICalendarZones& zones)
{
    Replaced replaced;
    for (auto* const event : events) {
        const auto occurrences = ICalendarOccurrences::of(event, zones);
        if (const auto time = occurrences ? occurrences->replaced() : std::nullopt)
            replaced[uid(event)].insert(*time);
    }
    return replaced;
}

void addEvents(icalcomponent* calendar, const ICalendarReader::Window& window,
    std::vector<CalendarEventDTO>& found)
{
    ICalendarZones zones(calendar, window.local);
    const auto events = ICalendarText::components(calendar, ICAL_VEVENT_COMPONENT);
    const auto replacing = replaced(events, zones);
    const auto calendarName = name(calendar);
    for (auto* const event : events) {
        const auto occurrences = ICalendarOccurrences::of(event, zones);
        if (!occurrences || isCancelled(event))
            continue;
        const auto other = replacing.find(uid(event));
        const auto isOfSeries = !occurrences->replaced() && other != replacing.end();
        const auto apart = isOfSeries ? other->second : std::set<TimePoint>();
        for (const auto& occurrence : occurrences->within(window, apart))
            found.push_back({ .id = QString::fromUtf8(uid(event)),
                .title = title(event),
                .startDate = occurrence.start,
                .endDate = occurrence.end,
                .calendarName = calendarName,
                .notes = ICalendarText::text(event, ICAL_DESCRIPTION_PROPERTY),
                .isAllDay = occurrences->isAllDay() });
    }
}

void addReminders(icalcomponent* calendar, const QTimeZone& local, std::vector<ReminderDTO>& found)
{
    ICalendarZones zones(calendar, local);
    for (auto* const reminder : ICalendarText::components(calendar, ICAL_VTODO_COMPONENT)) {
        if (isCancelled(reminder) || isCompleted(reminder))
            continue;
        auto* const due = icalcomponent_get_first_property(reminder, ICAL_DUE_PROPERTY);
        const auto time = ICalendarText::time(due);
        found.push_back({ .id = QString::fromUtf8(uid(reminder)),
            .title = title(reminder),
            .dueDate = time ? zones.of(due, *time).instant(*time) : std::nullopt,
            .listName = name(calendar),
            .notes = ICalendarText::text(reminder, ICAL_DESCRIPTION_PROPERTY),
            .isAllDay = time && time->is_date });
    }
}

} // namespace

std::optional<std::vector<CalendarEventDTO>> ICalendarReader::events(
    const QByteArray& text, const Window& window)
{
    const auto parsed = ICalendarText::parse(text);
    if (!parsed)
        return std::nullopt;
    std::vector<CalendarEventDTO> found;
    for (auto* const calendar : parsed->calendars())
        addEvents(calendar, window, found);
    return found;
}

std::optional<std::vector<ReminderDTO>> ICalendarReader::reminders(
    const QByteArray& text, const QTimeZone& local)
{
    const auto parsed = ICalendarText::parse(text);
    if (!parsed)
        return std::nullopt;
    std::vector<ReminderDTO> found;
    for (auto* const calendar : parsed->calendars())
        addReminders(calendar, local, found);
    return found;
}

} // namespace pobblewig
