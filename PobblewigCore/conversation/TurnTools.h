#pragma once

#include "prompts/PlatformWording.h"
#include "tools/Tool.h"

/// The tools that only a turn can run, by its `ToolRunner`.
namespace pobblewig::TurnTools {

inline constexpr QStringView describeTool = u"describe_tool";
inline constexpr QStringView screenCapture = u"screen_capture";

std::vector<Tool> tools(const PlatformWording& wording);

} // namespace pobblewig::TurnTools
