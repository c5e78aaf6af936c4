#pragma once

#include "foundation/Time.h"
#include "memes/MemeFolders.h"

#include <map>

namespace pobblewig {

/// Where the memes are.
struct MemePlaces {
    /// The default folder, with the others in it.
    QDir user;
    /// What comes with the program.
    std::optional<QDir> bundled = {};
};

/// When each directory and manifest of the library was last changed. An added or removed picture
/// changes its directory, so pictures need no stamps.
using MemeStamps = std::map<QString, TimePoint>;

/// Works on any thread.
MemeStamps memeStamps(const MemePlaces& places);

/// The stamps of one folder of memes.
MemeStamps memeStamps(const QDir& folder);

} // namespace pobblewig
