#include "mascots/MascotColorScheme.h"

#include "mascots/Mascot.h"

#include <algorithm>

namespace pobblewig {

const MascotColorScheme& MascotColorScheme::forID(QStringView id, const Mascot& mascot)
{
    const auto found =
        std::ranges::find_if(mascot.schemes, [&](const auto& scheme) { return scheme.id == id; });
    return found == mascot.schemes.end() ? mascot.schemes.front() : *found;
}

} // namespace pobblewig
