#pragma once

namespace pobblewig {

class ChatHistoryStore;
class ProposalManager;
class RuleStore;
class SettingsStore;
class UsageCounter;
struct MemoryTiers;

/// Every store of the program. Code that uses one includes its header.
struct Stores {
    SettingsStore& settings;
    MemoryTiers& memory;
    ChatHistoryStore& history;
    UsageCounter& usage;
    RuleStore& rules;
    ProposalManager& proposals;
};

} // namespace pobblewig
