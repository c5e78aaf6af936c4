#pragma once

#include "PobblewigDesktop/diagnostics/DiagnosticsReport.h"

namespace pobblewig {

/// Gathers what the pages of the diagnostics show.
class DiagnosticsDesk {
public:
    /// `coordinator` must outlive the desk. The directory is where it keeps its files.
    DiagnosticsDesk(AppCoordinator& coordinator, QDir directory)
        : m_coordinator(coordinator)
        , m_directory(std::move(directory))
    {
    }

    DiagnosticsInfo info() const { return m_coordinator.diagnostics(); }
    StorageState storage() const { return m_coordinator.state().of<StorageState>(); }
    KeychainHelper::State keyring() const { return m_coordinator.modelDesk().keyring(); }
    Task<std::vector<LaneState>> lanes() const { return m_coordinator.modelDesk().lanes(); }

    /// Newest first.
    std::vector<RequestRecord> requests() const { return m_coordinator.requests().latest(); }

    /// Oldest first.
    std::vector<MemoryToolLogEntry> toolCalls() const
    {
        return m_coordinator.toolExecutor().recentLog(int(MemoryToolExecutor::maxLogEntries));
    }

    const QDir& directory() const { return m_directory; }
    std::vector<DataFile> files() const { return DataFiles::in(m_directory); }

    DiagnosticsSnapshot snapshot() const
    {
        return { info(), requests(), toolCalls(), keyring(), storage(), files() };
    }

    Calendar calendar() const { return m_coordinator.activityDesk().calendar(); }

private:
    AppCoordinator& m_coordinator;
    QDir m_directory;
};

} // namespace pobblewig
