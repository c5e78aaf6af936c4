#include "conversation/proposals/ActionTools.h"

#include "prompts/SettingInstructions.h"

#include <algorithm>

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

struct Action {
    Tool tool;
    ActionBuilder::Actions (*build)(const ActionBuilder::Request& request);
    bool needsCalendars = false;
};

Action setTemporaryMode()
{
    return {
        .tool = {
            .group = Tool::Group::action,
            .name = u"set_temporary_mode"_s,
            .description =
                u"Switch the user's mode for a while. Always temporary, never permanent."_s,
            .schema = uR"json({"type":"object","properties":{
            "mode":{"type":"string","enum":[
                "openEnded","focus","studying","relaxing","exercising","doNotDisturb"]},
            "minutes":{"type":"integer","description":"Duration in minutes (default 60)"}
            },"required":["mode"],"additionalProperties":false})json"_s,
            .instruction =
                u"Switch the mode for a while: always temporary, never permanent; minutes "
                "defaults to 60. mode is one of openEnded, focus, studying, relaxing, "
                "exercising, doNotDisturb.\n"
                R"({"type":"set_temporary_mode","mode":"focus","minutes":50})"_s,
        },
        .build = ActionBuilder::temporaryMode,
    };
}

Action proposeCalendarEvent()
{
    return {
        .tool = {
            .group = Tool::Group::action,
            .name = u"propose_calendar_event"_s,
            .description = u"Propose adding an event to the user's calendar. Dates are ISO-8601."_s,
            .schema = uR"json({"type":"object","properties":{
            "proposalId":{"type":"string",
                "description":"Stable descriptive id you generate, e.g. event-dentist-20260728"},
            "title":{"type":"string"},
            "start":{"type":"string","description":"ISO-8601 start time"},
            "end":{"type":"string","description":"ISO-8601 end time (optional)"},
            "notes":{"type":"string"},
            "calendarName":{"type":"string"}
            },"required":["proposalId","title","start"],"additionalProperties":false})json"_s,
            .instruction =
                u"Propose a calendar event: end, notes, and calendarName are optional.\n"
                R"({"type":"propose_calendar_event","proposalId":"event-dentist-20260728",)"
                R"("title":"Dentist","start":"2026-07-28T14:00:00","end":"2026-07-28T15:00:00",)"
                R"("notes":"Bring the insurance card"})"_s,
        },
        .build = ActionBuilder::proposedCalendarEvent,
        .needsCalendars = true,
    };
}

Action proposeReminder()
{
    return {
        .tool = {
            .group = Tool::Group::action,
            .name = u"propose_reminder"_s,
            .description = u"Propose adding a reminder."_s,
            .schema = uR"json({"type":"object","properties":{
            "proposalId":{"type":"string",
                "description":"Stable descriptive id you generate, e.g. rem-email-davis-20260725"},
            "title":{"type":"string"},
            "due":{"type":"string","description":"ISO-8601 due time (optional)"},
            "notes":{"type":"string"}
            },"required":["proposalId","title"],"additionalProperties":false})json"_s,
            .instruction =
                u"Propose a reminder: due and notes are optional.\n"
                R"({"type":"propose_reminder","proposalId":"rem-email-davis-20260725",)"
                R"("title":"Email Professor Davis","due":"2026-07-25T09:00:00"})"_s,
        },
        .build = ActionBuilder::proposedReminder,
        .needsCalendars = true,
    };
}

QString settingDescription()
{
    return u"Change one app setting (allowlisted keys only). The value is JSON-encoded: a plain "
           "word for strings (focus), true/false for toggles, a number for intervals, a JSON "
           "array for lists ([\"tutor\"], [\"com.apple.Safari\"]), or an array of "
           "{\"name\",\"path\"} objects for appDataSources. For persona or mascot changes, "
           "prefer set_persona / set_mascot."_s;
}

QString settingSchema()
{
    return uR"json({"type":"object","properties":{
        "proposalId":{"type":"string",
            "description":"Stable descriptive id you generate, e.g. settings-mode-focus"},
        "key":{"type":"string","enum":[%1]},
        "value":{"type":"string",
            "description":"JSON-encoded new value: focus, true, 30, or [\"tutor\"]"}
        },"required":["proposalId","key","value"],"additionalProperties":false})json"_s.arg(
        Prompts::quoted(Prompts::settingKeys()));
}

Action updateSettings()
{
    return {
        .tool = {
            .group = Tool::Group::action,
            .name = u"update_settings"_s,
            .description = settingDescription(),
            .schema = settingSchema(),
            .instruction =
                u"Change one app setting: one allowlisted key per entry.\n"
                R"({"type":"update_settings","proposalId":"settings-mode-focus","key":"mode",)"
                R"("value":"focus"})"_s,
        },
        .build = ActionBuilder::updatedSettings,
    };
}

Action setPersona()
{
    return {
        .tool = {
            .group = Tool::Group::action,
            .name = u"set_persona"_s,
            .description = u"Change the assistant's voice/persona."_s,
            .schema = uR"json({"type":"object","properties":{
            "proposalId":{"type":"string",
                "description":"Stable descriptive id you generate, e.g. persona-deadpan"},
            "persona":{"type":"string","enum":[
                "classic","deadpanRoommate","doomedCreature","judgmentalAnimal",
                "allergicToSincerity","devotedPet"]}
            },"required":["proposalId","persona"],"additionalProperties":false})json"_s,
            .instruction =
                u"Change your voice: persona is one of classic, deadpanRoommate, "
                "doomedCreature, judgmentalAnimal, allergicToSincerity, devotedPet.\n"
                R"({"type":"set_persona","proposalId":"persona-deadpan",)"
                R"("persona":"deadpanRoommate"})"_s,
        },
        .build = ActionBuilder::newPersona,
    };
}

