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

/// Opens the data directory and every store in it, the files of earlier versions included.
class StoreRoom {
public:
    struct Parts {
        /// Without one the stores work in memory only.
        std::optional<DataDirectory> directory;
        const Moment& moment;
        KeychainHelper& keychain;
        QString defaultCanvasBaseURL = {};
        PlatformWording wording;
    };

    explicit StoreRoom(Parts parts);

    Stores stores();

    /// Nothing where there is no directory at all: then the stores work in memory only.
    const std::optional<DataDirectory>& directory() const { return m_directory; }

    /// Why nothing can be kept on the disk at present.
    std::optional<QString> storageProblem() const;

    /// Takes over a conversation from before there were sessions, and logs what the migration has
    /// done. Called once, before anything else changes a store.
    void finishMigration();

private:
    const Moment& m_moment;
    std::shared_ptr<const StorageHealth> m_health;
    /// Why the directory cannot be written to, found at the start.
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
