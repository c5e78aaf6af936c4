#pragma once

#include "settings/AppSettings.h"

#include <vector>

/// What a model is told of the settings, its own form first.
namespace pobblewig::SettingsSituation {

/// Such as "axolotl (pink color scheme)"; empty for the early mascot that nobody can choose.
QString currentForm(const AppSettings& settings);

std::vector<QString> lines(const AppSettings& settings);

} // namespace pobblewig::SettingsSituation
