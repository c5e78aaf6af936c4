#pragma once

#include "settings/CompanionPersona.h"

#include <QString>

/// How the companion speaks.
namespace pobblewig::PersonaPrompts {

/// The whole text for the persona `classic`.
extern const QStringView classicVoice;

/// The text that all other personas share; precedes `voice`.
extern const QStringView sharedCore;

/// Part of every prompt, whatever the persona.
extern const QStringView crisisBlock;

QStringView voice(CompanionPersona persona);

/// What a user says, and the companion to it.
struct Example {
    QString question;
    QString reply;
};

/// Shows how the persona sounds.
Example example(CompanionPersona persona);

/// Follows a prompt for a message that the companion begins; empty for `classic`.
QStringView interventionVoiceNote(CompanionPersona persona);

} // namespace pobblewig::PersonaPrompts
