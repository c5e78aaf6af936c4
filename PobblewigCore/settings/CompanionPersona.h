#pragma once

#include <QString>

namespace pobblewig {

/// The voice that the companion speaks in.
enum class CompanionPersona {
    classic,
    deadpanRoommate,
    doomedCreature,
    judgmentalAnimal,
    allergicToSincerity,
    devotedPet
};

QString displayName(CompanionPersona persona);

/// One line for choosing by.
QString tagline(CompanionPersona persona);

} // namespace pobblewig
