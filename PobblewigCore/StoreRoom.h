#pragma once

#include "activity/RuleStore.h"
#include "conversation/proposals/ProposalManager.h"
#include "features/Stores.h"
#include "foundation/Moment.h"
#include "memory/MemoryTiers.h"
#include "memory/history/ChatHistoryStore.h"
#include "memory/history/MemoryMigration.h"
#include "memory/history/UsageCounter.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

/// Opens the data directory and every store in it, including files of earlier versions.
class StoreRoom {
public:
    struct Parts {
        /// Without a directory the stores work in memory only.
        std::optional<DataDirectory> directory;
        const Moment& moment;
        KeychainHelper& keychain;
        QString defaultCanvasBaseURL = {};
        PlatformWording wording;
    };

    explicit StoreRoom(Parts parts);

    Stores stores();

    /// Not set if there is no directory; the stores then work in memory only.
    const std::optional<DataDirectory>& directory() const { return m_directory; }

    /// Why something cannot currently be saved to disk.
    std::optional<QString> storageProblem() const;

    /// The stores' files, as the user should know of them.
    const StorageHealth& health() const { return *m_health; }

    /// Tries again to read the files that could not be read. Returns whether any could.
    bool readAgain();

    /// Adopts a conversation that predates sessions, and logs the outcome of the migration. Called
    /// once, before anything else changes a store.
    void finishMigration();

private:
    const Moment& m_moment;
    std::shared_ptr<const StorageHealth> m_health;
    /// Why the directory is not writable, determined at the start.
    std::optional<QString> m_directoryProblem;
    std::optional<DataDirectory> m_directory;
    MigrationReport m_migrationReport;
    SettingsStore m_settings;
    MemoryTiers m_memory;
    ChatHistoryStore m_history;
    UsageCounter m_usage;
    RuleStore m_rules;
    ProposalManager m_proposals;
};

} // namespace pobblewig
