#include "interventions/BriefingLogic.h"

#include "connections/DatedItems.h"
#include "connections/DeadlineLogic.h"
#include "connections/calendars/CalendarSyncLogic.h"
#include "foundation/Text.h"

#include <limits>

namespace pobblewig {

namespace {

constexpr int deadlineHours = 48;
constexpr int weekHours = 7 * 24;
constexpr size_t mostDeadlines = 5;
constexpr int reminderHours = 24;
constexpr int mostEvents = 20;
constexpr qsizetype lineCharacters = 200;

using Items = std::vector<ReferenceItem>;

QString lines(const Items& items, size_t most)
{
    QStringList lines;
    for (const auto& item : items) {
        const auto text = QStringLiteral("- %1 — %2").arg(item.title, item.summary);
        if (size_t(lines.size()) < most)
            lines << Text::firstCharacters(Text::onOneLine(text), lineCharacters);
    }
    return lines.join(u'\n');
}

Items openDeadlines(const Items& items, TimePoint now, int hours)
{
    return DeadlineLogic::unsubmitted(items, now, hours, [](const auto&) { return true; });
}

bool isOver(const ReferenceItem& event, TimePoint now)
{
    const auto end = DatedItems::date(event, u"endAt");
    const auto last = end ? end : CalendarSyncLogic::startDate(event);
    const auto allDay = event.details.find(QStringLiteral("allDay"));
    const auto isAllDay = allDay != event.details.end() && allDay->second == JSONValue(true);
    return !isAllDay && last && *last <= now;
}

} // namespace

bool BriefingLogic::hasSource(const AppSettings& settings, const Items& items)
{
    if (settings.canvasSyncEnabled || settings.classroomSyncEnabled || settings.calendarSyncEnabled
        || settings.remindersSyncEnabled)
        return true;
    return std::ranges::any_of(items, [](const auto& item) {
        return item.path == deadlinesPath || item.path == CalendarSyncLogic::eventsPath
            || item.path == CalendarSyncLogic::remindersPath;
    });
}

InterventionPrompts::Briefing BriefingLogic::briefing(
    const Items& items, TimePoint now, const Calendar& calendar)
{
    const auto deadlines = openDeadlines(items, now, deadlineHours);
    const auto shown = std::min(deadlines.size(), mostDeadlines);
    auto events = CalendarSyncLogic::todaysEvents(items, now, calendar);
    std::erase_if(events, [now](const auto& event) { return isOver(event, now); });
    return {
        .deadlines = lines(deadlines, mostDeadlines),
        .events = lines(events, mostEvents),
        .reminders = lines(
            CalendarSyncLogic::dueReminders(items, now, reminderHours, mostEvents), mostEvents),
        .more = std::ssize(openDeadlines(items, now, weekHours)) - qsizetype(shown),
    };
}

} // namespace pobblewig
