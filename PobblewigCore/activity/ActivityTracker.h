#pragma once

#include "activity/ActivitySession.h"
#include "activity/AppCategory.h"
#include "activity/FrontmostAppProviding.h"
#include "foundation/Calendar.h"
#include "foundation/StoreFile.h"

#include <map>
#include <optional>
#include <vector>

namespace pobblewig {

struct ActivityLimits {
    int maxSessions = 500;
    int retentionDays = 14;
    /// After this many seconds without input the user counts as away.
    double idleThreshold = 120;
};

/// Records which application was in front and for how long. Closed sessions are kept in
/// "activity.json"; the open one is in memory only and lost with the process.
///
/// Lives on the main thread. Without a directory it works in memory only.
class ActivityTracker {
public:
    ActivityTracker(FrontmostAppProviding& provider, const std::optional<DataDirectory>& directory,
        ActivityLimits limits = {});

    const std::optional<ActivitySession>& currentSession() const { return m_currentSession; }

    /// The closed sessions, newest first.
    const std::vector<ActivitySession>& history() const { return m_history; }

    /// Seconds in each category, in the open session and in the closed ones that started today.
    std::map<AppCategory, double> categoryDurations(TimePoint now, const Calendar& calendar) const;

    /// Reads which application is in front. Only a change of the application writes the file. A
    /// file that could not be read at the start is tried again.
    void poll(TimePoint now);

    /// Removes, in memory, sessions that are too many or too old.
    void prune(TimePoint now);

    /// Deletes everything, including the open session.
    void deleteHistory();

    /// Deletes what lies between the times. The open session is closed for it.
    void deleteBetween(TimePoint from, TimePoint to, TimePoint now);

private:
    void readAgain();
    void closeSession(TimePoint now);

    FrontmostAppProviding& m_provider;
    ActivityLimits m_limits;
    StoreFile m_file;
    std::optional<ActivitySession> m_currentSession;
    std::vector<ActivitySession> m_history;
};

} // namespace pobblewig
