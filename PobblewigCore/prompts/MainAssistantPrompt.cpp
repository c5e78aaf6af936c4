#include "prompts/MainAssistantPrompt.h"

#include "foundation/ISO8601.h"
#include "prompts/PersonaPrompts.h"

namespace pobblewig {

namespace {

QString identitySection(const MainAssistantPrompt& prompt)
{
    return prompt.wording.identity.toString()
        + QStringLiteral(" Your current persona: %1. You keep durable memory of the user and "
                         "awareness of their current activity.")
              .arg(displayName(prompt.situation.persona));
}

QString situationSection(const MainAssistantPrompt& prompt)
{
    auto text = QStringLiteral("\n\nCurrent situation:\n") + prompt.situation.summary;
    if (prompt.hasImage)
        text += QStringLiteral(
            "\nA screenshot is attached to the user's message. Answer from what you actually see; "
            "never state a guess as fact, and if you can't tell something, say so in passing and "
            "move on.");
    return text;
}

} // namespace

QString Prompts::mainAssistant(const MainAssistantPrompt& prompt)
{
    const QStringList sections {
        identitySection(prompt),
        PersonaPrompts::classicVoice.toString(),
        PersonaPrompts::crisisBlock.toString(),
        QStringLiteral("Remembered user context: none yet."),
    };
    return sections.join(QStringLiteral("\n\n")) + u'\n' + situationSection(prompt)
        + QStringLiteral("\n\nCurrent mode: %1.\nCurrent date and time: %2")
              .arg(displayName(prompt.situation.mode), ISO8601::format(prompt.now));
}

} // namespace pobblewig
