#pragma once

#include "folders/AppDataAccessService.h"
#include "tools/Tool.h"

/// The tools by which a model reads the user's folders.
namespace pobblewig::FolderTools {

/// Without a service the tools answer that they are unavailable. The service must outlive them.
std::vector<Tool> tools(AppDataAccessService* service);

} // namespace pobblewig::FolderTools
