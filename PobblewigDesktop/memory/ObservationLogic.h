#pragma once

#include "memory/DatedObservation.h"

#include <QStringList>

namespace pobblewig::ObservationLogic {

/// The tags that most observations have, at most so many, in alphabetical order. They are compared
/// ignoring case.
QStringList commonTags(const std::vector<DatedObservation>& observations, size_t most);

} // namespace pobblewig::ObservationLogic
