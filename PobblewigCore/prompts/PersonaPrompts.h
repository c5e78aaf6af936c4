#pragma once

#include "settings/CompanionPersona.h"

#include <QStringView>

/// How the companion speaks.
namespace pobblewig::PersonaPrompts {

/// The whole text for the persona `classic`.
extern const QStringView classicVoice;

/// The text that all other personas share; precedes `voice`.
extern const QStringView sharedCore;

/// Part of every prompt, whatever the persona.
extern const QStringView crisisBlock;

QStringView voice(CompanionPersona persona);

/// Follows a prompt for a message that the companion begins; empty for `classic`.
QStringView interventionVoiceNote(CompanionPersona persona);

} // namespace pobblewig::PersonaPrompts
