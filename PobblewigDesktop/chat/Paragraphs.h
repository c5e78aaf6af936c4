#pragma once

#include <QString>

namespace pobblewig::Paragraphs {

/// Both texts with a blank line between them, or the one that is not blank.
QString joined(const QString& first, const QString& second);

} // namespace pobblewig::Paragraphs
