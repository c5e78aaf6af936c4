#pragma once

#include <QStringView>

/// The character of each persona, which follows the shared text: who it is, its rules, and a few
/// sample exchanges. In one of them the joking stops.
namespace pobblewig::PersonaVoices {

extern const QStringView deadpanRoommate;
extern const QStringView doomedCreature;
extern const QStringView judgmentalAnimal;
extern const QStringView allergicToSincerity;
extern const QStringView devotedPet;

} // namespace pobblewig::PersonaVoices
