#pragma once

#include <QString>

namespace pobblewig {

/// The companion's voice.
enum class CompanionPersona {
    classic,
    deadpanRoommate,
    doomedCreature,
    judgmentalAnimal,
    allergicToSincerity,
    devotedPet
};

QString displayName(CompanionPersona persona);

/// One line that helps the user choose.
QString tagline(CompanionPersona persona);

} // namespace pobblewig
