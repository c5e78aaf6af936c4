#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

/// How the latest sync with a school service went, and which deadlines were already spoken of.
struct SchoolSyncState {
    /// Of the latest attempt, successful or not.
    std::optional<TimePoint> lastSyncAt;
    /// "ok" after a success, "failed" after a failure.
    QString lastStatus = QStringLiteral("never synced");
    std::optional<QString> lastError;
    /// When a service that asked for a rest may be asked again.
    std::optional<TimePoint> retryAt;
    int courseCount = 0;
    int deadlineCount = 0;
    std::set<QString> remindedKeys;

    bool operator==(const SchoolSyncState&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using S = SchoolSyncState;
        return std::tuple { optional("lastSyncAt", &S::lastSyncAt),
            defaulted("lastStatus", &S::lastStatus), optional("lastError", &S::lastError),
            optional("retryAt", &S::retryAt), defaulted("courseCount", &S::courseCount),
            defaulted("deadlineCount", &S::deadlineCount),
            defaulted("remindedKeys", &S::remindedKeys) };
    }
};

} // namespace pobblewig
