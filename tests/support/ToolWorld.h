#pragma once

#include "activity/RuleTools.h"
#include "folders/FolderTools.h"
#include "memory/recall/MemoryTools.h"
#include "memory/recall/NativeMemoryRetrieval.h"

namespace pobblewig {

/// The features' tools over empty stores. No folder is shared.
struct ToolWorld {
    MemoryTiers memory { std::nullopt, [] { return Calendar(); } };
    RuleStore rules { std::nullopt };
    NativeMemoryRetrieval retrieval { { memory.reference, memory.observations, memory.summaries,
                                          memory.sessions, memory.notes },
        []() -> Task<QString> { co_return QStringLiteral("Current app: Kate"); } };

    std::vector<Tool> everyTool(Clock clock = systemNow)
    {
        auto tools = MemoryTools::tools({ retrieval, memory, std::move(clock) });
        std::ranges::move(RuleTools::tools(rules), std::back_inserter(tools));
        std::ranges::move(FolderTools::tools(nullptr), std::back_inserter(tools));
        return tools;
    }
};

} // namespace pobblewig
