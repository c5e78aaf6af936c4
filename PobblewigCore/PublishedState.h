#pragma once

#include "DiagnosticsInfo.h"
#include "activity/AccountabilityRule.h"
#include "activity/ActivitySession.h"
#include "conversation/proposals/RuleProposal.h"
#include "foundation/KeychainHelper.h"
#include "memory/MemorySnapshot.h"
#include "memory/history/UsageCounter.h"
#include "settings/AppSettings.h"

#include <optional>

namespace pobblewig {

/// What the user interface reads: a copy of the services' state, replaced as a whole.
struct PublishedState {
    AppSettings settings;
    bool isPaused = false;
    std::optional<ActivitySession> currentSession = std::nullopt;
    /// The latest 10, newest first.
    std::vector<ActivitySession> recentSessions;
    std::vector<AccountabilityRule> ruleList;
    /// Those that wait for the user's word, oldest first.
    std::vector<RuleProposal> pendingProposals;
    bool screenCaptureGranted = false;
    bool accessibilityGranted = false;
    /// A session of the conversation is being written down; the conversation goes on meanwhile.
    bool isClosingSession = false;
    UsageCounter::Snapshot usage;
    MemorySnapshot memory;
    /// The main model in words, or that there is none.
    QString modelLabel;
    /// Why nothing can be kept on the disk at present.
    std::optional<QString> storageProblem;
    KeychainHelper::State keyring = KeychainHelper::State::unknown;
    DiagnosticsInfo diagnostics;

    bool operator==(const PublishedState&) const = default;
};

} // namespace pobblewig
