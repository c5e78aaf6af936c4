#pragma once

#include "PobblewigDesktop/contactsheet/PanelScenes.h"

/// Replies as models write them.
namespace pobblewig::ReplyScenes {

std::vector<PanelScene> all();

} // namespace pobblewig::ReplyScenes
