#include "conversation/ActionParser.h"

#include "conversation/ControlBlock.h"
#include "conversation/ControlFence.h"
#include "conversation/ReplyPreview.h"
#include "conversation/proposals/ActionTools.h"

#include <QJsonObject>

namespace pobblewig {

namespace {

using ControlFence::Tag;

constexpr size_t maxActions = 50;

std::vector<BuddyAction> actionsOf(const QJsonObject& payload, const Calendar& calendar)
{
    const auto fields = JSONValue::fromJson(payload);
    const auto type = payload.value(u"type").toString();
    return ActionTools::actions(type, { ActionArguments(*fields.object()), calendar });
}

std::vector<BuddyAction> actionsOf(
    const std::vector<QJsonObject>& payloads, const Calendar& calendar)
{
    std::vector<BuddyAction> actions;
    for (const auto& payload : payloads) {
        for (auto& action : actionsOf(payload, calendar)) {
            if (actions.size() < maxActions)
                actions.push_back(std::move(action));
        }
    }
    return actions;
}

} // namespace

auto ActionParser::parse(const QString& text, const Calendar& calendar) -> ParseResult
{
    const auto fence = ControlFence::trailing(text);
    const auto payloads = fence ? ControlBlock::actionPayloads(fence->body) : std::nullopt;
    if (!fence || (!payloads && !ControlFence::isControl(fence->tag)))
        return { .displayText = stripControlFences(text),
            .actions = {},
            .isMalformed = ControlFence::hasControlBlock(text) };
    auto actions = actionsOf(payloads.value_or(std::vector<QJsonObject>()), calendar);
    const auto isUnread = payloads ? !payloads->empty() && actions.empty()
                                   : ControlBlock::toolCalls(fence->body).empty();
    return {
        .displayText = stripControlFences(text.first(fence->start)),
        .actions = std::move(actions),
        .isMalformed = isUnread,
    };
}

auto ActionParser::parseToolCalls(const QString& text) -> ToolRequest
{
    const auto fence = ControlFence::trailing(text);
    if (!fence || fence->tag != Tag::buddyTools)
        return {};
    return {
        .displayText = text.first(fence->start).trimmed(),
        .calls = ControlBlock::toolCalls(fence->body),
    };
}

std::vector<BuddyAction> ActionParser::actions(
    const LLMToolCall& toolCall, const Calendar& calendar)
{
    return ActionTools::actions(toolCall.name, { ActionArguments(toolCall.arguments), calendar });
}

QString ActionParser::stripControlFences(const QString& text)
{
    return ControlFence::strip(text);
}

QString ActionParser::stripPartialFence(const QString& text)
{
    for (const auto opening : { u"```buddy-actions", u"```buddy-tools", u"```json" }) {
        const auto found = text.lastIndexOf(opening);
        if (found >= 0 && text.indexOf(u"\n```", found) < 0)
            return text.first(found).trimmed();
    }
    return text;
}

QString ActionParser::sanitizeForPreview(const QString& text)
{
    ReplyPreview preview;
    preview.append(text);
    return preview.text();
}

} // namespace pobblewig
