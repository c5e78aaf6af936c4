#pragma once

#include "conversation/ChatService.h"

#include <QTimer>

namespace pobblewig {

class ChatHeader;

/// Keeps the header's words about the turn true: what it waits for and for how long, or what the
/// buddy is about between two turns.
class TurnState : public QObject {
    Q_OBJECT

public:
    /// The chat and the header must outlive this object.
    TurnState(ChatService& chat, Clock clock, ChatHeader& header, QObject* parent = nullptr);

    /// Shown while no reply is under way.
    void setRestingText(const QString& text);
    void setClosingSession(bool isClosing);

    void show();

private:
    void followWait();
    QString words() const;

    ChatService& m_chat;
    Clock m_clock;
    ChatHeader& m_header;
    QTimer m_eachSecond;
    QString m_restingText;
    bool m_isClosingSession = false;
};

} // namespace pobblewig
