#include "prompts/ActionInstructions.h"

#include "prompts/SettingInstructions.h"

#include <QStringBuilder>

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView format =
    u"App control via action blocks: when the user asks you to change their mode, %1change an app "
    "setting, or forget something specific, emit a fenced JSON action block at the very end of "
    "your reply (language tag buddy-actions, or json). Spoken text first, then exactly one fence; "
    "the closing fence must be the last characters of your reply. The block is one object, "
    "{\"actions\":[...]}, with one entry per action. These action blocks are the ONLY way to "
    "%2change settings, or forget memory. There is NO buddy-tools write tool — buddy-tools are "
    "read-only retrieval.\n\n"
    "The actions, each with a sample entry:\n";

QString blockFormat(bool haveCalendars)
{
    return haveCalendars ? format.toString().arg(
               u"add a calendar event or reminder, "_s, u"create events, create reminders, "_s)
                         : format.toString().arg(QString(), QString());
}

QString settingsToChange()
{
    return u"Allowlisted settings keys: " % Prompts::settingKeys().join(QStringLiteral(", "))
        % u". Everything else is the user's alone.\n";
}

QString waysToWriteThem()
{
    return u"Value encodings: " % Prompts::settingEncodings()
        % u". An array replaces the whole list, so include what should stay. For persona or mascot "
          "changes, prefer set_persona / set_mascot.\n\n";
}

constexpr QStringView timesAndRules =
    u"Times are ISO-8601; without an offset they are the user's local time. proposalId: generate a "
    "stable, descriptive id (as in the samples) so a retried turn never duplicates. Everything "
    "with a proposalId is confirmed by the user in the app before it runs (or runs instantly when "
    "the user chose \"Allow always\") — never claim one is done until the app reports it. Saying "
    "you proposed or changed something WITHOUT the block does nothing — the user is left waiting "
    "for a confirmation that never comes. If you intend an action, the block must be in that same "
    "reply.\n\n"
    "Example of a whole reply:\n%1"
    "Never emit actions for ordinary conversation. Never emit more than one fence. Never invent "
    "rules or permissions outside this mechanism.";

constexpr QStringView reminderReply =
    u"Sure — I'll set that reminder for tomorrow at 9 AM. Confirm it in the banner and it's on "
    "your list.\n"
    "```buddy-actions\n"
    "{\"actions\":[{\"type\":\"propose_reminder\",\"proposalId\":\"rem-email-davis-20260725\","
    "\"title\":\"Email "
    "Professor Davis\",\"due\":\"2026-07-25T09:00:00\"}]}\n"
    "```\n\n";

constexpr QStringView personaReply =
    u"Sure — I'll be your deadpan roommate. Confirm it in the banner and it's done.\n"
    "```buddy-actions\n"
    "{\"actions\":[{\"type\":\"set_persona\",\"proposalId\":\"persona-deadpan\","
    "\"persona\":\"deadpanRoommate\"}]}\n"
    "```\n\n";

constexpr QStringView nativeInstructions =
    u"App control via action functions: when the user asks you to change your mode, %1change an "
    "app setting, or forget something specific, call the matching function (set_temporary_mode, "
    "%2update_settings, forget_memory) in the same reply as your spoken answer.\n"
    "- set_temporary_mode: always temporary, never permanent.\n"
    "- %2update_settings, set_persona, set_mascot: "
    "confirmed by the user in the app before they run (or run instantly when the user chose "
    "\"Allow always\") — never claim one is done until the app reports it.\n"
    "- forget_memory: ALWAYS requires the user's confirmation, whatever they allowed before. "
    "There is NO full wipe; if asked to delete everything, say that button lives in the app's "
    "Memory screen.\n"
    "- proposalId: generate a stable, descriptive id (e.g. \"%3\") so a "
    "retried turn never duplicates.\n"
    "Saying you proposed or changed something WITHOUT the function call does nothing — the user "
    "is left waiting for a confirmation that never comes. If you intend an action, the call must "
    "be in that same reply.\n"
    "Never call action functions for ordinary conversation. Never invent rules or permissions "
    "outside this mechanism.";

} // namespace

QString Prompts::nativeActionInstructions(const ToolLines& tools)
{
    const auto text = nativeInstructions.toString();
    if (!tools.haveCalendars())
        return text.arg(QString(), QString(), u"persona-deadpan"_s);
    return text.arg(u"add a calendar event or reminder, "_s,
        u"propose_calendar_event, propose_reminder, "_s, u"rem-email-davis-20260725"_s);
}

QString Prompts::actionInstructions(const ToolLines& tools)
{
    auto text = blockFormat(tools.haveCalendars());
    for (const auto& line : tools.actions)
        text += u"- " % line % u'\n';
    const auto example = tools.haveCalendars() ? reminderReply : personaReply;
    return text % u'\n' % settingsToChange() % waysToWriteThem()
        % timesAndRules.toString().arg(example);
}

} // namespace pobblewig
