#pragma once

#include "connections/calendars/CalendarDataProviding.h"
#include "connections/calendars/CalendarSyncState.h"
#include "foundation/Calendar.h"
#include "foundation/StoreFile.h"
#include "memory/ReferenceMemoryStore.h"

namespace pobblewig {

/// Brings the events and reminders of the next days into the reference memory. Writes nothing to
/// the calendars.
///
/// Lives on the main thread. Without a directory its state is kept in memory only.
class CalendarService {
public:
    struct Sync {
        TimePoint now;
        bool includeEvents = false;
        bool includeReminders = false;
        Calendar calendar = {};
    };

    /// All references must outlive the service.
    CalendarService(const std::optional<DataDirectory>& directory, CalendarDataProviding& provider,
        ReferenceMemoryStore& reference);

    const CalendarSyncState& state() const { return m_state; }
    bool syncDue(TimePoint now, int intervalMinutes) const;

    /// Tries again to read a file that could not be read at the start.
    void readAgain();

    /// Makes each included section equal to what the calendars hold; one that cannot be fetched
    /// stays as it is, and the state says why. Called once at a time.
    Task<CalendarSyncState> sync(Sync sync);

private:
    /// The number of items, or the problem.
    using Count = tl::expected<int, QString>;

    Task<Count> syncEvents(Sync sync);
    Task<Count> syncReminders(Sync sync);
    Task<Count> replace(QString path, std::vector<ReferenceItem> items);

    StoreFile m_file;
    CalendarDataProviding& m_provider;
    ReferenceMemoryStore& m_reference;
    CalendarSyncState m_state;
};

} // namespace pobblewig
