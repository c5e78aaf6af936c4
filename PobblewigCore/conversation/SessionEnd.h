#pragma once

#include "conversation/ChatService.h"
#include "memory/librarian/ReadingAlong.h"
#include "memory/librarian/SessionRolloverService.h"

namespace pobblewig {

/// Decides when a session of the conversation ends: by itself after a day and a silence, or because
/// the user wants a new one. The librarian reads its tail before.
class SessionEnd {
public:
    /// All of it outlives the end of a session.
    struct Dependencies {
        const MemoryTiers& memory;
        const Moment& moment;
        ChatService& chat;
        ReadingAlong& readingAlong;
        SessionRolloverService& rollover;
        /// Called when an end begins and when it is over.
        std::function<void()> changed;
    };

    explicit SessionEnd(Dependencies dependencies);

    /// Whether a session is being closed, which can take as long as the librarian's model does.
    bool isUnderWay() const { return m_isUnderWay; }

    /// Called at each poll. A session never ends amid a turn.
    Task<> endIfDue();

    /// Does nothing without a conversation, amid a turn and while a session is being closed. What
    /// is said from now on belongs to the new one.
    Task<> startNewSession();

private:
    bool isDue() const;
    /// What is said from now on is no part of the ending.
    std::optional<SessionRolloverService::Ending> begin();
    void ended();

    Dependencies m;
    bool m_isUnderWay = false;
};

} // namespace pobblewig
