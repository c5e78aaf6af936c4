#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

/// In the order in which notes are shown, to both the model and the user.
enum class MemoryCategory {
    preferences,
    currentContext,
    goals,
    aspirations,
    history,
    misc,
    journeys
};

/// For example "Current Context".
QString displayName(MemoryCategory category);

enum class MemoryKind {
    fact,
    preference,
    goal,
    event,
    pattern,
    inference,
    correction,
    strategy,
    unresolvedIntent
};

/// The origin of a note.
enum class MemorySource {
    explicitUser,
    systemObserved,
    assistantConfirmed,
    librarianSynthesis,
    meetingNotes
};

enum class MemoryStatus { active, archived, superseded };

/// A short statement about the user.
struct MemoryNote {
    QUuid id;
    QString text;
    MemoryCategory category = MemoryCategory::misc;
    MemoryKind kind = MemoryKind::fact;
    MemorySource source = MemorySource::librarianSynthesis;
    /// Between 0 and 1.
    std::optional<double> confidence = std::nullopt;
    /// The epoch stands for a date that is missing in the file; the store fills it in when loading.
    TimePoint createdAt;
    TimePoint lastObservedAt;
    int observationCount = 1;
    std::vector<QUuid> supersedes;
    MemoryStatus status = MemoryStatus::active;
    bool isTemporary = false;
    /// When a temporary note expires. Without a value the note stays.
    std::optional<TimePoint> expiresAt = std::nullopt;

    bool operator==(const MemoryNote&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("id", &MemoryNote::id), required("text", &MemoryNote::text),
            defaulted("category", &MemoryNote::category), defaulted("kind", &MemoryNote::kind),
            defaulted("source", &MemoryNote::source),
            optional("confidence", &MemoryNote::confidence),
            defaulted("createdAt", &MemoryNote::createdAt),
            defaulted("lastObservedAt", &MemoryNote::lastObservedAt),
            defaulted("observationCount", &MemoryNote::observationCount),
            defaulted("supersedes", &MemoryNote::supersedes),
            defaulted("status", &MemoryNote::status),
            defaulted("isTemporary", &MemoryNote::isTemporary),
            optional("expiresAt", &MemoryNote::expiresAt) };
    }
};

/// Whether a temporary note's time is over.
bool isExpired(const MemoryNote& note, TimePoint now);

/// A pattern that several notes of different days show.
struct PatternNote {
    QUuid id;
    QString text;
    /// The sum of how often its evidence was observed.
    int evidenceCount = 0;
    TimePoint firstObservedAt;
    TimePoint lastObservedAt;
    std::vector<QUuid> sourceNoteIDs;
    double confidence = 0;

    bool operator==(const PatternNote&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("id", &PatternNote::id), required("text", &PatternNote::text),
            required("evidenceCount", &PatternNote::evidenceCount),
            required("firstObservedAt", &PatternNote::firstObservedAt),
            required("lastObservedAt", &PatternNote::lastObservedAt),
            required("sourceNoteIDs", &PatternNote::sourceNoteIDs),
            required("confidence", &PatternNote::confidence) };
    }
};

struct NewPattern {
    QString text;
    std::vector<QUuid> evidenceNoteIDs;
    double confidence = 0;
};

} // namespace pobblewig
