#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/diagnostics/DataFiles.h"

namespace pobblewig {

/// Everything that the diagnostics show.
struct DiagnosticsSnapshot {
    DiagnosticsInfo info;
    /// Newest first.
    std::vector<RequestRecord> requests;
    std::vector<MemoryToolLogEntry> toolCalls;
    KeychainHelper::State keyring = KeychainHelper::State::unknown;
    StorageState storage;
    std::vector<DataFile> files;
};

namespace DiagnosticsReport {

/// A text that may be given to others. It holds names of models, tools and files, numbers and
/// times, and nothing that the user or a server has written.
QString text(const DiagnosticsSnapshot& snapshot);

/// The program and what it runs on, a line each.
QStringList versions();

} // namespace DiagnosticsReport

} // namespace pobblewig
