#pragma once

#include "memory/DailySessionStore.h"
#include "memory/MemoryStore.h"
#include "memory/PeriodSummaryStore.h"
#include "memory/ReferenceMemoryStore.h"
#include "memory/recall/MemoryRetrievalService.h"

#include <functional>

namespace pobblewig {

/// Reads the stores of this machine.
class NativeMemoryRetrieval : public MemoryRetrievalService {
public:
    /// All of them outlive the retrieval.
    struct Stores {
        const ReferenceMemoryStore& reference;
        const ObservationStore& observations;
        const PeriodSummaryStore& summaries;
        const DailySessionStore& sessions;
        const MemoryStore& memory;
    };

    NativeMemoryRetrieval(Stores stores, std::function<Task<QString>()> situationProvider);

    Task<Expected<MemoryTableOfContents>> getTableOfContents() override;
    Task<Expected<ReferenceSection>> readReferenceSection(QString path) override;
    Task<Expected<std::vector<ReferenceSearchResult>>> searchReference(
        QString query, std::vector<QString> paths) override;
    Task<Expected<std::vector<PeriodSummary>>> listPeriodSummaries(
        std::optional<TimePoint> from, std::optional<TimePoint> to) override;
    Task<Expected<ExpandedPeriod>> expandPeriod(QUuid id) override;
    Task<Expected<std::vector<DatedObservation>>> searchObservations(
        ObservationStore::Query query) override;
    Task<Expected<DailySession>> getDailySession() override;
    Task<Expected<QString>> getActiveContext() override;
    Task<Expected<std::vector<MemoryNote>>> listActiveGoals() override;

private:
    ExpandedPeriod expanded(PeriodSummary summary) const;

    Stores m_stores;
    std::function<Task<QString>()> m_situationProvider;
};

} // namespace pobblewig
