#pragma once

#include "conversation/ConversationRecord.h"
#include "conversation/attachments/Attachment.h"

#include <QObject>

#include <map>
#include <optional>
#include <vector>

namespace pobblewig {

/// The messages that turns add to the conversation, and what is known of them until the program
/// ends: which were never answered, and which reply another one is about to replace.
class TurnMessages : public QObject {
    Q_OBJECT

public:
    /// Both arguments must outlive this object.
    TurnMessages(const Stores& stores, const Moment& moment);

    ConversationRecord& record() { return m_record; }
    const ConversationRecord& record() const { return m_record; }

    /// The whole transcript.
    const std::vector<ChatMessage>& all() const { return m_record.transcript(); }

    /// The question of the last turn, once it is in the history.
    const std::optional<QUuid>& asked() const { return m_asked; }
    void setAsked(std::optional<QUuid> question) { m_asked = question; }

    /// Whether this is a message of the user whose turn has failed.
    bool isUnanswered(const QUuid& message) const { return m_unanswered.contains(message); }

    /// What went with a message that is unanswered.
    std::vector<Attachment> attachments(const QUuid& message) const;
    void setUnanswered(const QUuid& message, std::vector<Attachment> attachments);
    void setAnswered(const QUuid& message);

    /// The reply whose place the next one takes.
    const std::optional<QUuid>& replyInRevision() const { return m_replyInRevision; }
    void setReplyInRevision(std::optional<QUuid> reply);

    /// Adds a question. Of what goes with it only the names are kept.
    ChatMessage ask(
        const QString& text, const std::vector<Attachment>& attachments, bool hasScreenshot);

    /// What a request asks with this message. `screenshot` is a JPEG file.
    ConversationRecord::Question question(const ChatMessage& message,
        const std::vector<Attachment>& attachments,
        const std::optional<QByteArray>& screenshot) const;
    void reply(ConversationRecord::Reply reply);
    void say(const ChatRemark& remark);

    /// Removes a question and what came of it.
    void takeBack(const QUuid& question);

    /// Announces that everything may have changed.
    void reload();

Q_SIGNALS:
    /// The messages from this index on have changed, or come and gone.
    void changed(size_t first);

    /// No model reads the question of the last turn any more.
    void askedLost();

private:
    void announceAdded();
    void announce(const QUuid& message);
    void checkAsked();

    ConversationRecord m_record;
    std::optional<QUuid> m_asked;
    std::map<QUuid, std::vector<Attachment>> m_unanswered;
    std::optional<QUuid> m_replyInRevision;
};

} // namespace pobblewig
