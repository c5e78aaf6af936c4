#pragma once

#include <QString>

namespace pobblewig {

enum class CoachMode { openEnded, focus, studying, relaxing, exercising, doNotDisturb };

QString displayName(CoachMode mode);

} // namespace pobblewig
