#pragma once

#include "connections/DatedIndex.h"
#include "connections/calendars/CalendarService.h"
#include "features/Feature.h"
#include "foundation/Moment.h"
#include "memory/ReferenceMemoryStore.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

struct CalendarState {
    CalendarSyncState sync;
    bool isSyncing = false;
    PermissionState calendarPermission = PermissionState::notRequested;
    PermissionState remindersPermission = PermissionState::notRequested;
    /// Its name for the user, and the choice behind it. Empty as long as it is not known.
    QString source = {};
    std::optional<CalendarSource> choice = std::nullopt;
    /// Why there are no calendars to read at the moment, for the user.
    std::optional<QString> unavailable = std::nullopt;

    bool operator==(const CalendarState&) const = default;
};

/// The events and reminders of the user's calendars.
class CalendarsFeature : public Feature {
public:
    struct Parts {
        const SettingsStore& settings;
        ReferenceMemoryStore& reference;
        CalendarDataProviding& provider;
        const std::optional<DataDirectory>& directory;
    };

    /// All references must outlive the feature.
    CalendarsFeature(const Parts& parts, const Moment& moment);

    Task<> tick() override;
    std::vector<QString> situation(TimePoint now) const override;
    void publish(PublishedState& state) const override;

    /// Syncs what the settings switch on, whatever the interval. During a sync, once more after it.
    Task<> syncNow();

    /// Asks the platform for access, and learns the source if it is not known yet.
    Task<> requestAccess();

    /// Reads from there at once.
    void chooseSource(const CalendarSource& source);

private:
    bool isWanted() const;

    const SettingsStore& m_settings;
    const ReferenceMemoryStore& m_reference;
    CalendarDataProviding& m_provider;
    const Moment& m_moment;
    CalendarService m_service;
    mutable DatedIndex m_events;
    mutable DatedIndex m_reminders;
    bool m_isSyncing = false;
    bool m_isWantedAgain = false;
};

} // namespace pobblewig
