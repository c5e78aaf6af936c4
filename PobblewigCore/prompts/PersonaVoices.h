#pragma once

#include <QStringView>

/// The character of each persona, read behind what they have in common: who it is, its rules, and
/// a few exchanges to tune the ear. In one of them the joke stops.
namespace pobblewig::PersonaVoices {

extern const QStringView deadpanRoommate;
extern const QStringView doomedCreature;
extern const QStringView judgmentalAnimal;
extern const QStringView allergicToSincerity;
extern const QStringView devotedPet;

} // namespace pobblewig::PersonaVoices
