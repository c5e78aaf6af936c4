#include "conversation/ConversationRecord.h"

#include "conversation/ConversationWindow.h"
#include "conversation/RevisionLogic.h"
#include "settings/SettingsStore.h"

#include <algorithm>
#include <ranges>

namespace pobblewig {

ConversationRecord::ConversationRecord(const Stores& stores, const Moment& moment)
    : m_settings(stores.settings)
    , m_memory(stores.memory)
    , m_history(stores.history)
    , m_moment(moment)
{
}

bool ConversationRecord::contains(const QUuid& id) const
{
    return std::ranges::find(window(), id, &ChatMessage::id) != window().end();
}

std::optional<ChatMessage> ConversationRecord::newestQuestion() const
{
    auto newestFirst = window() | std::views::reverse;
    const auto newest = std::ranges::find(newestFirst, ChatMessage::Role::user, &ChatMessage::role);
    return newest == newestFirst.end() ? std::nullopt : std::optional(*newest);
}

ChatMessage ConversationRecord::addQuestion(const QString& text, bool hasImage)
{
    ChatMessage message {
        .id = QUuid::createUuid(),
        .role = ChatMessage::Role::user,
        .text = text,
        .timestamp = m_moment.now(),
        .hadImage = hasImage,
        .sessionID = sessionID(),
    };
    m_history.append(message);
    return message;
}

void ConversationRecord::addReply(const Reply& reply)
{
    ChatMessage message {
        .id = QUuid::createUuid(),
        .role = ChatMessage::Role::assistant,
        .text = reply.text,
        .timestamp = m_moment.now(),
        .hadImage = reply.hadImage,
        .sessionID = isMemoryEnabled() ? reply.askedIn : std::nullopt,
        .cutOff = reply.isCutOff ? std::optional(true) : std::nullopt,
        .stopped = reply.isStopped ? std::optional(true) : std::nullopt,
    };
    const auto previous = std::ranges::find_if(
        transcript(), [&](const auto& kept) { return kept.id == reply.inPlaceOf; });
    if (previous == transcript().end())
        m_history.append(message);
    else
        m_history.replace(RevisionLogic::inPlaceOf(*previous, std::move(message)));
}

void ConversationRecord::addRemark(const ChatRemark& remark)
{
    m_history.append({
        .id = QUuid::createUuid(),
        .role = ChatMessage::Role::assistant,
        .text = remark.text,
        .timestamp = m_moment.now(),
        .sessionID = remark.isOffTheRecord ? std::nullopt : sessionID(),
        .relatedInterventionID = remark.relatedInterventionID,
        .proposalID = remark.proposalID,
    });
}

size_t ConversationRecord::takeBack(const QUuid& question)
{
    const auto first = std::ranges::find(transcript(), question, &ChatMessage::id);
    const auto number = size_t(first - transcript().begin());
    m_history.remove(RevisionLogic::takenBackWith(question, transcript()));
    return number;
}

std::vector<LLMMessage> ConversationRecord::request(const Question& question)
{
    const auto asked = window() | std::views::drop(windowBegin());
    m_windowBegin = asked.empty() ? std::nullopt : std::optional(asked.front().id);
    return messages(question);
}

std::vector<LLMMessage> ConversationRecord::messages(const Question& question) const
{
    std::vector<LLMMessage> request;
    for (const auto& entry : window() | std::views::drop(windowBegin())) {
        if (entry.role == ChatMessage::Role::system || entry.id == question.earlierReply)
            continue;
        const auto role = entry.role == ChatMessage::Role::user ? LLMMessage::Role::user
                                                                : LLMMessage::Role::assistant;
        request.push_back({ .role = role, .content = entry.text });
        if (entry.id == question.message.id) {
            request.back().content.prepend(question.attachedTexts);
            request.back().images = question.images;
        }
    }
    return request;
}

void ConversationRecord::leaveOut(size_t count)
{
    for (const auto& entry : window() | std::views::drop(windowBegin())) {
        if (entry.role == ChatMessage::Role::system)
            continue;
        m_windowBegin = entry.id;
        if (count-- == 0)
            break;
    }
}

bool ConversationRecord::isMemoryEnabled() const
{
    return m_settings.settings().memoryEnabled;
}

std::optional<QUuid> ConversationRecord::sessionID() const
{
    const auto session = m_memory.sessions.activeSession();
    return session && isMemoryEnabled() ? std::optional(session->id) : std::nullopt;
}

size_t ConversationRecord::windowBegin() const
{
    return ConversationWindow::begin(window(), m_windowBegin);
}

} // namespace pobblewig
