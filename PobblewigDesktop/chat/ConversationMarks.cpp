#include "PobblewigDesktop/chat/ConversationMarks.h"

namespace pobblewig {

MessageLayout::Marks ConversationMarks::of(const QUuid& message) const
{
    MessageLayout::Marks marks;
    if (const auto found = selection.find(message); found != selection.end())
        marks.selection = found->second;
    if (currentMatch && currentMatch->message == message)
        marks.currentMatch = currentMatch->range;
    if (const auto found = matches.find(message); found != matches.end())
        marks.matches = found->second;
    return marks;
}

} // namespace pobblewig
