#pragma once

#include <QString>

#include <optional>

/// An answer that ended at the limit of its length.
namespace pobblewig::CutAnswer {

/// The lists of the first object up to the last entry that is whole, closed after it. Returns
/// nothing if the object is closed itself, or was cut before its first whole entry.
std::optional<QString> wholeEntries(const QString& text);

} // namespace pobblewig::CutAnswer
