#pragma once

#include "PobblewigStarterMemes/Film.h"

#include <QByteArray>

namespace pobblewig {

/// A lossless WebP of the film, which repeats forever. The same film gives the same bytes. Empty if
/// the encoder fails.
QByteArray encodedWebP(const Film& film);

} // namespace pobblewig
