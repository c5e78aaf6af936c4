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

QString referenceSection(const SituationSnapshot& situation)
{
    QString text;
    if (!situation.referenceTOC.isEmpty())
        text += QStringLiteral("\nStructured reference memory — table of contents (you always see "
                               "this; open a section with a memory tool when the user's question "
                               "needs its detail):\n")
            + situation.referenceTOC;
    if (!situation.chronologicalIndex.isEmpty())
        text += QStringLiteral("\nChronological history index (daily/weekly summaries; expand a "
                               "period with a memory tool when you need the underlying detail):\n")
            + situation.chronologicalIndex;
    return text;
}

QString memorySection(const QString& memory)
{
    if (memory.isEmpty())
        return QStringLiteral("Remembered user context: none yet.");
    return QStringLiteral("Remembered user context (your durable personal memory of the user — "
                          "trust it, it is deliberately generous):\n---\n%1\n---\nPreferences in "
                          "this memory are strong instructions for voice, length, and directness.")
        .arg(memory);
}

QString sessionSection(const SituationSnapshot& situation)
{
    QString text;
    if (!situation.sessionInfo.isEmpty())
        text += QStringLiteral("\n\nCurrent session:\n") + situation.sessionInfo;
    if (!situation.unfinishedIntent.isEmpty())
        text += QStringLiteral("\n\nUnresolved intent from recent days (still open — follow up "
                               "naturally when relevant):\n")
            + situation.unfinishedIntent;
    return text;
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
    const QStringList voice {
        identitySection(prompt),
        PersonaPrompts::classicVoice.toString(),
        PersonaPrompts::crisisBlock.toString(),
    };
    return voice.join(QStringLiteral("\n\n")) + u'\n' + referenceSection(prompt.situation)
        + QStringLiteral("\n\n") + memorySection(prompt.memory) + u'\n'
        + sessionSection(prompt.situation) + situationSection(prompt)
        + QStringLiteral("\n\nCurrent mode: %1.\nCurrent date and time: %2")
              .arg(displayName(prompt.situation.mode), ISO8601::format(prompt.now));
}

} // namespace pobblewig
