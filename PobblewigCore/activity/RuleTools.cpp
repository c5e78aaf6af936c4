#include "activity/RuleTools.h"

#include "activity/RuleTexts.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

Task<Tool::Outcome> listRules(const RuleStore* rules, ToolArguments)
{
    co_return RuleTexts::rulesText(rules->rules());
}

/// Nothing records yet what became of a message.
Task<Tool::Outcome> recentInterventions(ToolArguments)
{
    co_return u"(interventions unavailable)"_s;
}

} // namespace

std::vector<Tool> RuleTools::tools(const RuleStore& rules)
{
    return {
        {
            .group = Tool::Group::unlisted,
            .name = u"rules_list"_s,
            .run = Tool::runner(listRules, &rules),
        },
        {
            .group = Tool::Group::situation,
            .name = u"interventions_recent"_s,
            .description = u"Recent proactive messages — deadline reminders and daily briefings — "
                           "and how the user responded."_s,
            .section = Tool::Section::situation,
            .instruction = u"interventions_recent {} — recent proactive messages and outcomes."_s,
            .run = recentInterventions,
        },
    };
}

} // namespace pobblewig
