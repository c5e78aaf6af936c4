#pragma once

#include <QtGlobal>

#include <vector>

namespace pobblewig::TableColumns {

/// Divides the room among columns that would like these widths. If it is too little for all, narrow
/// columns keep theirs and the others share the rest.
std::vector<qreal> widths(std::vector<qreal> wanted, qreal room);

} // namespace pobblewig::TableColumns
