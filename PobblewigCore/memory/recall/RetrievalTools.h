#pragma once

#include "memory/recall/MemoryRetrievalService.h"
#include "tools/Tool.h"

/// The tools by which a model reads from memory.
namespace pobblewig::RetrievalTools {

/// The service must outlive the tools.
std::vector<Tool> tools(MemoryRetrievalService& retrieval);

} // namespace pobblewig::RetrievalTools
