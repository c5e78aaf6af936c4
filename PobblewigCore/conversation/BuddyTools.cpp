#include "conversation/BuddyTools.h"

#include <QJsonDocument>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

enum class Group { alwaysLoaded, accountability, screenCapture, deferred, action };

struct Tool {
    Group group;
    QStringView name;
    QStringView description;
    QStringView schema = uR"({"type":"object","properties":{}})";
};

constexpr QStringView settingDescription =
    u"Change one app setting (allowlisted keys only). The value is JSON-encoded: a plain word "
    u"for strings (focus), true/false for toggles, a number for intervals, a JSON array for "
    u"lists ([\"tutor\"], [\"com.apple.Safari\"]), or an array of {\"name\",\"path\"} objects "
    u"for appDataSources. For persona or mascot changes, prefer set_persona / set_mascot.";

constexpr QStringView settingSchema = uR"json({"type":"object","properties":{
            "proposalId":{"type":"string",
                "description":"Stable descriptive id you generate, e.g. settings-mode-focus"},
            "key":{"type":"string","enum":[
                "mode","roles","companionPersona","mascot","mascotColorScheme","pausedIndefinitely",
                "excludedBundleIDs","maxActivitySessions","activityRetentionDays","canvasBaseURL",
                "canvasSyncEnabled","canvasSyncIntervalMinutes","canvasDeadlineRemindersEnabled",
                "canvasDeadlineReminderHours","calendarSyncEnabled","calendarSyncIntervalMinutes",
                "remindersSyncEnabled","cloudSyncEnabled","cloudSyncIntervalMinutes",
                "appDataSources"]},
            "value":{"type":"string",
                "description":"JSON-encoded new value: focus, true, 30, or [\"tutor\"]"}
            },"required":["proposalId","key","value"],"additionalProperties":false})json";

