#pragma once

#include "foundation/StoreFile.h"
#include "memory/DatedObservation.h"
#include "memory/SearchTexts.h"

#include <functional>
#include <optional>
#include <vector>

namespace pobblewig {

/// All observations in the order in which they were recorded, kept in "observations.json".
///
/// Lives on the main thread. Without a directory it works in memory only.
class ObservationStore {
public:
    static constexpr int archivedRetentionDays = 30;
    /// In characters, of each text of an observation.
    static constexpr qsizetype longestText = 2000;
    static constexpr size_t mostTexts = 100;

    struct Query {
        /// Every word must occur in the observation, also inside a longer word.
        QString text;
        /// Both bounds are included.
        std::optional<TimePoint> from = std::nullopt;
        std::optional<TimePoint> to = std::nullopt;
        /// One matching tag is enough, ignoring case. An empty list matches everything.
        std::vector<QString> tags;
        /// A value below 1 counts as 1.
        int limit = 20;
    };

    explicit ObservationStore(const std::optional<DataDirectory>& directory);

    /// Grows with every change.
    int revision() const { return m_file.revision(); }

    int count() const { return int(m_observations.size()); }

    /// The observations in the window, bounds included, oldest first.
    std::vector<DatedObservation> observations(
        std::optional<TimePoint> from, std::optional<TimePoint> to) const;

    /// Oldest first; unknown ids are ignored.
    std::vector<DatedObservation> withIDs(const std::vector<QUuid>& ids) const;

    /// Newest first. Observations of the same instant keep the order in which they were recorded.
    std::vector<DatedObservation> search(const Query& query) const;

    /// Its texts are written by models: each is put on one line and cut, and so are its lists.
    DatedObservation add(DatedObservation observation);

    /// Adds them at once; the task ends when they are on disk.
    Task<> addAll(std::vector<DatedObservation> observations);
    void remove(const QUuid& id);
    void remove(const std::vector<QUuid>& ids);
    void markArchived(const std::vector<QUuid>& ids, const QUuid& into);

    /// Removes observations that a summary absorbed and that happened more than `olderThan` days
    /// ago. Returns their number.
    int pruneArchived(int olderThan, TimePoint now);
    void deleteAll();

    /// Tries again to read a file that could not be read at the start.
    void readAgain();

private:
    int removeIf(const std::function<bool(const DatedObservation&)>& isUnwanted);

    StoreFile m_file;
    std::vector<DatedObservation> m_observations;
    mutable SearchTexts m_searchTexts;
};

} // namespace pobblewig
