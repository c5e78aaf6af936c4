#pragma once

#include "memory/MemoryTiers.h"
#include "memory/recall/MemoryRetrievalService.h"

#include <functional>

namespace pobblewig {

/// Reads the stores of this machine.
class NativeMemoryRetrieval : public MemoryRetrievalService {
public:
    /// `memory` must outlive the retrieval.
    NativeMemoryRetrieval(const MemoryTiers& memory, std::function<QString()> situationProvider);

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

    const MemoryTiers& m_memory;
    std::function<QString()> m_situationProvider;
};

} // namespace pobblewig
