#pragma once

#include "settings/AppSettings.h"

#include <optional>

namespace pobblewig {

/// What the assistant says of a change of itself, so that the conversation tells why it sounds or
/// looks different from then on. Nothing for the other settings, or if nothing changed.
std::optional<QString> selfChangeNote(
    const QString& key, const AppSettings& before, const AppSettings& after);

} // namespace pobblewig
