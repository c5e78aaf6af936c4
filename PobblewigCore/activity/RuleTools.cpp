#include "activity/RuleTools.h"

#include "activity/RuleTexts.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

Task<Tool::Outcome> listRules(const RuleStore* rules, ToolArguments)
{
    co_return RuleTexts::rulesText(rules->rules());
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
    };
}

} // namespace pobblewig
