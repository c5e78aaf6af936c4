#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

enum class InterventionOutcome { accepted, dismissed, contextCorrected, snoozed, ignored };

/// A message that the companion began, and what the user said to it.
struct InterventionRecord {
    QUuid id;
    /// The rule that fired, if it was one.
    std::optional<QUuid> ruleID = std::nullopt;
    /// "application", "category", "canvas_deadline", "classroom_deadline" or "daily_briefing".
    QString triggerType;
    TimePoint firedAt;
    QString message;
    std::optional<QString> userResponse = std::nullopt;
    std::optional<InterventionOutcome> outcome = std::nullopt;
    /// When the user wants to hear of it again.
    std::optional<TimePoint> suppressUntil = std::nullopt;
    /// Of a deadline: what stands for it and its day among the reminded keys, and when it was due.
    std::optional<QString> reminderKey = std::nullopt;
    std::optional<TimePoint> dueAt = std::nullopt;

    bool operator==(const InterventionRecord&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using R = InterventionRecord;
        return std::tuple { required("id", &R::id), optional("ruleID", &R::ruleID),
            required("triggerType", &R::triggerType), required("firedAt", &R::firedAt),
            required("message", &R::message), optional("userResponse", &R::userResponse),
            optional("outcome", &R::outcome), optional("suppressUntil", &R::suppressUntil),
            optional("reminderKey", &R::reminderKey), optional("dueAt", &R::dueAt) };
    }
};

/// The contents of "interventions.json".
struct InterventionsData {
    /// Newest first.
    std::vector<InterventionRecord> records;
    /// By the rule's id.
    std::map<QUuid, TimePoint> lastFiredAt;
    std::set<QString> firedSessionKeys;

    bool operator==(const InterventionsData&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using D = InterventionsData;
        return std::tuple { defaulted("records", &D::records),
            defaulted("lastFiredAt", &D::lastFiredAt),
            defaulted("firedSessionKeys", &D::firedSessionKeys) };
    }
};

} // namespace pobblewig