constexpr std::array table {
    Tool { Group::alwaysLoaded, u"memory_read_section",
        u"Read one reference section with all its items. Use a path from the table of contents.",
        uR"json({"type":"object","properties":{
            "path":{"type":"string","description":"Section path, e.g. academics.professors"}
            },"required":["path"],"additionalProperties":false})json" },
    Tool { Group::alwaysLoaded, u"memory_search_reference",
        u"Lexical search over structured reference items (professors, courses, deadlines, "
        u"decisions...).",
        uR"json({"type":"object","properties":{
            "query":{"type":"string"},
            "paths":{"type":"array","items":{"type":"string"},
                "description":"Optional section paths to restrict the search to"}
            },"required":["query"],"additionalProperties":false})json" },
    Tool { Group::alwaysLoaded, u"memory_search_observations",
        u"Search the chronological observation archive (dated records of moods, events, "
        u"corrections, small developments). Dates are ISO-8601.",
        uR"json({"type":"object","properties":{
            "query":{"type":"string"},
            "from":{"type":"string","description":"ISO-8601 lower bound"},
            "to":{"type":"string","description":"ISO-8601 upper bound"},
            "tags":{"type":"array","items":{"type":"string"}},
            "limit":{"type":"integer"}
            },"additionalProperties":false})json" },
    Tool { Group::alwaysLoaded, u"memory_find_notes",
        u"Search the durable personal memory notes (the always-injected prose memory) and get "
        u"their ids — needed to identify a specific note before proposing to forget it.",
        uR"json({"type":"object","properties":{
            "query":{"type":"string",
                "description":"Words to match against note text (all must appear)"},
            "category":{"type":"string","enum":[
                "preferences","currentContext","goals","aspirations","history","misc","journeys"]}
            },"additionalProperties":false})json" },
    Tool { Group::alwaysLoaded, u"memory_add_observation",
        u"Record a dated observation of something meaningful the user just told you (a mood, an "
        u"event, a correction).",
        uR"json({"type":"object","properties":{
            "summary":{"type":"string"},
            "tags":{"type":"array","items":{"type":"string"}}
            },"required":["summary"],"additionalProperties":false})json" },
    Tool { Group::alwaysLoaded, u"describe_tool",
        u"Load one deferred tool's full schema so you can call it for the rest of this request. "
        u"Use a name from the deferred-tools list in the system prompt. After it loads, call the "
        u"tool itself in your next step.",
        uR"json({"type":"object","properties":{
            "name":{"type":"string"}
            },"required":["name"],"additionalProperties":false})json" },
    Tool { Group::accountability, u"memory_get_active_context",
        u"Live situational context: current app, mode, pending items." },
    Tool { Group::accountability, u"interventions_recent",
        u"Recent proactive messages — deadline reminders and daily briefings — and how the user "
        u"responded." },
    Tool { Group::screenCapture, u"screen_capture",
        u"Take ONE fresh screenshot of the user's current screen, whenever their message asks "
        u"about or implies something to see — direct (\"what's on my screen?\") or indirect "
        u"(\"can you see that?\"); capture it yourself, never ask for a screenshot. At most once "
        u"per reply and only on a cue from the user's message, never on your own initiative. ",
        uR"json({"type":"object","properties":{
            "reason":{"type":"string"}
            },"additionalProperties":false})json" },
    Tool { Group::deferred, u"memory_get_table_of_contents",
        u"The full reference-memory table of contents: every section path with titles and "
        u"summaries." },
    Tool { Group::deferred, u"memory_list_period_summaries",
        u"Index of daily and weekly summaries. Dates are ISO-8601.",
        uR"json({"type":"object","properties":{
            "from":{"type":"string"},
            "to":{"type":"string"}
            },"additionalProperties":false})json" },
    Tool { Group::deferred, u"memory_expand_period",
        u"Expand a daily or weekly summary into its daily summaries and raw observations.",
        uR"json({"type":"object","properties":{
            "id":{"type":"string",
                "description":"The summary's [id:xxxxxxxx] from the chronological index or )json"
        uR"json(memory_list_period_summaries"}
            },"required":["id"],"additionalProperties":false})json" },
    Tool { Group::deferred, u"memory_get_daily_session",
        u"Metadata of the active daily session (id, day, start, turn count)." },
    Tool { Group::deferred, u"memory_list_active_goals",
        u"The user's active goals and aspirations from durable memory." },
    Tool { Group::deferred, u"memory_propose_pattern",
        u"Propose a descriptive behavioral pattern. Recorded only with evidence from at least two "
        u"distinct days or an explicit user generalization.",
        uR"json({"type":"object","properties":{
            "text":{"type":"string"},
            "evidenceNoteTexts":{"type":"array","items":{"type":"string"},
                "description":"Texts of existing notes that support the pattern"},
            "confidence":{"type":"number"}
            },"required":["text","evidenceNoteTexts"],"additionalProperties":false})json" },
    Tool { Group::deferred, u"apps_list_sources",
        u"List the app data sources: local root directories the user added in Settings (e.g. a "
        u"folder of notes or project files)." },
    Tool { Group::deferred, u"apps_list_files",
        u"One-level listing of a source directory, newest first.",
        uR"json({"type":"object","properties":{
            "source":{"type":"string","description":"Source name from apps_list_sources"},
            "subpath":{"type":"string"}
            },"required":["source"],"additionalProperties":false})json" },
    Tool { Group::deferred, u"apps_read_file",
        u"Tail of a text file in a source (default 200 lines, max 400). Read-only; secret-shaped "
        u"files are refused.",
        uR"json({"type":"object","properties":{
            "source":{"type":"string"},
            "path":{"type":"string","description":"Path relative to the source root"},
            "tailLines":{"type":"integer"}
            },"required":["source","path"],"additionalProperties":false})json" },
    Tool { Group::action, u"set_temporary_mode",
        u"Switch the user's mode for a while. Always temporary, never permanent.",
        uR"json({"type":"object","properties":{
            "mode":{"type":"string","enum":[
                "openEnded","focus","studying","relaxing","exercising","doNotDisturb"]},
            "minutes":{"type":"integer","description":"Duration in minutes (default 60)"}
            },"required":["mode"],"additionalProperties":false})json" },
    Tool { Group::action, u"propose_calendar_event",
        u"Propose adding an event to the user's calendar. Dates are ISO-8601.",
        uR"json({"type":"object","properties":{
            "proposalId":{"type":"string",
                "description":"Stable descriptive id you generate, e.g. event-dentist-20260728"},
            "title":{"type":"string"},
            "start":{"type":"string","description":"ISO-8601 start time"},
            "end":{"type":"string","description":"ISO-8601 end time (optional)"},
            "notes":{"type":"string"},
            "calendarName":{"type":"string"}
            },"required":["proposalId","title","start"],"additionalProperties":false})json" },
    Tool { Group::action, u"propose_reminder", u"Propose adding a reminder.",
        uR"json({"type":"object","properties":{
            "proposalId":{"type":"string",
                "description":"Stable descriptive id you generate, e.g. rem-email-davis-20260725"},
            "title":{"type":"string"},
            "due":{"type":"string","description":"ISO-8601 due time (optional)"},
            "notes":{"type":"string"}
            },"required":["proposalId","title"],"additionalProperties":false})json" },
    Tool { Group::action, u"update_settings", settingDescription, settingSchema },
    Tool { Group::action, u"set_persona", u"Change the assistant's voice/persona.",
        uR"json({"type":"object","properties":{
            "proposalId":{"type":"string",
                "description":"Stable descriptive id you generate, e.g. persona-deadpan"},
            "persona":{"type":"string","enum":[
                "classic","deadpanRoommate","doomedCreature","judgmentalAnimal",
                "allergicToSincerity","devotedPet"]}
            },"required":["proposalId","persona"],"additionalProperties":false})json" },
    Tool { Group::action, u"set_mascot",
        u"Change the buddy's desktop form (the creature on the user's screen), optionally with a "
        u"color scheme. colorScheme must fit the chosen mascot (mouse: original/brown/white; "
        u"axolotl: golden/pink/blue/lavender); omit it to keep the mascot's default scheme.",
        uR"json({"type":"object","properties":{
            "proposalId":{"type":"string",
                "description":"Stable descriptive id you generate, e.g. mascot-axolotl-pink"},
            "mascot":{"type":"string","enum":["mouse","axolotl"]},
            "colorScheme":{"type":"string",
                "description":"Optional scheme that fits the chosen mascot"}
            },"required":["proposalId","mascot"],"additionalProperties":false})json" },
    Tool { Group::action, u"forget_memory",
        u"Forget something specific the user asked you to forget: one note, one reference item, "
        u"every item under a reference section (e.g. all old courses), or observations matching "
        u"filters. Find target ids with memory_find_notes or the [id:xxxxxxxx] tags in tool "
        u"output. There is NO full wipe — if the user asks to delete everything, say that button "
        u"lives in the app's Memory screen.",
        uR"json({"type":"object","properties":{
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
            },"required":["proposalId","target"],"additionalProperties":false})json" },
};

