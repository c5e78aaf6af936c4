#pragma once

#include "conversation/ChatService.h"
#include "conversation/SessionEnd.h"
#include "features/Feature.h"
#include "memory/librarian/LibrarianFeature.h"

namespace pobblewig {

struct ConversationState {
    /// The main model in words, or that there is none.
    QString modelLabel;
    /// Whether a session is being written down; the conversation goes on meanwhile.
    bool isClosingSession = false;

    bool operator==(const ConversationState&) const = default;
};

/// The conversation, and the end of each of its sessions. What a turn leads to beside its reply is
/// told by `onActions`.
class ConversationFeature : public Feature {
public:
    /// All of it outlives the feature.
    ConversationFeature(const Stores& stores, const Moment& moment, LibrarianFeature& librarian,
        ChatService::Surroundings surroundings);

    ChatService& chat() { return m_chat; }
    SessionEnd& sessionEnd() { return m_sessionEnd; }

    void start() override;
    Task<> tick() override;
    void publish(PublishedState& state) const override;

private:
    Task<> afterChatTurn();
    Task<> remember();
    Task<> findModelLabel();

    MemoryTiers& m_memory;
    const Moment& m_moment;
    ModelProviding& m_models;
    ReadingAlong& m_readingAlong;
    ChatService m_chat;
    SessionEnd m_sessionEnd;
    QString m_modelLabel;
};

} // namespace pobblewig
