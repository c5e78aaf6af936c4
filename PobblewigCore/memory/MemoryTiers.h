#pragma once

#include "memory/DailySessionStore.h"
#include "memory/MemoryStore.h"
#include "memory/ObservationStore.h"
#include "memory/PeriodSummaryStore.h"
#include "memory/ReferenceMemoryStore.h"

namespace pobblewig {

/// The tiers of memory, each a store with its own file.
struct MemoryTiers {
    MemoryTiers(const std::optional<DataDirectory>& directory,
        const std::function<Calendar()>& calendar, const PlatformWording& wording)
        : notes(directory, calendar)
        , sessions(directory)
        , observations(directory)
        , summaries(directory)
        , reference(directory, wording)
    {
    }
    Q_DISABLE_COPY_MOVE(MemoryTiers)

    /// Adds an observation and links it to the active session.
    DatedObservation record(DatedObservation observation)
    {
        auto recorded = observations.add(std::move(observation));
        sessions.linkObservation(recorded.id);
        return recorded;
    }

    /// Grows with every change of any tier.
    int revision() const
    {
        return notes.revision() + sessions.revision() + observations.revision()
            + summaries.revision() + reference.revision();
    }

    MemoryStore notes;
    DailySessionStore sessions;
    ObservationStore observations;
    PeriodSummaryStore summaries;
    ReferenceMemoryStore reference;
};

} // namespace pobblewig
