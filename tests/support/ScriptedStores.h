#pragma once

#include "activity/RuleStore.h"
#include "conversation/proposals/ProposalManager.h"
#include "features/Stores.h"
#include "foundation/Moment.h"
#include "memory/MemoryTiers.h"
#include "memory/history/ChatHistoryStore.h"
#include "memory/history/UsageCounter.h"
#include "settings/SettingsStore.h"
#include "support/FakeKeychain.h"

namespace pobblewig {

/// Every store, in memory unless there is a directory, at a time that the test sets.
struct ScriptedStores {
    static constexpr TimePoint morning { std::chrono::seconds(1772352900) };

    explicit ScriptedStores(const std::optional<DataDirectory>& directory = std::nullopt)
        : settings(directory, keychain)
        , memory(directory, moment.calendar, PlatformWording::linuxDesktop)
        , history(directory)
        , usage(directory)
        , rules(directory)
        , proposals(directory, moment.clock)
    {
    }
    Q_DISABLE_COPY_MOVE(ScriptedStores)
    ~ScriptedStores() = default;

    void setMemoryEnabled(bool isEnabled)
    {
        settings.update([&](AppSettings& changed) { changed.memoryEnabled = isEnabled; });
    }

    TimePoint time = morning;
    Moment moment { [this] { return time; }, [] { return Calendar(); } };
    FakeKeychain keychain;
    SettingsStore settings;
    MemoryTiers memory;
    ChatHistoryStore history;
    UsageCounter usage;
    RuleStore rules;
    ProposalManager proposals;
    Stores all { settings, memory, history, usage, rules, proposals };
};

} // namespace pobblewig
