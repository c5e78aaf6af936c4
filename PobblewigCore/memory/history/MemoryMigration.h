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

    /// What happened, in a line for the log.
    QString migrationSummary() const;
};

/// Takes the files of earlier versions into the present ones. Nothing here stops the launch.
namespace MemoryMigration {

constexpr int currentMemorySchemaVersion = 2;
constexpr int backupRetentionDays = 30;

/// To be called before the stores load. Copies a "memory.json" of an earlier version to
/// "memory.v1-backup-2026-03-01T08-15-00Z.json", once for each content, and leaves the reading
/// of it to the store. Sweeps the backups whose time is over.
MigrationReport run(const DataDirectory& directory, TimePoint now);

/// Removes backups made more than `olderThan` days ago, by the time in their names if they have
/// one, else by their date.
void sweepBackupLitter(
    const DataDirectory& directory, TimePoint now, int olderThan = backupRetentionDays);

/// Whether a file of that name is a copy set aside by a migration, a clean-up of corrupt files
/// or an installed pull.
bool isBackupLitter(const QString& name);

/// A conversation from before there were sessions becomes a finished one, and a session is
/// opened. Whether it did; with any session there it does nothing.
bool adoptLegacyChatIfNeeded(DailySessionStore& sessions, ChatHistoryStore& history, TimePoint now,
    const Calendar& calendar);

} // namespace MemoryMigration

} // namespace pobblewig
