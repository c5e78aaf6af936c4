#pragma once

#include "PobblewigDesktop/contactsheet/WindowScenes.h"

/// Every page of every window of pages, for a user with some weeks of history.
namespace pobblewig::PageScenes {

std::vector<WindowScene> all();

} // namespace pobblewig::PageScenes
