#pragma once

#include "PobblewigDesktop/chat/ConversationLogic.h"
#include "conversation/ChatService.h"

#include <QTimer>

#include <map>

namespace pobblewig {

class ConversationModel;

/// Carries what the chat publishes into the rows on the screen, a growing reply at most once per
/// frame.
class ConversationFeed : public QObject {
    Q_OBJECT

public:
    ConversationFeed(const ChatService& chat, ConversationModel& model, Calendar calendar,
        Clock clock, QObject* parent = nullptr);

    /// Shows the messages anew, for example after midnight, when "Today" has become "Yesterday".
    void refresh();

    /// The proposals that messages tell about.
    void setCards(ProposalCards cards);

    /// Shows another answer of a message that was answered again, until there is a new one.
    void turnAnswer(const QUuid& message, int step);

Q_SIGNALS:
    /// The texts have changed, apart from a growing reply.
    void textsChanged();

private:
    void show(size_t first);
    void followTurn();
    void showPreview();

    const ChatService& m_chat;
    ConversationModel& m_model;
    Calendar m_calendar;
    Clock m_clock;
    QTimer m_nextFrame;
    ProposalCards m_cards;
    /// Which answer the user has chosen to see.
    std::map<QUuid, std::size_t> m_answers;
};

} // namespace pobblewig
