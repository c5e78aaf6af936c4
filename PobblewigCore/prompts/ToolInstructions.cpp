#include "prompts/ToolInstructions.h"

#include <QStringBuilder>

namespace pobblewig {

namespace {

constexpr QStringView format =
    u"Memory tools: detailed reference sections and archived observations are NOT injected above. "
    "When the user's question needs them, request retrieval by ending your reply with a fenced "
    "buddy-tools block (and nothing after it):\n"
    "```buddy-tools\n"
    "{\"tools\":[{\"name\":\"memory_read_section\",\"args\":{\"path\":\"academics.professors\"}}]}"
    "\n"
    "```\n"
    "Available tools (local, instant, deterministic):\n";

constexpr QStringView rules =
    u"Rules: at most 4 tool calls per request. Tools are READ-ONLY retrieval — creating "
    "events/reminders or changing settings is done with an action block (see the action "
    "instructions), never with a tools fence. Use tools ONLY when the answer genuinely needs "
    "detail not already injected — never for ordinary conversation. When you emit a tools block, "
    "put at most one short sentence before it; the tools run first, then you compose the real "
    "answer. Never emit both a tools block and a final answer in the same reply. Never emit an "
    "empty tools block.";

constexpr QStringView nativeRules =
    u"Memory tools: detailed reference sections and archived observations are NOT injected above. "
    "When the user's question needs them, call the provided functions — local, instant, "
    "deterministic, READ-ONLY retrieval. At most 4 calls per request; after the results come back "
    "you compose the real answer. Creating events/reminders or changing settings is done with the "
    "action functions below, never with retrieval tools. Use tools ONLY when the answer genuinely "
    "needs detail not already injected — never for ordinary conversation.\n\n"
    "More retrieval tools stay unloaded to keep things simple. To use one, call describe_tool "
    "with its name — it loads, then you call it in your next step: ";

} // namespace

QString Prompts::nativeToolInstructions(const QStringList& deferred)
{
    return nativeRules % deferred.join(u", ") % u". Load one only when the answer needs it.";
}

QString Prompts::toolInstructions(const QStringList& lookups)
{
    QString text = format.toString();
    for (const auto& line : lookups)
        text += u"- " % line % u'\n';
    return text % rules;
}

} // namespace pobblewig
