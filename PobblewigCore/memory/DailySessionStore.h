#pragma once

#include "foundation/Calendar.h"
#include "foundation/StoreFile.h"
#include "memory/DailySession.h"

#include <optional>
#include <vector>

namespace pobblewig {

/// The latest 90 sessions, newest first, kept in "sessions.json".
///
/// Lives on the main thread. Without a directory it works in memory only. The active session is the
/// newest without an end. Without one, changes to the active session have no effect.
class DailySessionStore {
public:
    static constexpr double defaultInactivityHours = 5;

    /// What is known at the end of a session.
    struct Closing {
        std::optional<QString> summary = std::nullopt;
        std::optional<QString> activitySummary = std::nullopt;
        std::optional<QUuid> dailySummaryID = std::nullopt;
    };

    explicit DailySessionStore(const std::optional<DataDirectory>& directory,
        double inactivityHours = defaultInactivityHours);

    /// Grows with every change.
    int revision() const { return m_file.revision(); }

    const std::vector<DailySession>& sessions() const { return m_sessions; }
    std::optional<DailySession> activeSession() const;

    /// The ended session that was opened last, whatever its clock said.
    std::optional<DailySession> previousSession() const;

    /// False while there is no active session.
    bool shouldRollOver(TimePoint now, const Calendar& calendar) const;

    /// The active session, however old, or a new one.
    DailySession ensureActiveSession(TimePoint now, const Calendar& calendar);
    void recordTurn(TimePoint now);
    void touch(TimePoint now);
    void linkObservation(const QUuid& id);

    /// Links them at once; the task ends when that is on disk.
    Task<> linkObservations(std::vector<QUuid> ids);
    void markExtracted(const QUuid& messageID);

    /// A session that a wrong clock began later than `now` begins at `now`, too.
    std::optional<DailySession> finalizeActiveSession(Closing closing, TimePoint now);

    /// Does not end the active session. The mark of what was extracted is carried over.
    DailySession startNewSession(
        TimePoint now, std::optional<QUuid> previousSessionID, const Calendar& calendar);

    /// Works only in an empty store, so that an import never mixes with real sessions.
    void adoptImportedSession(DailySession session);
    void deleteAll();

    /// Tries again to read a file that could not be read at the start. What was recorded in the
    /// meantime becomes part of the file's active session.
    void readAgain();

private:
    DailySession* active();

    StoreFile m_file;
    double m_inactivityHours;
    std::vector<DailySession> m_sessions;
};

} // namespace pobblewig
