#include "conversation/BuddyTools.h"

#include "conversation/TurnTools.h"

#include <QJsonDocument>

#include <algorithm>

namespace pobblewig {

namespace {

using Group = Tool::Group;

std::vector<Tool> withOurs(std::vector<Tool> tools, const PlatformWording& wording)
{
    std::ranges::move(TurnTools::tools(wording), std::back_inserter(tools));
    return tools;
}

bool isOffered(const Tool& tool, const BuddyTools::Offer& offer)
{
    using enum BuddyTools::Offered;
    const auto mayRead = offer.retrieval == yes && (offer.memory == yes || !tool.needsMemory);
    switch (tool.group) {
    case Group::alwaysLoaded:
        return mayRead;
    case Group::situation:
        return mayRead && offer.situation == yes;
    case Group::screenCapture:
        return mayRead && offer.screenCapture == yes;
    case Group::deferred:
        return mayRead && offer.expanded.contains(tool.name);
    case Group::action:
        return true;
    case Group::unlisted:
        return false;
    }
    Q_UNREACHABLE();
}

ToolLines linesOf(std::vector<Tool> tools)
{
    std::ranges::stable_sort(tools, {}, &Tool::section);
    ToolLines lines;
    for (const auto& tool : tools) {
        if (!tool.instruction.isEmpty())
            (tool.group == Group::action ? lines.actions : lines.lookups).append(tool.instruction);
        if (tool.group == Group::deferred)
            lines.deferred.append(tool.name);
        if (tool.group == Group::action)
            lines.actionNames.append(tool.name);
    }
    return lines;
}

} // namespace

BuddyTools::BuddyTools(std::vector<Tool> ofFeatures, const PlatformWording& wording)
{
    auto tools = withOurs(std::move(ofFeatures), wording);
    m_lines = linesOf(tools);
    std::ranges::stable_sort(tools, {}, &Tool::group);
    for (auto& tool : tools)
        m_entries.push_back({ std::move(tool) });
}

std::vector<LLMToolDefinition> BuddyTools::offered(const Offer& offer) const
{
    std::vector<LLMToolDefinition> functions;
    for (const auto& entry : m_entries) {
        if (isOffered(entry.tool, offer))
            functions.push_back(definition(entry));
    }
    return functions;
}

const Tool* BuddyTools::find(const QString& name) const
{
    const auto found =
        std::ranges::find(m_entries, name, [](const auto& entry) { return entry.tool.name; });
    return found == m_entries.end() ? nullptr : &found->tool;
}

const LLMToolDefinition& BuddyTools::definition(const Entry& entry)
{
    if (!entry.definition) {
        const auto schema = QJsonDocument::fromJson(entry.tool.schema.toUtf8()).object();
        entry.definition = { .name = entry.tool.name,
            .description = entry.tool.description,
            .parameters = *JSONValue::fromJson(schema).object() };
    }
    return *entry.definition;
}

} // namespace pobblewig
