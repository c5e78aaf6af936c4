#include "conversation/TurnMessages.h"

#include "conversation/attachments/AttachmentLogic.h"

#include <algorithm>
#include <utility>

namespace pobblewig {

TurnMessages::TurnMessages(const Stores& stores, const Moment& moment)
    : m_record(stores, moment)
{
}

std::vector<Attachment> TurnMessages::attachments(const QUuid& message) const
{
    const auto unanswered = m_unanswered.find(message);
    return unanswered == m_unanswered.end() ? std::vector<Attachment>() : unanswered->second;
}

void TurnMessages::setUnanswered(const QUuid& message, std::vector<Attachment> attachments)
{
    if (m_unanswered.insert_or_assign(message, std::move(attachments)).second)
        announce(message);
}

void TurnMessages::setAnswered(const QUuid& message)
{
    if (m_unanswered.erase(message) > 0)
        announce(message);
}

void TurnMessages::setReplyInRevision(std::optional<QUuid> reply)
{
    const auto previous = std::exchange(m_replyInRevision, reply);
    if (previous != reply)
        announce(reply ? *reply : *previous);
}

ChatMessage TurnMessages::ask(
    const QString& text, const std::vector<Attachment>& attachments, bool hasScreenshot)
{
    const auto hasImage = hasScreenshot || !AttachmentLogic::pictures(attachments).empty();
    auto question =
        m_record.addQuestion(AttachmentLogic::withLine(text, attachments, hasScreenshot), hasImage);
    announceAdded();
    m_asked = question.id;
    return question;
}

ConversationRecord::Question TurnMessages::question(const ChatMessage& message,
    const std::vector<Attachment>& attachments, const std::optional<QByteArray>& screenshot) const
{
    auto images = AttachmentLogic::pictures(attachments);
    if (screenshot)
        images.insert(images.begin(), *screenshot);
    return { message, std::move(images), AttachmentLogic::texts(attachments), m_replyInRevision };
}

void TurnMessages::reply(ConversationRecord::Reply reply)
{
    reply.inPlaceOf = m_replyInRevision;
    m_record.addReply(reply);
    if (m_replyInRevision)
        setReplyInRevision(std::nullopt);
    else
        announceAdded();
}

void TurnMessages::say(const ChatRemark& remark)
{
    m_record.addRemark(remark);
    announceAdded();
}

void TurnMessages::takeBack(const QUuid& question)
{
    m_unanswered.erase(question);
    Q_EMIT changed(m_record.takeBack(question));
}

void TurnMessages::reload()
{
    Q_EMIT changed(0);
    checkAsked();
}

void TurnMessages::announceAdded()
{
    Q_EMIT changed(all().size() - 1);
    checkAsked();
}

void TurnMessages::announce(const QUuid& message)
{
    const auto place = std::ranges::find(all(), message, &ChatMessage::id);
    Q_EMIT changed(place == all().end() ? 0 : size_t(place - all().begin()));
}

void TurnMessages::checkAsked()
{
    if (!m_asked || m_record.contains(*m_asked))
        return;
    m_asked.reset();
    Q_EMIT askedLost();
}

} // namespace pobblewig
