#pragma once

#include "mascots/Mascot.h"
#include "settings/SettingCatalog.h"

/// What the prompts say about settings and mascots, from the tables of both.
namespace pobblewig::Prompts {

/// The keys that the assistant is told about.
QStringList settingKeys(SettingCatalog::Rows settings = SettingCatalog::all());

/// How each value is written: "a string for mode (\"focus\") and mascot; true or false for the keys
/// ending in Enabled".
QString settingEncodings(SettingCatalog::Rows settings = SettingCatalog::all());

/// The ids of the mascots that the assistant is told about.
QStringList mascotIDs(Mascot::All mascots = Mascot::all());

/// "mouse: brown, white; axolotl: pink", with `separator` between the colours.
QString mascotColors(QStringView separator, Mascot::All mascots = Mascot::all());

/// "a", "a or b", "a, b, or c".
QString listed(const QStringList& words, QStringView conjunction);

/// The elements of a JSON array of strings. The words must need no escapes.
QString quoted(const QStringList& words);

} // namespace pobblewig::Prompts
