#pragma once

#include "settings/CompanionPersona.h"

#include <QStringView>

/// How the companion speaks.
namespace pobblewig::PersonaPrompts {

/// The persona `classic`, whole.
extern const QStringView classicVoice;

/// What all other personas have in common; stands before `voice`.
extern const QStringView sharedCore;

/// Stands in every prompt, whatever the persona.
extern const QStringView crisisBlock;

QStringView voice(CompanionPersona persona);

/// Behind a prompt for a message that the companion begins; empty for `classic`.
QStringView interventionVoiceNote(CompanionPersona persona);

} // namespace pobblewig::PersonaPrompts
