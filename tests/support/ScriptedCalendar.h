#pragma once

#include "connections/calendars/CalendarDataProviding.h"
#include "foundation/Stream.h"

namespace pobblewig {

/// A calendar that keeps what is saved, or refuses it.
class ScriptedCalendar : public CalendarDataProviding {
public:
    PermissionState permission = PermissionState::granted;
    std::optional<WriteError> refusal;
    std::optional<CalendarEntity> denied;
    /// Why nothing can be read.
    std::optional<WriteError> outage;
    std::vector<CalendarEventDTO> events;
    std::vector<ReminderDTO> reminders;
    int reads = 0;
    /// If it is there, events are read once it brings something.
    std::optional<Stream<std::monostate, std::monostate>> gate;

    PermissionState authorizationStatus(CalendarEntity entity) const override
    {
        return denied == entity ? PermissionState::denied : permission;
    }
    Task<> requestAccess(CalendarEntity) override { co_return; }

    Task<Result<std::vector<CalendarEventDTO>>> fetchEvents(TimePoint, TimePoint) override
    {
        ++reads;
        if (gate)
            co_await gate->next();
        if (outage)
            co_return tl::unexpected(*outage);
        co_return Result<std::vector<CalendarEventDTO>>(events);
    }
    Task<Result<std::vector<ReminderDTO>>> fetchIncompleteReminders() override
    {
        if (outage)
            co_return tl::unexpected(*outage);
        co_return Result<std::vector<ReminderDTO>>(reminders);
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
