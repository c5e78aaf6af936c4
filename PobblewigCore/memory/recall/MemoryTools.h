#pragma once

#include "memory/MemoryTiers.h"
#include "memory/recall/MemoryRetrievalService.h"
#include "tools/Tool.h"

/// The tools by which a model reads from memory and adds to it.
namespace pobblewig::MemoryTools {

/// Everything here must outlive the tools.
struct Dependencies {
    MemoryRetrievalService& retrieval;
    MemoryTiers& memory;
    Clock clock = systemNow;
};

/// Begins with the tools of `RetrievalTools`.
std::vector<Tool> tools(const Dependencies& dependencies);

} // namespace pobblewig::MemoryTools
