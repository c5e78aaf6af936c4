#pragma once

#include "foundation/DataDirectory.h"
#include "memory/ChatHistoryStore.h"
#include "memory/LibrarianService.h"

#include <functional>

namespace pobblewig {

struct RolloverOutcome {
    bool rolledOver = false;
    bool dailySummaryCreated = false;

    bool operator==(const RolloverOutcome&) const = default;
};

/// Ends a day: the active session becomes a daily summary, the conversation goes into an archive,
/// the next session begins, and seven days become a week.
///
/// A process that dies between two steps loses no message and repeats no summary: the next rollover
/// goes on where it stopped. Lives on the main thread, as long as the process.
class SessionRolloverService {
public:
    struct Dependencies {
        MemoryTiers& memory;
        ChatHistoryStore& history;
        LibrarianService& librarian;
        /// Without it no archive is written.
        std::optional<DataDirectory> chatArchiveDirectory;
        std::function<QString(TimePoint from, TimePoint to)> activitySummaryProvider;
    };

    explicit SessionRolloverService(Dependencies dependencies);

    std::optional<TimePoint> lastRolloverAt() const { return m_lastRolloverAt; }

    /// One at a time: while one is under way another does nothing.
    Task<RolloverOutcome> rolloverIfNeeded(TimePoint now, Calendar calendar);

    /// Whatever the day and the silence.
    Task<RolloverOutcome> forceRollover(TimePoint now, Calendar calendar);

    /// To be called at the start, before the first message: finishes what a crash has interrupted
    /// after the day was closed.
    void finishInterrupted(TimePoint now, const Calendar& calendar);

private:
    Task<RolloverOutcome> performRollover(TimePoint now, Calendar calendar);

    Dependencies m;
    std::optional<TimePoint> m_lastRolloverAt;
    bool m_isUnderWay = false;
};

} // namespace pobblewig
