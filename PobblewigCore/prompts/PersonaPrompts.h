#pragma once

#include <QStringView>

/// How the companion speaks.
namespace pobblewig::PersonaPrompts {

/// The persona `classic`, whole.
extern const QStringView classicVoice;

/// Stands in every prompt, whatever the persona.
extern const QStringView crisisBlock;

} // namespace pobblewig::PersonaPrompts
