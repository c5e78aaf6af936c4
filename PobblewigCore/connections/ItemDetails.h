#pragma once

#include "memory/ReferenceItem.h"

#include <optional>

/// Makes reference items from what a service tells.
namespace pobblewig::ItemDetails {

/// A new item without summary and details.
ReferenceItem newItem(QStringView path, const QString& title, QStringView source, TimePoint now);

/// What a foreign program wrote, on one line and of bounded length. Returns nothing for an absent
/// or blank text.
std::optional<QString> words(const std::optional<QString>& text);

/// Adds the detail if there is a value.
void add(ReferenceItem& item, QStringView key, const std::optional<QString>& value);
void add(ReferenceItem& item, QStringView key, std::optional<double> value);

/// The detail as a text; empty without it.
QString text(const ReferenceItem& item, QStringView key);

} // namespace pobblewig::ItemDetails
