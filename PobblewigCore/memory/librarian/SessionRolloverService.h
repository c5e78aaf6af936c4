#pragma once

#include "foundation/DataDirectory.h"
#include "memory/history/ChatHistoryStore.h"
#include "memory/librarian/LibrarianService.h"

#include <functional>

namespace pobblewig {

struct RolloverOutcome {
    bool rolledOver = false;
    bool dailySummaryCreated = false;

    bool operator==(const RolloverOutcome&) const = default;
};

/// Ends a day: turns the active session into a daily summary, archives the conversation, opens the
/// next session, and turns seven days into a week.
///
/// Only one rollover runs at a time; a second call does nothing. Messages written in the meantime
/// belong to the next session. If the process dies between two steps, no message is lost and no
/// summary is repeated. Lives on the main thread, as long as the process.
class SessionRolloverService {
public:
    struct Dependencies {
        MemoryTiers& memory;
        ChatHistoryStore& history;
        LibrarianService& librarian;
        /// Without a directory no archive is written.
        std::optional<DataDirectory> chatArchiveDirectory;
        /// Describes what the user did on the computer.
        std::function<QString(TimePoint from, TimePoint to)> activitySummaryProvider;
    };

    /// A session and its messages.
    struct Ending {
        QUuid sessionID;
        std::vector<ChatMessage> window;
    };

    explicit SessionRolloverService(Dependencies dependencies);

    bool isUnderWay() const { return m_isUnderWay; }
    std::optional<TimePoint> lastRolloverAt() const { return m_lastRolloverAt; }

    /// The current state of the active session, to be closed later, or nothing if there is none.
    std::optional<Ending> ending() const;

    Task<RolloverOutcome> rolloverIfNeeded(TimePoint now, Calendar calendar);

    /// Later messages move to the next session. Does nothing if the ending's session is no longer
    /// active.
    Task<RolloverOutcome> rolloverIfNeeded(
        TimePoint now, Calendar calendar, std::optional<Ending> ending);

    /// Rolls over regardless of the day and of inactivity.
    Task<RolloverOutcome> forceRollover(TimePoint now, Calendar calendar);
    Task<RolloverOutcome> forceRollover(
        TimePoint now, Calendar calendar, std::optional<Ending> ending);

    /// Call this at the start, before there is a new session or message. Finishes a rollover that a
    /// crash interrupted after its summary was written.
    void finishInterrupted(TimePoint now, const Calendar& calendar);

    /// Turns days into a week if there are enough. Call this at the start as well, for the same
    /// reason.
    Task<> rollUpWeek(TimePoint now);

private:
    Task<RolloverOutcome> performRollover(
        TimePoint now, Calendar calendar, std::optional<Ending> ending);
    Task<bool> closeDay(DailySession session, std::vector<ChatMessage> window, TimePoint now);
    void finish(const DailySession& session, const PeriodSummary& summary,
        const std::vector<ChatMessage>& window, TimePoint now, const Calendar& calendar);
    void beginNext(const DailySession& ended, const std::vector<ChatMessage>& window, TimePoint now,
        const Calendar& calendar);
    bool archive(const DailySession& session, const std::vector<ChatMessage>& window);
    bool isActive(const QUuid& sessionID) const;

    Dependencies m;
    std::optional<TimePoint> m_lastRolloverAt;
    bool m_isUnderWay = false;
};

} // namespace pobblewig
