#include "PobblewigLinux/modules/CalendarsModule.h"

#include "PobblewigLinux/calendars/DataServerCalendars.h"

namespace pobblewig {

std::unique_ptr<CalendarDataProviding> CalendarsModule::makeCalendars(const QString&)
{
    return std::make_unique<DataServerCalendars>();
}

} // namespace pobblewig
