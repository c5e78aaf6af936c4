#include "PobblewigLinux/calendars/ICalendarReader.h"

#include <cstdlib>

using namespace pobblewig;
using namespace std::chrono_literals;

namespace {

void demand(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

/// A calendar file from elsewhere.
extern "C" int LLVMFuzzerTestOneInput(const uchar* data, size_t size)
{
    const auto bytes = QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
    constexpr TimePoint now { 1772352900s };
    static const QTimeZone local("America/New_York");
    const ICalendarReader::Window window { now, now + std::chrono::days(14), local };
    if (const auto events = ICalendarReader::events(bytes, window)) {
        for (const auto& event : *events) {
            demand(event.startDate < window.to);
            demand(!event.endDate || *event.endDate > event.startDate);
        }
    }
    if (const auto reminders = ICalendarReader::reminders(bytes, local)) {
        for (const auto& reminder : *reminders)
            demand(!reminder.isCompleted);
    }
    return 0;
}
