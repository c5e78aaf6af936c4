#include "connections/calendars/CalendarDataProviding.h"

namespace pobblewig {

namespace {

tl::unexpected<WriteError> noAccess(CalendarEntity entity)
{
    return tl::unexpected(
        WriteError::noAccess(entity == CalendarEntity::events ? QStringLiteral("Calendar")
                                                              : QStringLiteral("Reminders")));
}

} // namespace

WriteError WriteError::noAccess(const QString& what)
{
    return { what + QStringLiteral(" access is not granted") };
}

PermissionState UnavailableCalendarProvider::authorizationStatus(CalendarEntity) const
{
    return PermissionState::denied;
}

Task<> UnavailableCalendarProvider::requestAccess(CalendarEntity)
{
    co_return;
}

auto UnavailableCalendarProvider::fetchEvents(TimePoint, TimePoint)
    -> Task<Result<std::vector<CalendarEventDTO>>>
{
    co_return noAccess(CalendarEntity::events);
}

auto UnavailableCalendarProvider::fetchIncompleteReminders()
    -> Task<Result<std::vector<ReminderDTO>>>
{
    co_return noAccess(CalendarEntity::reminders);
}

auto UnavailableCalendarProvider::saveEvent(CalendarEventDTO) -> Task<Result<void>>
{
    co_return noAccess(CalendarEntity::events);
}

auto UnavailableCalendarProvider::saveReminder(ReminderDTO) -> Task<Result<void>>
{
    co_return noAccess(CalendarEntity::reminders);
}

} // namespace pobblewig
