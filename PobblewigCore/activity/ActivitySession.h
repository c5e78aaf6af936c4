#pragma once

#include "foundation/JSONCodec.h"

#include <vector>

namespace pobblewig {

/// A time without input.
struct ActivityIdle {
    TimePoint from;
    TimePoint to;

    bool operator==(const ActivityIdle&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("from", &ActivityIdle::from),
            required("to", &ActivityIdle::to) };
    }
};

/// A period with one application in front.
struct ActivitySession {
    QUuid id;
    QString applicationName;
    QString bundleIdentifier;
    /// Reserved: currently never set.
    std::optional<QString> windowTitle = std::nullopt;
    TimePoint startedAt;
    /// Not set while the session is open.
    std::optional<TimePoint> endedAt = std::nullopt;
    /// Wall time since the start, including idle time.
    double durationSeconds = 0;
    /// Whether the user was active at the last poll.
    bool isActive = false;
    /// When the user was away, oldest first; not set if never.
    std::optional<std::vector<ActivityIdle>> idle = std::nullopt;

    bool operator==(const ActivitySession&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using S = ActivitySession;
        return std::tuple { required("id", &S::id),
            required("applicationName", &S::applicationName),
            required("bundleIdentifier", &S::bundleIdentifier),
            optional("windowTitle", &S::windowTitle), required("startedAt", &S::startedAt),
            optional("endedAt", &S::endedAt), required("durationSeconds", &S::durationSeconds),
            required("isActive", &S::isActive), optional("idle", &S::idle) };
    }
};

} // namespace pobblewig
