#include "prompts/ToolInstructions.h"

#include <QStringBuilder>

namespace pobblewig {

namespace {

constexpr QStringView formatAndReferenceTools =
    u"Memory tools: detailed reference sections and archived observations are NOT injected above. "
    "When the user's question needs them, request retrieval by ending your reply with a fenced "
    "buddy-tools block (and nothing after it):\n"
    "```buddy-tools\n"
    "{\"tools\":[{\"name\":\"memory_read_section\",\"args\":{\"path\":\"academics.professors\"}}]}"
    "\n"
    "```\n"
    "Available tools (local, instant, deterministic):\n"
    "- memory_get_table_of_contents {} — every section path with titles and summaries.\n"
    "- memory_read_section {path} — one reference section with all its items; take the path from "
    "the table of contents.\n"
    "- memory_search_reference {query, paths?} — lexical search over reference items (professors, "
    "courses, deadlines, decisions...); paths is an array that restricts it to those sections.\n"
    "- memory_search_observations {query?, from?, to?, tags?, limit?} — the dated archive of "
    "moods, events, corrections, and small developments; from and to are ISO-8601, tags is an "
    "array.\n"
    "- memory_list_period_summaries {from?, to?} — index of daily and weekly summaries; from and "
    "to are ISO-8601.\n"
    "- memory_expand_period {id} — a daily or weekly summary opened into its daily summaries and "
    "raw observations; id is the [id:xxxxxxxx] from the chronological index or "
    "memory_list_period_summaries.\n"
    "- memory_get_daily_session {} — today's session (id, day, start, turn count).\n";

constexpr QStringView accountabilityTools =
    u"- memory_get_active_context {} — live situational context.\n"
    "- interventions_recent {} — recent proactive messages and outcomes.\n";

constexpr QStringView otherToolsAndRules =
    u"- memory_list_active_goals {} — the user's active goals and aspirations.\n"
    "- memory_add_observation {summary, tags?} — record a dated observation of something "
    "meaningful the user just told you (a mood, an event, a correction).\n"
    "- memory_propose_pattern {text, evidenceNoteTexts, confidence?} — propose a behavioral "
    "pattern, with evidence from at least two distinct days or an explicit generalization by the "
    "user; evidenceNoteTexts is an array of existing notes' texts; confidence is 0 to 1.\n"
    "- memory_find_notes {query?, category?} — durable memory notes with their ids, needed before "
    "proposing to forget one; category is preferences, currentContext, goals, aspirations, "
    "history, misc, or journeys.\n"
    "- apps_list_sources {} — the local folders the user added in Settings as app data sources.\n"
    "- apps_list_files {source, subpath?} — one level of a source, newest first.\n"
    "- apps_read_file {source, path, tailLines?} — the tail of a text file in a source (default "
    "200 lines, max 400).\n"
    "- screen_capture {reason?} — ONE fresh screenshot of the user's current screen. Look "
    "whenever their message asks about or implies something to see, directly (\"what's on my "
    "screen?\") or indirectly (\"can you see that?\", \"why is this red\", \"is this right\"). "
    "When in doubt whether the user means something on screen, capture. Never say you can't see "
    "and never ask the user to send a screenshot — capture it yourself. Still needs a cue from "
    "the user's current message: never on your own initiative, never during interventions, at "
    "most once per reply.\n"
    "Rules: at most 4 tool calls per request. Tools are READ-ONLY retrieval — creating "
    "events/reminders or changing settings is done with an action block (see the action "
    "instructions), never with a tools fence. Use tools ONLY when the answer genuinely needs "
    "detail not already injected — never for ordinary conversation. When you emit a tools block, "
    "put at most one short sentence before it; the tools run first, then you compose the real "
    "answer. Never emit both a tools block and a final answer in the same reply. Never emit an "
    "empty tools block.";

} // namespace

constexpr QStringView Prompts::nativeToolInstructions =
    u"Memory tools: detailed reference sections and archived observations are NOT injected above. "
    "When the user's question needs them, call the provided functions — local, instant, "
    "deterministic, READ-ONLY retrieval. At most 4 calls per request; after the results come back "
    "you compose the real answer. Creating events/reminders or changing settings is done with the "
    "action functions below, never with retrieval tools. Use tools ONLY when the answer genuinely "
    "needs detail not already injected — never for ordinary conversation.\n\n"
    "More retrieval tools stay unloaded to keep things simple. To use one, call describe_tool "
    "with its name — it loads, then you call it in your next step: memory_get_table_of_contents, "
    "memory_list_period_summaries, memory_expand_period, memory_get_daily_session, "
    "memory_list_active_goals, memory_propose_pattern, apps_list_sources, apps_list_files, "
    "apps_read_file. Load one only when the answer needs it.";

QString Prompts::toolInstructions(AccountabilityTools includeAccountabilityTools)
{
    const auto included = includeAccountabilityTools == AccountabilityTools::included;
    return formatAndReferenceTools % (included ? accountabilityTools : QStringView())
        % otherToolsAndRules;
}

} // namespace pobblewig
