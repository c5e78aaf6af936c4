#pragma once

#include <QStringList>

#include <optional>

/// Finds settings by their words.
namespace pobblewig::SettingsSearch {

/// Where a setting stands.
struct Place {
    /// The page's id.
    QString page;
    /// Empty for the page itself.
    QString key;

    bool operator==(const Place&) const = default;
};

/// What can be found: the labels of settings, in alphabetical order.
QStringList names();

/// The setting whose label is closest to the words: the same, one that begins with them, one that
/// contains them, or one whose explanation contains every word. Ignores case.
std::optional<Place> place(const QString& words);

} // namespace pobblewig::SettingsSearch
