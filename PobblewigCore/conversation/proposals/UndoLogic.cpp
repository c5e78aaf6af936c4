#include "conversation/proposals/UndoLogic.h"

#include "settings/SettingsWriteLogic.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace pobblewig {

namespace {

QJsonObject asJSON(const AppSettings& settings)
{
    return QJsonDocument::fromJson(json::text(settings)).object();
}

} // namespace

std::map<QString, JSONValue> UndoLogic::replaced(
    const AppSettings& before, const AppSettings& after)
{
    const auto old = asJSON(before);
    const auto current = asJSON(after);
    std::map<QString, JSONValue> replaced;
    for (const auto& key : old.keys() + current.keys()) {
        if (old.value(key) != current.value(key))
            replaced[key] = JSONValue::fromJson(old.value(key));
    }
    return replaced;
}

AppSettings UndoLogic::restored(
    const AppSettings& settings, const std::map<QString, JSONValue>& replaced)
{
    auto values = asJSON(settings);
    for (const auto& [key, value] : replaced) {
        if (value.isNull())
            values.remove(key);
        else
            values[key] = value.toJson();
    }
    return json::decode<AppSettings>(values).value_or(settings);
}

bool UndoLogic::canBeUndone(const RuleProposal& proposal, const Standing& standing)
{
    if (proposal.status != RuleProposal::Status::confirmed || proposal.undoneAt)
        return false;
    if (proposal.kind == RuleProposal::Kind::rule)
        return standing.created
            && std::ranges::find(standing.rules, *standing.created, &AccountabilityRule::id)
            != standing.rules.end();
    const auto& change = proposal.settingsChange;
    return change && proposal.replaced && !proposal.replaced->empty()
        && SettingsWriteLogic::isInEffect(change->key, change->value, standing.settings);
}

} // namespace pobblewig
