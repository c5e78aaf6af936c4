#pragma once

#include "foundation/JSONValue.h"
#include "settings/AppSettings.h"

#include <map>

/// What a change of the settings replaced, so that it can be taken back later.
namespace pobblewig::SettingsDifference {

/// The values of `before` that differ in `after`, as "settings.json" has them. A value that it
/// lacks is null.
std::map<QString, JSONValue> replaced(const AppSettings& before, const AppSettings& after);

/// The settings with those values put back.
AppSettings restored(const AppSettings& settings, const std::map<QString, JSONValue>& replaced);

} // namespace pobblewig::SettingsDifference
