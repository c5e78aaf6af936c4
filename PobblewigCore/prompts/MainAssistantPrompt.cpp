#include "prompts/MainAssistantPrompt.h"

#include "foundation/ISO8601.h"
#include "prompts/ActionInstructions.h"
#include "prompts/PersonaPrompts.h"
#include "prompts/RolePrompts.h"
#include "prompts/ToolInstructions.h"

#include <QStringBuilder>
#include <QStringList>

namespace pobblewig {

namespace {

constexpr QStringView canvasHint =
    u"\nCanvas is not connected yet. Don't open with this, but when the conversation touches on "
    "schoolwork at all, naturally mention that you can track their assignments and deadlines if "
    "they connect Canvas. And when the user needs Canvas features (assignments, deadlines, "
    "grades), guide them through connecting it:\n"
    "- In Canvas on the web: Account → Settings → scroll to \"Approved Integrations\" → \"+ New "
    "Access Token\" → name it (e.g. Pobblewig), generate, and copy the token.\n"
    "- Then collect the school's Canvas URL (like https://yourschool.instructure.com) and set it "
    "with update_settings (key canvasBaseURL). The token itself you cannot set — it goes in the "
    "app's Settings → Connections page (paste the token, Connect).\n"
    "- The user may not know you can see their screen. If they get stuck or can't find the "
    "button, offer to look: capture a screenshot with screen_capture and walk them through it "
    "step by step from what you see.";

QString formSentence(const QString& currentForm)
{
    if (currentForm.isEmpty())
        return {};
    return u" Your current desktop form: " % currentForm
        % u". When you refer to your own form or species, this is the one — name no other animal. "
          u"If the user asks you to become a different animal, that's the mascot setting — change "
          u"it with update_settings (key mascot); until the app confirms the change, this line is "
          u"still your form.";
}

QString identitySection(const MainAssistantPrompt& prompt)
{
    return prompt.wording.identity % formSentence(prompt.situation.currentForm)
        % u" Your current persona: " % displayName(prompt.situation.persona)
        % u". You keep durable memory of the user and awareness of their current activity.";
}

QString principlesSection(const std::set<AssistantRole>& roles)
{
    QStringList principles;
    for (const auto role : roles) {
        if (const auto text = RolePrompts::principles(role); !text.isEmpty())
            principles.append(text.toString());
    }
    if (principles.isEmpty())
        return {};
    return u"\n\nCore principles:\n" % principles.join(u'\n');
}

QString voiceSection(CompanionPersona persona)
{
    const auto classic = persona == CompanionPersona::classic;
    return u"\n\n" % (classic ? QStringView() : PersonaPrompts::sharedCore)
        % PersonaPrompts::voice(persona) % u"\n\n" % PersonaPrompts::crisisBlock;
}

QString toolsSection(const MainAssistantPrompt& prompt)
{
    if (!prompt.toolsAvailable)
        return {};
    if (prompt.nativeTools)
        return u"\n\n" % Prompts::nativeToolInstructions(prompt.tools.deferred);
    return u"\n\n" % Prompts::toolInstructions(prompt.tools.lookups);
}

QString actionsSection(const MainAssistantPrompt& prompt)
{
    if (prompt.nativeTools)
        return u"\n\n" % Prompts::nativeActionInstructions(prompt.tools);
    return u"\n\n" % Prompts::actionInstructions(prompt.tools);
}

QString referenceSection(const SituationSnapshot& situation)
{
    QString text;
    if (!situation.referenceTOC.isEmpty())
        text += u"\nStructured reference memory — table of contents (you always see this; open a "
                u"section with a memory tool when the user's question needs its detail):\n"
            % situation.referenceTOC;
    if (!situation.chronologicalIndex.isEmpty())
        text += u"\nChronological history index (daily/weekly summaries; expand a period with a "
                u"memory tool when you need the underlying detail):\n"
            % situation.chronologicalIndex;
    return text;
}

QString memorySection(const QString& memory)
{
    if (memory.isEmpty())
        return QStringLiteral("\n\nRemembered user context: none yet.");
    return u"\n\nRemembered user context (your durable personal memory of the user — trust it, it "
           u"is deliberately generous):\n---\n"
        % memory
        % u"\n---\nPreferences in this memory are strong instructions for voice, length, and "
          u"directness.";
}

QString openEndsSection(const SituationSnapshot& situation)
{
    QString text;
    if (!situation.unfinishedIntent.isEmpty())
        text += u"\n\nUnresolved intent from recent days (still open — follow up naturally when "
                u"relevant):\n"
            % situation.unfinishedIntent;
    if (situation.canvasIsMissing)
        text += canvasHint;
    return text;
}

QString sessionSection(const SituationSnapshot& situation)
{
    if (situation.sessionInfo.isEmpty())
        return {};
    return u"\n\nCurrent session:\n" % situation.sessionInfo;
}

QString situationSection(const MainAssistantPrompt& prompt)
{
    constexpr QStringView screenshotAttached =
        u"\nA screenshot is attached to the user's message. Answer from what you actually see; "
        u"never state a guess as fact, and if you can't tell something, say so in passing and "
        u"move on.";
    return u"\n\nCurrent situation:\n" % prompt.situation.summary
        % (prompt.hasImage ? screenshotAttached : QStringView());
}

QString clockSection(const MainAssistantPrompt& prompt)
{
    return u"\n\nCurrent mode: " % displayName(prompt.situation.mode)
        % u".\nCurrent date and time: " % ISO8601::format(prompt.now);
}

QString joined(const std::vector<PromptSection>& sections)
{
    QString text;
    for (const auto& section : sections)
        text += section.text;
    return text;
}

} // namespace

void MainAssistantPrompt::forgetMemory()
{
    memory.clear();
    situation.referenceTOC.clear();
    situation.chronologicalIndex.clear();
    situation.unfinishedIntent.clear();
}

std::vector<PromptSection> Prompts::mainAssistantSections(const MainAssistantPrompt& prompt)
{
    using Part = PromptPart;
    return {
        { Part::identity, identitySection(prompt) },
        { Part::principles, principlesSection(prompt.situation.roles) },
        { Part::voice, voiceSection(prompt.situation.persona) % u'\n' },
        { Part::tools, toolsSection(prompt) },
        { Part::actions, actionsSection(prompt) % u'\n' },
        { Part::reference, referenceSection(prompt.situation) },
        { Part::notes, memorySection(prompt.memory) % u'\n' },
        { Part::openEnds, openEndsSection(prompt.situation) },
    };
}

std::vector<PromptSection> Prompts::appContextSections(const MainAssistantPrompt& prompt)
{
    using Part = PromptPart;
    return {
        { Part::session,
            u"App context, not written by the user:" % sessionSection(prompt.situation) },
        { Part::situation, situationSection(prompt) },
        { Part::clock, clockSection(prompt) % u"\n\nThe user's message:\n" },
    };
}

QString Prompts::mainAssistant(const MainAssistantPrompt& prompt)
{
    return joined(mainAssistantSections(prompt));
}

QString Prompts::appContext(const MainAssistantPrompt& prompt)
{
    return joined(appContextSections(prompt));
}

} // namespace pobblewig
