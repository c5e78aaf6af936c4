#pragma once

#include "settings/AppSettings.h"

#include <optional>

namespace pobblewig {

/// What the assistant says about a change of itself, so that the conversation explains why it
/// sounds or looks different afterwards. Returns nothing for other settings, or if nothing changed.
std::optional<QString> selfChangeNote(
    const QString& key, const AppSettings& before, const AppSettings& after);

} // namespace pobblewig
