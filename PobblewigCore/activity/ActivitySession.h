#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

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
            required("isActive", &S::isActive) };
    }
};

} // namespace pobblewig
