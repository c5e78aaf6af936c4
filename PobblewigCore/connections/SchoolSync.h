#pragma once

#include "connections/SchoolItem.h"
#include "connections/SchoolSyncState.h"
#include "connections/SchoolTitles.h"
#include "foundation/StoreFile.h"
#include "memory/ReferenceMemoryStore.h"

namespace pobblewig {

/// What every sync with a school service does with what it has read: it goes into the reference
/// memory, a course at a time, and the outcome into the service's file.
///
/// Lives on the main thread. Without a directory it works in memory only.
class SchoolSync {
public:
    struct Parts {
        SchoolSource source;
        ReferenceMemoryStore& reference;
        const std::optional<DataDirectory>& directory;
        QString fileName;
        /// The kind of data in log messages.
        QString contents;
    };

    explicit SchoolSync(const Parts& parts);

    const SchoolSyncState& state() const { return m_state; }

    /// Grows with every change of the state.
    int revision() const { return m_file.revision(); }

    /// Whether the interval has passed, or the rest that the service asked for.
    bool isDue(TimePoint now, int intervalMinutes) const;

    /// Adds or replaces the items under titles of their own. One whose content is the same stays as
    /// it is. Since the file is written as a whole, it waits for a few hundred.
    Task<> take(std::vector<SchoolItem> items, TimePoint now);

    /// Writes those that still wait. The task ends when all are on disk.
    Task<> finishTaking(TimePoint now);

    struct Reading {
        int courseCount = 0;
        int deadlineCount = 0;
        /// The courses whose assignments were read.
        std::set<QString> readCourses = {};
        /// The assignments that the service still has.
        std::set<QString> seenWork = {};
    };

    /// Removes the deadlines that the service no longer has, of the courses that were read and of
    /// others 30 days after they were due. For syncs in which nothing failed.
    Task<> sweep(Reading reading, TimePoint now);

    void succeed(const Reading& reading, TimePoint now);
    void fail(const QString& error, std::optional<TimePoint> retryAt, TimePoint now);

    /// Reserves a reminder before it is composed, so that no other poll sends it. Returns whether
    /// it was free.
    bool reserve(const QString& reminderKey);
    void release(const QString& reminderKey);

    /// Tries again to read a file that could not be read at the start.
    void readAgain();

private:
    SchoolTitles& titles();

    SchoolSource m_source;
    ReferenceMemoryStore& m_reference;
    StoreFile m_file;
    SchoolSyncState m_state;
    std::vector<SchoolItem> m_waiting;
    /// Of the reference memory with the revision beside it.
    std::optional<SchoolTitles> m_titles;
    int m_knownRevision = 0;
};

} // namespace pobblewig
