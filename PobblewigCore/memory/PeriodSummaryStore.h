#pragma once

#include "foundation/StoreFile.h"
#include "memory/PeriodSummary.h"

#include <optional>
#include <vector>

namespace pobblewig {

/// The summaries of days and weeks in the order in which they were written, kept in
/// "summaries.json". They are never edited.
///
/// Lives on the main thread. Without a directory it works in memory only.
class PeriodSummaryStore {
public:
    explicit PeriodSummaryStore(const std::optional<DataDirectory>& directory);

    /// Grows with every change.
    int revision() const { return m_file.revision(); }

    const std::vector<PeriodSummary>& all() const { return m_summaries; }
    std::optional<PeriodSummary> withID(const QUuid& id) const;

    /// The summaries that overlap the window, oldest first. Without a type, both kinds.
    std::vector<PeriodSummary> list(std::optional<PeriodType> type, std::optional<TimePoint> from,
        std::optional<TimePoint> to) const;

    /// The summary that began last, but not after `now`: a wrong clock may have dated one into the
    /// future.
    std::optional<PeriodSummary> latestDaily(TimePoint now) const;
    std::optional<PeriodSummary> latestWeekly(TimePoint now) const;

    /// The days that are not part of a weekly summary yet, oldest first.
    std::vector<PeriodSummary> unsummarizedDailies() const;

    /// A week is seven summarized days, regardless of the calendar.
    bool needsWeeklyRollup() const;

    PeriodSummary add(PeriodSummary summary);
    void deleteAll();

    /// Tries again to read a file that could not be read at the start.
    void readAgain();

private:
    std::optional<PeriodSummary> latest(PeriodType type, TimePoint now) const;

    StoreFile m_file;
    std::vector<PeriodSummary> m_summaries;
};

} // namespace pobblewig
