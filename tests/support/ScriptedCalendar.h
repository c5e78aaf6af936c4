#pragma once

#include "connections/calendars/CalendarDataProviding.h"

namespace pobblewig {

/// A calendar that keeps what is saved, or refuses it.
class ScriptedCalendar : public CalendarDataProviding {
public:
    PermissionState permission = PermissionState::granted;
    std::optional<WriteError> refusal;
    std::vector<CalendarEventDTO> events;
    std::vector<ReminderDTO> reminders;

    PermissionState authorizationStatus(CalendarEntity) const override { return permission; }
    Task<> requestAccess(CalendarEntity) override { co_return; }

    Task<Result<std::vector<CalendarEventDTO>>> fetchEvents(TimePoint, TimePoint) override
    {
        co_return events;
    }
    Task<Result<std::vector<ReminderDTO>>> fetchIncompleteReminders() override
    {
        co_return reminders;
    }
    Task<Result<void>> saveEvent(CalendarEventDTO event) override
    {
        return save(&events, std::move(event));
    }
    Task<Result<void>> saveReminder(ReminderDTO reminder) override
    {
        return save(&reminders, std::move(reminder));
    }

private:
    template <typename Entry>
    Task<Result<void>> save(std::vector<Entry>* entries, Entry entry)
    {
        if (refusal)
            co_return tl::unexpected(*refusal);
        entries->push_back(std::move(entry));
        co_return Result<void>();
    }
};

} // namespace pobblewig
