#include "conversation/RevisionLogic.h"

#include "conversation/attachments/AttachmentLogic.h"

#include <algorithm>
#include <iterator>

namespace pobblewig {

using Role = ChatMessage::Role;

namespace {

/// Whether it came with something that is gone.
bool hadAttachments(const ChatMessage& message)
{
    return message.hadImage || AttachmentLogic::hasLine(message.text);
}

} // namespace

std::optional<RevisionLogic::Exchange> RevisionLogic::answerableAgain(
    const std::vector<ChatMessage>& messages)
{
    if (messages.size() < 2)
        return std::nullopt;
    const auto& reply = messages.back();
    const auto& question = messages[messages.size() - 2];
    if (reply.role != Role::assistant || reply.relatedInterventionID)
        return std::nullopt;
    if (question.role != Role::user || hadAttachments(question))
        return std::nullopt;
    return Exchange { question, reply };
}

std::optional<ChatMessage> RevisionLogic::changeableQuestion(
    const std::vector<ChatMessage>& messages)
{
    const auto newest =
        std::ranges::find(messages.rbegin(), messages.rend(), Role::user, &ChatMessage::role);
    const auto isChangeable = newest != messages.rend() && !hadAttachments(*newest);
    return isChangeable ? std::optional(*newest) : std::nullopt;
}

std::vector<ChatMessage> RevisionLogic::takenBackWith(
    const QUuid& question, const std::vector<ChatMessage>& messages)
{
    std::vector<ChatMessage> takenBack;
    const auto first = std::ranges::find(messages, question, &ChatMessage::id);
    std::copy_if(first, messages.end(), std::back_inserter(takenBack),
        [](const auto& message) { return !message.relatedInterventionID; });
    return takenBack;
}

ChatMessage RevisionLogic::inPlaceOf(const ChatMessage& previous, ChatMessage next)
{
    next.id = previous.id;
    auto earlier = previous.earlierTexts();
    earlier.push_back(previous.text);
    if (earlier.size() > mostEarlier)
        earlier.erase(earlier.begin(), earlier.end() - mostEarlier);
    next.earlier = std::move(earlier);
    return next;
}

} // namespace pobblewig
