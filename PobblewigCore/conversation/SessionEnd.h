#pragma once

#include "conversation/ChatService.h"
#include "memory/librarian/ReadingAlong.h"
#include "memory/librarian/SessionRolloverService.h"

namespace pobblewig {

/// Decides when a session of the conversation ends: on a new day after a silence, or when the user
/// asks for a new session. Before that, the librarian reads the rest of it.
class SessionEnd {
public:
    /// Everything here must outlive this object.
    struct Dependencies {
        const MemoryTiers& memory;
        const Moment& moment;
        ChatService& chat;
        ReadingAlong& readingAlong;
        SessionRolloverService& rollover;
        /// Called when closing begins and when it is done.
        std::function<void()> changed;
    };

    explicit SessionEnd(Dependencies dependencies);

    /// Whether a session is being closed, which may take as long as the librarian's model.
    bool isUnderWay() const { return m_isUnderWay; }

    /// Called at each poll. A session never ends during a turn.
    Task<> endIfDue();

    /// Does nothing without a conversation, during a turn or while a session is being closed. Later
    /// messages belong to the new session.
    Task<> startNewSession();

private:
    bool isDue() const;
    /// Later messages are not part of the ending.
    std::optional<SessionRolloverService::Ending> begin();
    void ended();

    Dependencies m;
    bool m_isUnderWay = false;
};

} // namespace pobblewig
