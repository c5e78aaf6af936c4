#pragma once

#include "PobblewigDesktop/chat/ConversationLogic.h"
#include "conversation/ChatService.h"

#include <QTimer>

namespace pobblewig {

class ConversationModel;

/// Carries what the chat publishes into the shown rows, the growing reply at most once a frame.
///
/// What was shown of a reply that ends early stays until the next turn begins.
class ConversationFeed : public QObject {
    Q_OBJECT

public:
    ConversationFeed(const ChatService& chat, ConversationModel& model, Calendar calendar,
        Clock clock, QObject* parent = nullptr);

    /// Shows the messages anew, as after midnight, when "Today" has become "Yesterday".
    void refresh();

Q_SIGNALS:
    /// The texts are other ones, a growing reply aside.
    void textsChanged();

private:
    void followTurn();
    void showPreview();
    void keepPartialReply();
    bool hasReplied() const;
    QUuid latestMessage() const;

    const ChatService& m_chat;
    ConversationModel& m_model;
    Calendar m_calendar;
    Clock m_clock;
    QTimer m_nextFrame;
    QUuid m_latestBeforeTurn;
};

} // namespace pobblewig
