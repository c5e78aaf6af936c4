#pragma once

#include "memory/MemoryTiers.h"
#include "memory/recall/MemoryRetrievalService.h"
#include "tools/Tool.h"

/// The tools by which a model reads from memory and adds to it.
namespace pobblewig::MemoryTools {

/// All of them outlive the tools.
struct Dependencies {
    MemoryRetrievalService& retrieval;
    MemoryTiers& memory;
    Clock clock = systemNow;
};

/// Those of `RetrievalTools` first.
std::vector<Tool> tools(const Dependencies& dependencies);

} // namespace pobblewig::MemoryTools
