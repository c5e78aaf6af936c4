#include "PobblewigLinux/modules/CalendarFolderModule.h"

#include "PobblewigLinux/calendars/CalendarFolder.h"

namespace pobblewig {

std::unique_ptr<CalendarDataProviding> CalendarFolderModule::makeCalendars(const QString& folder)
{
    return std::make_unique<CalendarFolder>(folder);
}

} // namespace pobblewig
