#include "PobblewigDesktop/chat/ConversationMarks.h"

namespace pobblewig {

namespace {

std::optional<TextRange> within(const QUuid& message, const std::optional<MessageRange>& place)
{
    return place && place->message == message ? std::optional(place->range) : std::nullopt;
}

} // namespace

MessageLayout::Marks ConversationMarks::of(const QUuid& message) const
{
    MessageLayout::Marks marks;
    marks.selection = within(message, selection);
    marks.currentMatch = within(message, currentMatch);
    if (const auto found = matches.find(message); found != matches.end())
        marks.matches = found->second;
    return marks;
}

} // namespace pobblewig
