#pragma once

#include "PobblewigLinux/calendars/CalendarThread.h"
#include "connections/calendars/CalendarDataProviding.h"
#include "foundation/Moment.h"

namespace pobblewig {

/// The calendars of the desktop's calendar service, asked on another thread. A call ends after 30
/// seconds at the latest.
class DataServerCalendars final : public CalendarDataProviding {
public:
    explicit DataServerCalendars(Moment moment = {});

    PermissionState authorizationStatus(CalendarEntity) const override;
    Task<> requestAccess(CalendarEntity) override { co_return; }

    Task<Result<std::vector<CalendarEventDTO>>> fetchEvents(TimePoint from, TimePoint to) override;
    Task<Result<std::vector<ReminderDTO>>> fetchIncompleteReminders() override;
    Task<Result<void>> saveEvent(CalendarEventDTO event) override;
    Task<Result<void>> saveReminder(ReminderDTO reminder) override;

private:
    Moment m_moment;
    CalendarThread m_thread;
};

} // namespace pobblewig
