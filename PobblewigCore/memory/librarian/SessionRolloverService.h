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

/// Ends a day: the active session becomes a daily summary, the conversation goes into an archive,
/// the next session begins, and seven days become a week.
///
/// One rollover at a time: while one is under way another does nothing. What is said meanwhile
/// belongs to the next session. A process that dies between two steps loses no message and repeats
/// no summary. Lives on the main thread, as long as the process.
class SessionRolloverService {
public:
    struct Dependencies {
        MemoryTiers& memory;
        ChatHistoryStore& history;
        LibrarianService& librarian;
        /// Without it no archive is written.
        std::optional<DataDirectory> chatArchiveDirectory;
        /// What the user did on the computer, in words.
        std::function<QString(TimePoint from, TimePoint to)> activitySummaryProvider;
    };

    /// A session and what was said in it.
    struct Ending {
        QUuid sessionID;
        std::vector<ChatMessage> window;
    };

    explicit SessionRolloverService(Dependencies dependencies);

    bool isUnderWay() const { return m_isUnderWay; }
    std::optional<TimePoint> lastRolloverAt() const { return m_lastRolloverAt; }

    /// The active session as it is now, to be closed later; nothing without one.
    std::optional<Ending> ending() const;

    Task<RolloverOutcome> rolloverIfNeeded(TimePoint now, Calendar calendar);

    /// What was said since goes on in the next session; nothing is done if that of the ending is no
    /// longer the active one.
    Task<RolloverOutcome> rolloverIfNeeded(
        TimePoint now, Calendar calendar, std::optional<Ending> ending);

    /// Whatever the day and the silence.
    Task<RolloverOutcome> forceRollover(TimePoint now, Calendar calendar);
    Task<RolloverOutcome> forceRollover(
        TimePoint now, Calendar calendar, std::optional<Ending> ending);

    /// To be called at the start, before there is a new session or message: finishes a rollover
    /// that a crash has cut off after its summary was written.
    void finishInterrupted(TimePoint now, const Calendar& calendar);

    /// Makes a week of the days, if there are enough. To be called at the start as well, for the
    /// same reason.
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
