#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

enum class ObservationSource {
    explicitUser,
    systemObserved,
    librarianSynthesis,
    intervention,
    migrated
};

/// Something that happened at a certain time, kept separate from the durable notes.
struct DatedObservation {
    QUuid id;
    TimePoint occurredAt;
    TimePoint recordedAt;
    /// One line.
    QString summary;
    /// What was actually seen or said.
    std::vector<QString> observedFacts;
    /// A conclusion, never shown as a fact.
    std::optional<QString> inference = std::nullopt;
    std::optional<QString> uncertainty = std::nullopt;
    ObservationSource source = ObservationSource::systemObserved;
    std::vector<QString> tags;
    std::vector<QUuid> relatedMemoryIDs;
    std::vector<QString> relatedReferencePaths;
    /// The daily summary that absorbed this observation.
    std::optional<QUuid> archivedIntoPeriodID = std::nullopt;

    bool operator==(const DatedObservation&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("id", &DatedObservation::id),
            required("occurredAt", &DatedObservation::occurredAt),
            required("recordedAt", &DatedObservation::recordedAt),
            required("summary", &DatedObservation::summary),
            required("observedFacts", &DatedObservation::observedFacts),
            optional("inference", &DatedObservation::inference),
            optional("uncertainty", &DatedObservation::uncertainty),
            required("source", &DatedObservation::source),
            required("tags", &DatedObservation::tags),
            required("relatedMemoryIDs", &DatedObservation::relatedMemoryIDs),
            required("relatedReferencePaths", &DatedObservation::relatedReferencePaths),
            optional("archivedIntoPeriodID", &DatedObservation::archivedIntoPeriodID) };
    }
};

} // namespace pobblewig
