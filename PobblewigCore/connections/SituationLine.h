#pragma once

#include "memory/ReferenceItem.h"

#include <vector>

namespace pobblewig {

/// Adds "heading title — summary | title — summary" for a model to the lines, each item on one line
/// and cut. Adds nothing if there are no items.
void addSituationLine(
    std::vector<QString>& lines, const QString& heading, const std::vector<ReferenceItem>& items);

} // namespace pobblewig
