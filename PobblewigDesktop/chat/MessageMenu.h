#pragma once

#include "PobblewigDesktop/chat/ConversationRow.h"
#include "PobblewigDesktop/chat/MessageOffers.h"
#include "markdown/StyledText.h"

#include <QMenu>

namespace pobblewig {

/// What can be done with a message, and with what stands in it. It copies by itself.
class MessageMenu : public QMenu {
    Q_OBJECT

public:
    explicit MessageMenu(QWidget* parent);

    void addLink(const QString& link);
    void addMessage(
        const ConversationRow& row, const StyledText& shown, const MessageOffers& offers);

Q_SIGNALS:
    void linkRequested(const QString& address);
    void retryRequested(const QUuid& message);
    void undoRequested(const QString& proposalId);
    void editRequested();
    void answerAgainRequested();

    /// By one, into the past or back.
    void otherAnswerRequested(const QUuid& message, int step);

private:
    void addAnswers(const ConversationRow& row, const MessageOffers& offers);
    void addCode(const StyledText& shown);
};

} // namespace pobblewig
