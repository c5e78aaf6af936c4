#pragma once

#include "foundation/Calendar.h"

#include <QString>

#include <optional>

namespace pobblewig {

/// How a service is doing, as the page of connections shows it.
struct ConnectionStatus {
    /// Whether the user wants it to be read.
    bool isWanted = false;
    bool isSyncing = false;
    std::optional<TimePoint> lastSyncAt = std::nullopt;
    /// Why the latest sync failed, for the user.
    std::optional<QString> error = std::nullopt;
    /// What it brought, as in "6 courses, 42 deadlines".
    QString found = {};

    bool operator==(const ConnectionStatus&) const = default;
};

namespace ConnectionTexts {

/// "Connected. Last sync 5 minutes ago: 6 courses, 42 deadlines."; an error as it stands.
QString state(const ConnectionStatus& status, TimePoint now, const Calendar& calendar);

QString school(int courses, int deadlines);
QString calendars(int events, int reminders);

/// A site's address as it is to be kept, from what the user has typed: it may lack "https://".
/// Nothing if the token would not be safe there.
std::optional<QString> address(const QString& typed);

} // namespace ConnectionTexts

} // namespace pobblewig