Action setMascot()
{
    return {
        .tool = {
            .group = Tool::Group::action,
            .name = u"set_mascot"_s,
            .description =
                u"Change the buddy's desktop form (the creature on the user's screen), "
                "optionally with a color scheme. colorScheme must fit the chosen mascot "
                "(%1); omit it to keep the mascot's default scheme."_s
                    .arg(Prompts::mascotColors(u"/")),
            .schema = uR"json({"type":"object","properties":{
            "proposalId":{"type":"string",
                "description":"Stable descriptive id you generate, e.g. mascot-axolotl-pink"},
            "mascot":{"type":"string","enum":[%1]},
            "colorScheme":{"type":"string",
                "description":"Optional scheme that fits the chosen mascot"}
            },"required":["proposalId","mascot"],"additionalProperties":false})json"_s
                .arg(Prompts::quoted(Prompts::mascotIDs())),
            .instruction =
                u"Change your desktop form: mascot is %1. colorScheme is optional and must fit it "
                "(%2).\n"
                R"({"type":"set_mascot","proposalId":"mascot-axolotl-pink","mascot":"axolotl",)"
                R"("colorScheme":"pink"})"_s
                    .arg(Prompts::listed(Prompts::mascotIDs(), u"or"),
                        Prompts::mascotColors(u", ")),
        },
        .build = ActionBuilder::newMascot,
    };
}

Action forgetMemory()
{
    return {
        .tool = {
            .group = Tool::Group::action,
            .name = u"forget_memory"_s,
            .description =
                u"Forget something specific the user asked you to forget: one note, one "
                "reference item, every item under a reference section (e.g. all old "
                "courses), or observations matching filters. Find target ids with "
                "memory_find_notes or the [id:xxxxxxxx] tags in tool output. There is NO "
                "full wipe — if the user asks to delete everything, say that button lives "
                "in the app's Memory screen."_s,
            .schema = uR"json({"type":"object","properties":{
            "proposalId":{"type":"string",
                "description":"Stable descriptive id you generate, e.g. forget-old-courses-2026"},
            "target":{"type":"string","enum":[
                "note","referenceItem","referenceSection","observations"]},
            "id":{"type":"string",
                "description":"Short id (8-char prefix) from tool output — for note, )json"
            uR"json(referenceItem"},
            "path":{"type":"string",
                "description":"Section path for referenceSection, e.g. academics.courses — )json"
            uR"json(deletes every item under it, recursively"},
            "query":{"type":"string","description":"Text filter for observations"},
            "from":{"type":"string","description":"ISO-8601 lower bound for observations"},
            "to":{"type":"string","description":"ISO-8601 upper bound for observations"},
            "tags":{"type":"array","items":{"type":"string"},
                "description":"Tag filter for observations, e.g. [\"psyc-2010\"]"}
            },"required":["proposalId","target"],"additionalProperties":false})json"_s,
            .instruction =
                u"Forget something specific: target is note or referenceItem with an id, "
                "referenceSection with a path (every item under it, recursively), or "
                "observations with any of query, from, to, tags. An id is the short one from "
                "tool output ([id:xxxxxxxx]). This ALWAYS requires the user's confirmation. "
                "There is NO full wipe; if asked to delete everything, say that button lives "
                "in the app's Memory screen.\n"
                R"({"type":"forget_memory","proposalId":"forget-old-courses-2026",)"
                R"("target":"referenceSection","path":"academics.courses"})"_s,
        },
        .build = ActionBuilder::forgottenMemory,
    };
}

/// No model is offered this action, but a block may request it.
Action proposeRule()
{
    return {
        .tool = { .group = Tool::Group::unlisted, .name = u"propose_rule"_s },
        .build = ActionBuilder::proposedRule,
    };
}

const std::vector<Action>& table()
{
    static const std::vector<Action> actions {
        setTemporaryMode(),
        proposeCalendarEvent(),
        proposeReminder(),
        updateSettings(),
        setPersona(),
        setMascot(),
        forgetMemory(),
        proposeRule(),
    };
    return actions;
}

const Action* find(const QString& name)
{
    const auto found = std::ranges::find(table(), name, [](const auto& a) { return a.tool.name; });
    return found == table().end() ? nullptr : &*found;
}

} // namespace

std::vector<Tool> ActionTools::tools(Calendars calendars)
{
    std::vector<Tool> tools;
    for (const auto& action : table()) {
        if (calendars == Calendars::available || !action.needsCalendars)
            tools.push_back(action.tool);
    }
    return tools;
}

bool ActionTools::isAction(const QString& name)
{
    const auto* action = find(name);
    return action && action->tool.group == Tool::Group::action;
}

ActionBuilder::Actions ActionTools::actions(
    const QString& name, const ActionBuilder::Request& request)
{
    const auto* action = find(name);
    return action ? action->build(request) : ActionBuilder::Actions();
}

} // namespace pobblewig
