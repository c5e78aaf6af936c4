#pragma once

#include "settings/SettingCatalog.h"

#include <tl/expected.hpp>

namespace pobblewig {

struct SettingsWriteError {
    /// Addressed to the model that asked for the change.
    QString reason;

    bool operator==(const SettingsWriteError&) const = default;
};

/// Which values the settings accept, which settings the assistant may change, and how the result
/// reads.
namespace SettingsWriteLogic {

using Rows = SettingCatalog::Rows;

/// Every key that the assistant may name.
QStringList allowedKeys(Rows rows = SettingCatalog::all());

/// Whether this change asks even if the user has switched the confirmation off.
bool alwaysAsks(const QString& key, const JSONValue& value, Rows rows = SettingCatalog::all());

/// Returns null for a key that the assistant may not name.
const Setting* allowed(const QString& key, Rows rows = SettingCatalog::all());

/// Why the change would be refused, or nothing if it would be accepted.
std::optional<QString> validate(const QString& key, const JSONValue& value,
    const AppSettings& current, Rows rows = SettingCatalog::all());

/// Whether the setting already has this value.
bool isInEffect(const QString& key, const JSONValue& value, const AppSettings& settings,
    Rows rows = SettingCatalog::all());

/// Checks and applies the change, and describes the new state in one line. Numbers out of range are
/// clamped to the nearest bound, never refused.
tl::expected<QString, SettingsWriteError> apply(const QString& key, const JSONValue& value,
    AppSettings& settings, Rows rows = SettingCatalog::all());

/// Does the same for the user, who may change every setting.
tl::expected<QString, SettingsWriteError> write(
    const Setting& setting, const JSONValue& value, AppSettings& settings);

} // namespace SettingsWriteLogic

} // namespace pobblewig
