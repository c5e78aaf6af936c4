#pragma once

#include "interventions/Occupation.h"
#include "settings/CoachMode.h"

#include <QString>

#include <optional>

namespace pobblewig {

/// Why the buddy must not turn into a meme at present, such as "do not disturb is on". Returns
/// nothing if it may.
std::optional<QString> memeSilence(CoachMode mode, Occupation occupation);

} // namespace pobblewig
