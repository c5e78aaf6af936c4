#pragma once

#include "features/Stores.h"
#include "foundation/Moment.h"
#include "memory/MemoryTiers.h"
#include "memory/history/ChatHistoryStore.h"
#include "wire/LLMMessage.h"

#include <optional>
#include <vector>

namespace pobblewig {

/// A message that the buddy writes by itself.
struct ChatRemark {
    QString text;
    std::optional<QUuid> relatedInterventionID = std::nullopt;
    std::optional<QUuid> proposalID = std::nullopt;
    /// It belongs to no session, so that no librarian reads it.
    bool isOffTheRecord = false;
};

/// The conversation as it is kept: adds messages to the history and selects those of a request.
///
/// A message belongs to the session in which it was asked or written, or to none while the memory
/// is off.
class ConversationRecord {
public:
    /// What a turn asks, with pictures and texts that are never kept.
    struct Question {
        ChatMessage message;
        /// JPEG files.
        std::vector<QByteArray> images = {};
        /// Stands in front of the message.
        QString attachedTexts = {};
        /// The answer that it has and that the request leaves out.
        std::optional<QUuid> earlierReply = std::nullopt;
    };

    struct Reply {
        QString text;
        std::optional<QUuid> askedIn;
        bool hadImage = false;
        bool isCutOff = false;
        bool isStopped = false;
        /// The reply whose place it takes, if that is still there.
        std::optional<QUuid> inPlaceOf = std::nullopt;
    };

    /// Both arguments must outlive this object.
    ConversationRecord(const Stores& stores, const Moment& moment);

    /// Everything since the last archive.
    const std::vector<ChatMessage>& transcript() const { return m_history.transcript(); }

    /// Whether a model still reads this message.
    bool contains(const QUuid& id) const;
    std::optional<ChatMessage> newestQuestion() const;

    /// What the user has begun to write.
    const QString& draft() const { return m_history.draft().text(); }
    void keepDraft(const QString& text) { m_history.draft().setText(text); }

    ChatMessage addQuestion(const QString& text, bool hasImage);
    void addReply(const Reply& reply);

    void addRemark(const ChatRemark& remark);

    /// Removes this question and what came of it. Returns the number of the first message that may
    /// have changed.
    size_t takeBack(const QUuid& question);

    /// The messages of a request that asks this question, which is among them.
    std::vector<LLMMessage> request(const Question& question);

    /// The messages that would stand in a request now, before a new question.
    std::vector<LLMMessage> messagesNow() const { return messages({}); }

    /// The next request lacks so many of the oldest messages of the last one.
    void leaveOut(size_t count);

private:
    bool isMemoryEnabled() const;
    std::optional<QUuid> sessionID() const;
    const std::vector<ChatMessage>& window() const { return m_history.messages(); }
    size_t windowBegin() const;
    std::vector<LLMMessage> messages(const Question& question) const;

    const SettingsStore& m_settings;
    const MemoryTiers& m_memory;
    ChatHistoryStore& m_history;
    const Moment& m_moment;
    /// The message with which the latest request began, or begins now that older ones did not fit.
    std::optional<QUuid> m_windowBegin;
};

} // namespace pobblewig
