#pragma once

#include "memory/DailySessionStore.h"
#include "memory/MemoryStore.h"
#include "memory/ObservationStore.h"
#include "memory/PeriodSummaryStore.h"
#include "memory/ReferenceMemoryStore.h"

#include <algorithm>

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

    /// The same for each of them at once; the task ends when they are on disk.
    Task<> record(std::vector<DatedObservation> batch)
    {
        if (batch.empty())
            co_return;
        std::vector<QUuid> ids(batch.size());
        std::ranges::transform(batch, ids.begin(), &DatedObservation::id);
        const auto added = observations.addAll(std::move(batch));
        co_await sessions.linkObservations(std::move(ids));
        co_await added;
    }

    /// Tries again to read the files that could not be read at the start.
    void readAgain(TimePoint now)
    {
        notes.readAgain(now);
        sessions.readAgain();
        observations.readAgain();
        summaries.readAgain();
        reference.readAgain();
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
