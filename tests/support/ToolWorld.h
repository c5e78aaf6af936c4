#pragma once

#include "activity/RuleTools.h"
#include "conversation/proposals/ActionTools.h"
#include "folders/FolderTools.h"
#include "memory/recall/MemoryTools.h"
#include "memory/recall/NativeMemoryRetrieval.h"
#include "support/ScriptedStores.h"

namespace pobblewig {

/// The features' tools over empty stores. No folder is shared.
struct ToolWorld : ScriptedStores {
    NativeMemoryRetrieval retrieval { memory, [] { return QStringLiteral("Current app: Kate"); } };

    std::vector<Tool> everyTool(Clock clock = systemNow)
    {
        auto tools = MemoryTools::tools({ retrieval, memory, std::move(clock) });
        std::ranges::move(RuleTools::tools(rules), std::back_inserter(tools));
        std::ranges::move(FolderTools::tools(nullptr), std::back_inserter(tools));
        std::ranges::move(
            ActionTools::tools(ActionTools::Calendars::available), std::back_inserter(tools));
        return tools;
    }
};

} // namespace pobblewig
