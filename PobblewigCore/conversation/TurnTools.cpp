#include "conversation/TurnTools.h"

#include <QStringBuilder>

namespace pobblewig {

using namespace Qt::StringLiterals;

std::vector<Tool> TurnTools::tools(const PlatformWording& wording)
{
    return {
        {
            .group = Tool::Group::alwaysLoaded,
            .name = describeTool.toString(),
            .description = u"Load one deferred tool's full schema so you can call it for the rest "
                           "of this request. Use a name from the deferred-tools list in the "
                           "system prompt. After it loads, call the tool itself in your next "
                           "step."_s,
            .schema = uR"json({"type":"object","properties":{
                "name":{"type":"string"}
                },"required":["name"],"additionalProperties":false})json"_s,
        },
        {
            .group = Tool::Group::screenCapture,
            .name = screenCapture.toString(),
            .description = u"Take ONE fresh screenshot of the user's current screen, whenever "
                           "their message asks about or implies something to see — direct "
                           "(\"what's on my screen?\") or indirect (\"can you see that?\"); "
                           "capture it yourself, never ask for a screenshot. At most once per "
                           "reply and only on a cue from the user's message, never on your own "
                           "initiative. "_s
                % wording.screenPermissionAdvice,
            .schema = uR"json({"type":"object","properties":{
                "reason":{"type":"string"}
                },"additionalProperties":false})json"_s,
            .section = Tool::Section::screen,
            .instruction = u"screen_capture {reason?} — ONE fresh screenshot of the user's "
                           "current screen. Look whenever their message asks about or implies "
                           "something to see, directly (\"what's on my screen?\") or indirectly "
                           "(\"can you see that?\", \"why is this red\", \"is this right\"). When "
                           "in doubt whether the user means something on screen, capture. Never "
                           "say you can't see and never ask the user to send a screenshot — "
                           "capture it yourself. Still needs a cue from the user's current "
                           "message: never on your own initiative, never during interventions, at "
                           "most once per reply."_s,
        },
    };
}

} // namespace pobblewig
