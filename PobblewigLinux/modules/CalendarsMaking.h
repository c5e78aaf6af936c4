#pragma once

#include "connections/calendars/CalendarDataProviding.h"

#include <QtPlugin>

#include <memory>

namespace pobblewig {

/// What the modules "calendars" and "calendarfolder" are for.
class CalendarsMaking {
public:
    virtual ~CalendarsMaking() = default;

    /// A module whose calendars are not files leaves the folder alone.
    virtual std::unique_ptr<CalendarDataProviding> makeCalendars(const QString& folder) = 0;
};

} // namespace pobblewig

Q_DECLARE_INTERFACE(pobblewig::CalendarsMaking, "com.pobblewig.CalendarsMaking")
