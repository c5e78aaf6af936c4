#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

/// How the latest sync of the calendars went; the contents of "calendar.json".
struct CalendarSyncState {
    std::optional<TimePoint> lastSyncAt = std::nullopt;
    /// "ok", "partial" or "failed".
    QString lastStatus = QStringLiteral("never synced");
    std::optional<QString> lastError = std::nullopt;
    int eventCount = 0;
    int reminderCount = 0;

    bool operator==(const CalendarSyncState&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using S = CalendarSyncState;
        return std::tuple { optional("lastSyncAt", &S::lastSyncAt),
            defaulted("lastStatus", &S::lastStatus), optional("lastError", &S::lastError),
            defaulted("eventCount", &S::eventCount),
            defaulted("reminderCount", &S::reminderCount) };
    }
};

} // namespace pobblewig
