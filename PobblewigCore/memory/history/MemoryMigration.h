#pragma once

#include "foundation/Calendar.h"
#include "foundation/DataDirectory.h"

#include <optional>

namespace pobblewig {

class ChatHistoryStore;
class DailySessionStore;

struct MigrationReport {
    bool memoryBackedUp = false;
    std::optional<QString> memoryBackupPath = std::nullopt;
    std::optional<int> memoryMigratedFromVersion = std::nullopt;
    int notesPreserved = 0;
    int patternsPreserved = 0;
    bool legacyChatAdopted = false;

    /// One line for the log about what happened.
    QString migrationSummary() const;
};

/// Migrates the files of earlier versions. No failure here stops the launch.
namespace MemoryMigration {

constexpr int currentMemorySchemaVersion = 2;
constexpr int backupRetentionDays = 30;

/// Call this before the stores load. Copies a "memory.json" of an earlier version to
/// "memory.v1-backup-2026-03-01T08-15-00Z.json", once for each content; the store then reads the
/// original. Removes backups whose time is over.
MigrationReport run(const DataDirectory& directory, TimePoint now);

/// Removes backups made more than `olderThan` days ago, by the time in their name if there is one,
/// else by their file date.
void sweepBackupLitter(
    const DataDirectory& directory, TimePoint now, int olderThan = backupRetentionDays);

/// Whether a file of that name is a copy left by a migration, a clean-up of corrupt files or an
/// installed pull.
bool isBackupLitter(const QString& name);

/// Turns a conversation that predates sessions into a finished session and opens a new one. Returns
/// whether it did. Does nothing if any session exists.
bool adoptLegacyChatIfNeeded(DailySessionStore& sessions, ChatHistoryStore& history, TimePoint now,
    const Calendar& calendar);

} // namespace MemoryMigration

} // namespace pobblewig
