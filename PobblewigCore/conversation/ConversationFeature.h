#pragma once

#include "conversation/ChatService.h"
#include "conversation/SessionEnd.h"
#include "features/Feature.h"
#include "memory/librarian/LibrarianFeature.h"

namespace pobblewig {

struct ConversationState {
    /// The name of the main model, or a note that there is none.
    QString modelLabel;
    /// Whether there is a main model; nothing before that is known.
    std::optional<bool> hasModel = std::nullopt;
    /// Whether a session is being closed; the conversation continues in the meantime.
    bool isClosingSession = false;

    bool operator==(const ConversationState&) const = default;
};

/// The conversation and the end of its sessions. `onActions` receives the actions that a turn
/// requests.
class ConversationFeature : public Feature {
public:
    /// All arguments must outlive the feature.
    ConversationFeature(const Stores& stores, const Moment& moment, LibrarianFeature& librarian,
        ChatService::Surroundings surroundings);

    ChatService& chat() { return m_chat; }
    SessionEnd& sessionEnd() { return m_sessionEnd; }

    /// Called when a turn has ended.
    std::function<void()> onTurnEnded = [] {};

    void start() override;
    Task<> tick() override;
    void publish(PublishedState& state) const override;

private:
    Task<> afterChatTurn();
    Task<> remember();
    void keepAsChosen();
    void readInTime();
    Task<> readUnread();
    Task<> findModelLabel();

    const SettingsStore& m_settings;
    MemoryTiers& m_memory;
    ChatHistoryStore& m_history;
    const Moment& m_moment;
    ModelProviding& m_models;
    ReadingAlong& m_readingAlong;
    SessionRolloverService& m_rollover;
    ChatService m_chat;
    SessionEnd m_sessionEnd;
    QString m_modelLabel;
    std::optional<ConversationKeeping> m_keeping;
    std::optional<bool> m_hasModel;
};

} // namespace pobblewig
