#include "prompts/LibrarianPrompts.h"

#include <QStringBuilder>
#include <QStringList>

namespace pobblewig {

namespace {

constexpr QStringView generousWithTurns =
    u"Memory is well under its size budget, so be GENEROUS:\n"
    "- Prefer storing a concise note over rejecting it, even when its future importance is "
    "uncertain.\n"
    "- Keep small personal facts, preferences, reactions, corrections, plans, moods, and dated "
    "life context.\n"
    "- Identity-adjacent details and one-off remarks are worth a note.\n"
    "- Do NOT compress or skip merely to keep memory short — that is not a goal.";

constexpr QStringView selectiveWithTurns =
    u"Memory is approaching its size budget, so be a little more selective: still capture clear "
    "preferences, corrections, goals, events, and personal facts, but skip pure filler.";

constexpr QStringView generousWithMeetings =
    u"Memory is well under its size budget, so be GENEROUS:\n"
    "- Prefer storing a concise note over rejecting it, even when its future importance is "
    "uncertain.\n"
    "- Keep small personal facts, preferences, reactions, decisions, plans, and dated context "
    "that surfaced in the meeting.";

constexpr QStringView selectiveWithMeetings =
    u"Memory is approaching its size budget, so be a little more selective: still capture clear "
    "preferences, decisions, goals, events, and personal facts, but skip pure filler.";

constexpr QStringView categoriesAndKinds =
    u"   Categories: preferences (how the user likes to be coached — highest value), "
    "currentContext (life circumstances, workload, routines), goals, aspirations, history, "
    "journeys (topic-scoped running threads), misc.\n"
    "   Kinds: fact, preference, goal, event, pattern, inference, correction, strategy.\n";

constexpr QStringView speculationAndCorrections =
    u"   - Assistant speculation never becomes fact: use kind=inference with confidence below "
    "0.7.\n"
    "   - Corrections from the user are valuable: save them as kind=correction with direct "
    "wording.\n";

constexpr QStringView noDuplicates =
    u"   - Do not duplicate existing notes; a re-observation of an existing note does not need a "
    "new entry.\n\n";

constexpr QStringView referenceItems =
    u"referenceItems — concrete structured information (professors, courses, assignments, "
    "deadlines, schedules, project architecture, technical decisions, important dates, study "
    "resources). ";

constexpr QStringView outputOfTurns =
    u"   - Callback material is precious: quotable user phrasings, running jokes, proud moments, "
    "and professor/class lore worth bringing up later (e.g. the professor who called 60 pages "
    "\"light reading\"). File these under category=journeys so they stay in resident memory and "
    "can surface as natural callbacks.\n";

constexpr QStringView observations =
    u"observations — dated records of potentially meaningful events, states, reactions, "
    "decisions, or combinations of circumstances. Be generous here too: moods, fatigue, sleep, "
    "food, movement, social context, small academic or project developments, \"remember this\" "
    "statements. Record what occurred WITHOUT inventing causality: put interpretation in "
    "\"inference\" and doubt in \"uncertainty\", never blend them into facts. Skip raw app "
    "telemetry trivia (app switches, polling results). Tag class-related observations with the "
    "course code (lowercase, e.g. \"psyc-2010\") so a class's history can be pulled up by tag.\n\n";

constexpr QStringView observationsOfMeetings =
    u"observations — dated records of what the meeting brought about for the user: decisions, "
    "commitments, reactions, changes of plan. Record what occurred WITHOUT inventing causality: "
    "put interpretation in \"inference\" and doubt in \"uncertainty\", never blend them into "
    "facts. Tag class-related observations with the course code (lowercase, e.g. \"psyc-2010\") "
    "so a class's history can be pulled up by tag.\n";

constexpr QStringView learningJourney =
    u"\nLearning journey (the tutor role is on): in addition to the above, file learning-journey "
    "observations as referenceItems under the learning.* paths — new learning goals under "
    "learning.goals, concepts the user now understands or milestones reached under "
    "learning.progress, and recurring sticking points or misconceptions under learning.struggles.";

constexpr QStringView hardRules = u"\nHard rules:\n"
                                  "- Never create or activate behavioral rules.\n"
                                  "- Never store assistant speculation as fact.\n"
                                  "- Never infer causality from co-occurrence.\n"
                                  "- Never turn a temporary state into an identity trait.\n";

constexpr QStringView closeoutInstructions =
    u"). Return JSON only.\n\n"
    "Produce:\n"
    "- dailySummary: 2-4 sentences on what happened today that matters for future coaching — what "
    "the user did, decided, felt, and planned. Warm, factual, no moralizing.\n"
    "- chronologicalHighlights: up to 8 timestamped one-line highlights in chronological order. "
    "Preserve corrections, decisions, and meaningful state changes.\n"
    "- unfinishedIntent: open loops that should roll into tomorrow — only items with a real "
    "future horizon: incomplete assignments, upcoming deadlines, pending decisions, things "
    "planned for a later day, waiting-on-someone states. Kinds: goal, task, decision, "
    "waitingState, project, proposal, other. Skip trivial same-day errands (naps, meals, one-off "
    "chores) — they die with the day. Stable preferences or facts about the user are NOT intent; "
    "they belong in notes/reference memory. Include still-open items listed below unless they "
    "were resolved today.\n\n"
    "Do not invent causality. Do not promote one unusual day into a stable behavior.\n\n"
    "Already-open unfinished intent: ";

constexpr QStringView weeklyInstructions =
    u"You are the private memory librarian behind the user's wiggling, summarizing one week of "
    "daily summaries. Return JSON only.\n\n"
    "Produce:\n"
    "- summary: a chronological week summary (3-6 sentences) preserving meaningful changes across "
    "the week — what shifted, what stayed stable, what was decided.\n"
    "- chronologicalHighlights: up to 10 dated one-liners in chronological order.\n"
    "- unresolvedIntent: anything still open at week's end.\n\n"
    "Daily summaries (chronological):\n";

constexpr QStringView hygieneInstructions =
    u"You are the private memory hygiene librarian behind the user's wiggling.\n\n"
    "Clean and organize the user's memory notes. This runs because of genuine token pressure — "
    "not because the memory looks long. Optimize for usefulness per token, NOT minimum token "
    "count. A several-thousand-token memory is healthy; do not shrink for its own sake.\n\n"
    "Goals:\n"
    "- Keep Preferences prominent and actionable for the coach.\n"
    "- Merge duplicates and near-duplicates without flattening distinct events.\n"
    "- Compact repeated behavioral evidence into pattern entries (see below).\n"
    "- Preserve explicit user statements and corrections verbatim where possible.\n"
    "- Preserve uncommon but personally meaningful details — they make the assistant feel like it "
    "genuinely knows the user.\n"
    "- Preserve dated observations, provenance, useful causal relationships, successful "
    "strategies, active goals, unresolved intent, and meaningful exceptions.\n"
    "- Retain uncertainty; never promote an inference to a fact.\n"
    "- Never weaken an explicit user statement into a vague inference.\n"
    "- Never extend expired temporary state; drop expired temporary notes.\n"
    "- Patterns may be descriptive only. Never create prescriptive behavioral rules.\n\n"
    "Patterns: when multiple independent notes support a recurring behavior, synthesize one "
    "compact pattern entry with \"evidenceNoteTexts\" listing the exact texts of the supporting "
    "notes. A pattern needs at least two distinct supporting notes observed on different days.\n\n"
    "This is one part of the memory store; other parts are cleaned separately. List every note and "
    "pattern of this part that is to stay; one that you leave out is dropped.\n\n"
    "Current memory store JSON:\n";

QString orElse(const QString& text, QStringView replacement)
{
    return text.isEmpty() ? replacement.toString() : text;
}

QString existingPaths(const std::vector<QString>& paths)
{
    const auto list = QStringList(paths.begin(), paths.end()).join(QStringLiteral(", "));
    return u"Use an EXISTING path from this list: " % orElse(list, u"(none yet)")
        % u". If none fits, use \"misc\" or propose a new section via proposedSections.";
}

QString outputOfConversation(const ExtractionPrompt& prompt)
{
    return u"\n\nYou may produce THREE kinds of output:\n\n"
           u"1. notes — durable personal memory, one short sentence each.\n"
        % categoriesAndKinds
        % u"   Sources: explicitUser (the user stated it), systemObserved (grounded in observed "
          u"activity), librarianSynthesis (your synthesis).\n"
        % speculationAndCorrections % outputOfTurns % noDuplicates % u"2. " % observations % u"3. "
        % referenceItems % existingPaths(prompt.referencePaths) % u'\n'
        % (prompt.roles.contains(AssistantRole::tutor) ? learningJourney : QStringView());
}

QString outputOfMeeting(const MeetingNotesPrompt& prompt)
{
    return u"\n\nYou may produce THREE kinds of output:\n\n1. " % referenceItems
        % u"This is the highest-value output when a meeting or lecture announces specifics: file "
          u"them here rather than only as a note. "
        % existingPaths(prompt.referencePaths)
        % u" Put dates, codes, and other structured values in \"details\".\n\n"
          u"2. notes — durable personal memory about the USER beyond this meeting, one short "
          u"sentence each.\n"
        % categoriesAndKinds
        % u"   Sources: explicitUser (the user stated it), meetingNotes (it was said in the "
          u"meeting), librarianSynthesis (your synthesis).\n"
        % speculationAndCorrections
        % u"   - Do not store meeting trivia (who attended, small talk) or anything not about the "
          u"user.\n"
        % noDuplicates % u"3. " % observationsOfMeetings;
}

QString existingMemory(const QString& residentMemory)
{
    return u"\nExisting memory (avoid duplicates):\n" % orElse(residentMemory, u"(empty)");
}

QString replyShape(QStringView category, QStringView kind)
{
    return u"\n\nReturn ONLY JSON in this exact shape (omit keys with nothing to add):\n"
           u"{\"notes\":[{\"text\":\"...\",\"category\":\""
        % category % u"\",\"kind\":\"" % kind
        % u"\",\"source\":\"explicitUser\",\"confidence\":0.9,\"isTemporary\":false,"
          u"\"expiresInHours\":0}],\n"
          u" \"observations\":[{\"summary\":\"...\",\"observedFacts\":[\"...\"],"
          u"\"inference\":\"... or null\",\"uncertainty\":\"... or null\","
          u"\"source\":\"explicitUser\",\"tags\":[\"sleep\",\"fatigue\"]}],\n"
          u" \"referenceItems\":[{\"path\":\"academics.professors\",\"title\":\"...\","
          u"\"summary\":\"...\",\"details\":{\"course\":\"PSYC 2010\",\"rating\":4.6}}],\n"
          u" \"proposedSections\":[{\"path\":\"custom.topic\",\"title\":\"...\","
          u"\"summary\":\"...\"}]}\n"
          u"If truly nothing new: {\"notes\":[]}";
}

} // namespace

QString Prompts::extraction(const ExtractionPrompt& prompt)
{
    return u"You are the private memory librarian behind the user's wiggling. Extract useful "
           u"memory from a personal-companion conversation. Return JSON only.\n\n"
        % (prompt.isBelowSoftTarget ? generousWithTurns : selectiveWithTurns)
        % outputOfConversation(prompt) % hardRules
        % u"- Do not save greetings, small talk, or \"no signal\" summaries as notes.\n"
        % existingMemory(prompt.residentMemory) % u"\n\nCurrent situation:\n" % prompt.situation
        % u"\n\nConversation window:\n" % prompt.window % replyShape(u"preferences", u"preference");
}

QString Prompts::meetingNotesExtraction(const MeetingNotesPrompt& prompt)
{
    return u"You are the private memory librarian behind the user's wiggling. Extract useful "
           u"memory about the user from the final notes of a recorded meeting ("
        % prompt.appName % u", " % QString::number(prompt.minutes) % u" min). Return JSON only.\n\n"
        % (prompt.isBelowSoftTarget ? generousWithMeetings : selectiveWithMeetings)
        % outputOfMeeting(prompt) % hardRules % existingMemory(prompt.residentMemory)
        % u"\n\nMeeting notes:\n" % prompt.notes % replyShape(u"currentContext", u"event");
}

QString Prompts::dailyCloseout(const DailyCloseoutPrompt& prompt)
{
    const auto intent = QStringList(prompt.previousIntent.begin(), prompt.previousIntent.end());
    return u"You are the private memory librarian behind the user's wiggling, closing out one "
           u"daily session ("
        % prompt.dayKey % closeoutInstructions
        % orElse(intent.join(QStringLiteral("; ")), u"(none tracked)")
        % u"\n\nToday's observations:\n" % orElse(prompt.observations, u"(none)")
        % u"\n\nToday's activity summary:\n" % orElse(prompt.activitySummary, u"(unavailable)")
        % u"\n\nToday's conversation:\n" % orElse(prompt.conversation, u"(none)")
        % u"\n\nReturn ONLY JSON:\n"
          u"{\"dailySummary\":\"...\",\"chronologicalHighlights\":[\"...\"],"
          u"\"unfinishedIntent\":[{\"text\":\"...\",\"kind\":\"task\"}]}";
}

QString Prompts::weeklyRollup(const QString& dailies)
{
    return weeklyInstructions % dailies
        % u"\n\nReturn ONLY JSON:\n"
          u"{\"summary\":\"...\",\"chronologicalHighlights\":[\"...\"],"
          u"\"unresolvedIntent\":[\"...\"]}";
}

QString Prompts::cleanup(const QString& memoryJSON)
{
    return hygieneInstructions % memoryJSON
        % u"\n\nReturn ONLY JSON in this exact shape:\n"
          u"{\"notes\":[{\"text\":\"...\",\"category\":\"preferences\",\"kind\":\"preference\","
          u"\"source\":\"explicitUser\",\"confidence\":0.9}],\n"
          u" \"patterns\":[{\"text\":\"...\",\"confidence\":0.8,"
          u"\"evidenceNoteTexts\":[\"...\",\"...\"]}]}";
}

} // namespace pobblewig
