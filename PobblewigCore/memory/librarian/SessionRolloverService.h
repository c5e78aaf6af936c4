#pragma once

#include "foundation/DataDirectory.h"
#include "memory/history/ChatHistoryStore.h"
#include "memory/librarian/LibrarianService.h"

#include <functional>

namespace pobblewig {

struct RolloverOutcome {
    bool rolledOver = false;
    /// False if nothing happened that day.
    bool dailySummaryCreated = false;

    bool operator==(const RolloverOutcome&) const = default;
};

/// Ends a day: turns the active session into a daily summary, archives the conversation, opens the
/// next session, and turns seven days into a week.
///
/// Only one rollover runs at a time; a second call does nothing. A session ends when its closing
/// begins, however long the librarian takes: what comes meanwhile belongs to the next session. If
/// the process dies between two steps, no message is lost and no summary is repeated. Lives on the
/// main thread, as long as the process.
class SessionRolloverService {
public:
    struct Dependencies {
        const Moment& moment;
        MemoryTiers& memory;
        ChatHistoryStore& history;
        LibrarianService& librarian;
        /// Without a directory no archive is written.
        std::optional<DataDirectory> chatArchiveDirectory;
        /// Describes what the user did on the computer.
        std::function<QString(TimePoint from, TimePoint to)> activitySummaryProvider;
        std::function<ConversationKeeping()> keeping = [] { return ConversationKeeping::year; };
    };

    /// A session and its messages when its closing began.
    struct Ending {
        QUuid sessionID;
        TimePoint at;
        /// What the librarian reads.
        std::vector<ChatMessage> window;
        std::vector<ChatMessage> transcript;
    };

    explicit SessionRolloverService(Dependencies dependencies);

    bool isUnderWay() const { return m_isUnderWay; }
    std::optional<TimePoint> lastRolloverAt() const { return m_lastRolloverAt; }

    /// The current state of the active session, to be closed later, or nothing if there is none.
    std::optional<Ending> ending() const;

    Task<RolloverOutcome> rolloverIfNeeded() { return rolloverIfNeeded(ending()); }

    /// Later messages move to the next session. Does nothing if the ending's session is no longer
    /// active.
    Task<RolloverOutcome> rolloverIfNeeded(std::optional<Ending> ending);

    /// Rolls over regardless of the day and of inactivity.
    Task<RolloverOutcome> forceRollover() { return performRollover(ending()); }
    Task<RolloverOutcome> forceRollover(std::optional<Ending> ending)
    {
        return performRollover(std::move(ending));
    }

    /// Call this at the start, before there is a new session or message. Finishes a rollover that a
    /// crash interrupted after its summary was written.
    void finishInterrupted();

    /// Turns days into a week if there are enough. Call this at the start as well, for the same
    /// reason.
    Task<> rollUpWeek();

    /// Removes the archives that the user wants to keep no longer.
    void sweepArchives();

private:
    Task<RolloverOutcome> performRollover(std::optional<Ending> ending);
    Task<RolloverOutcome> close(DailySession session, Ending ending);
    Task<std::optional<PeriodSummary>> closeDay(DailySession session, Ending ending);
    void finish(const DailySession& session, const PeriodSummary& summary);
    void beginNext(
        const DailySession& ended, const std::vector<ChatMessage>& messages, TimePoint begin);
    bool archive(const DailySession& session, const std::vector<ChatMessage>& messages);

    /// What was observed in the session, or linked to it although it happened before, and is not
    /// part of another day.
    std::vector<DatedObservation> observationsOf(const DailySession& session, TimePoint to) const;
    /// The time of the first message or observation since then, or the present.
    TimePoint beginningAfter(const Ending& ending) const;
    bool isActive(const QUuid& sessionID) const;

    Dependencies m;
    std::optional<TimePoint> m_lastRolloverAt;
    bool m_isUnderWay = false;
};

} // namespace pobblewig