JSONValue::Object schema(QStringView text)
{
    const auto document = QJsonDocument::fromJson(text.toUtf8());
    return *JSONValue::fromJson(document.object()).object();
}

std::vector<LLMToolDefinition> definitions(Group group)
{
    std::vector<LLMToolDefinition> definitions;
    for (const auto& tool : table) {
        if (tool.group == group)
            definitions.push_back({
                .name = tool.name.toString(),
                .description = tool.description.toString(),
                .parameters = schema(tool.schema),
            });
    }
    return definitions;
}

/// Parsed when it is first asked for.
template <Group group>
const std::vector<LLMToolDefinition>& parsed()
{
    static const auto tools = definitions(group);
    return tools;
}

const LLMToolDefinition* find(const std::vector<LLMToolDefinition>& tools, const QString& name)
{
    const auto found = std::ranges::find(tools, name, &LLMToolDefinition::name);
    return found == tools.end() ? nullptr : &*found;
}

} // namespace

std::vector<LLMToolDefinition> BuddyTools::retrievalTools(ScreenCapture includeScreenCapture,
    AccountabilityTools includeAccountabilityTools, const PlatformWording& wording)
{
    auto tools = parsed<Group::alwaysLoaded>();
    const auto append = [&](const auto& more) {
        std::ranges::copy(more, std::back_inserter(tools));
    };
    if (includeAccountabilityTools == AccountabilityTools::offered)
        append(parsed<Group::accountability>());
    if (includeScreenCapture == ScreenCapture::offered) {
        append(parsed<Group::screenCapture>());
        tools.back().description += wording.screenPermissionAdvice;
    }
    return tools;
}

const std::vector<LLMToolDefinition>& BuddyTools::deferredRetrievalTools()
{
    return parsed<Group::deferred>();
}

const LLMToolDefinition* BuddyTools::deferredTool(const QString& name)
{
    return find(deferredRetrievalTools(), name);
}

const std::vector<LLMToolDefinition>& BuddyTools::actionTools()
{
    return parsed<Group::action>();
}

bool BuddyTools::isActionTool(const QString& name)
{
    return find(actionTools(), name);
}

} // namespace pobblewig
