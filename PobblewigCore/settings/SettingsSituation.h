#pragma once

#include "settings/AppSettings.h"

#include <vector>

/// What a model reads about the settings, beginning with its own mascot.
namespace pobblewig::SettingsSituation {

/// For example "axolotl (pink color scheme)"; empty for the earliest mascot, which cannot be
/// chosen.
QString currentForm(const AppSettings& settings);

std::vector<QString> lines(const AppSettings& settings);

} // namespace pobblewig::SettingsSituation
