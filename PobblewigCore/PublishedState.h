#pragma once

#include "foundation/KeychainHelper.h"
#include "memory/MemorySnapshot.h"
#include "memory/UsageCounter.h"
#include "settings/AppSettings.h"

#include <optional>

namespace pobblewig {

/// What the user interface reads: a copy of the services' state, replaced as a whole.
struct PublishedState {
    AppSettings settings;
    bool isPaused = false;
    UsageCounter::Snapshot usage;
    MemorySnapshot memory;
    /// The main model in words, or that there is none.
    QString modelLabel;
    /// Why nothing can be kept on the disk at present.
    std::optional<QString> storageProblem;
    KeychainHelper::State keyring = KeychainHelper::State::unknown;

    bool operator==(const PublishedState&) const = default;
};

} // namespace pobblewig
