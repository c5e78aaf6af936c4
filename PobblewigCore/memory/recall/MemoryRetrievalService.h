#pragma once

#include "foundation/Task.h"
#include "memory/DailySession.h"
#include "memory/MemoryNote.h"
#include "memory/MemoryTableOfContents.h"
#include "memory/ObservationStore.h"
#include "memory/PeriodSummary.h"
#include "memory/ReferenceSection.h"

#include <tl/expected.hpp>

#include <optional>
#include <vector>

namespace pobblewig {

struct MemoryRetrievalError {
    enum class Kind { sectionNotFound, periodNotFound, noActiveSession };

    static MemoryRetrievalError sectionNotFound(QString path);
    static MemoryRetrievalError periodNotFound(const QUuid& id);
    static MemoryRetrievalError noActiveSession();

    Kind kind = Kind::noActiveSession;
    /// The path or id that was not found.
    QString subject;

    QString description() const;
};

/// Read access to all of memory, in its current state at each call.
class MemoryRetrievalService {
public:
    template <typename Value>
    using Expected = tl::expected<Value, MemoryRetrievalError>;

    virtual ~MemoryRetrievalService() = default;

    virtual Task<Expected<MemoryTableOfContents>> getTableOfContents() = 0;

    /// Fails for an unknown or unconfirmed section.
    virtual Task<Expected<ReferenceSection>> readReferenceSection(QString path) = 0;

    /// Without paths, searches all sections.
    virtual Task<Expected<std::vector<ReferenceSearchResult>>> searchReference(
        QString query, std::vector<QString> paths) = 0;

    /// Days and weeks that overlap the window, oldest first.
    virtual Task<Expected<std::vector<PeriodSummary>>> listPeriodSummaries(
        std::optional<TimePoint> from, std::optional<TimePoint> to) = 0;
    virtual Task<Expected<ExpandedPeriod>> expandPeriod(QUuid id) = 0;
    virtual Task<Expected<std::vector<DatedObservation>>> searchObservations(
        ObservationStore::Query query) = 0;
    virtual Task<Expected<DailySession>> getDailySession() = 0;

    /// The lines of the current situation.
    virtual Task<Expected<QString>> getActiveContext() = 0;

    /// Active goals and aspirations, newest first.
    virtual Task<Expected<std::vector<MemoryNote>>> listActiveGoals() = 0;
};

} // namespace pobblewig
