#pragma once

#include "PobblewigDesktop/chat/ConversationRow.h"
#include "PobblewigDesktop/chat/MessageOffers.h"
#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/Theme.h"

#include <QWidget>

class QToolButton;

namespace pobblewig {

/// The small buttons below a message, for the mouse. Its menu offers the same to the keyboard.
class MessageButtons : public QWidget {
    Q_OBJECT

public:
    explicit MessageButtons(QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// Shows what is offered for this row beside its footer.
    void showFor(const ConversationRow& row, const MessageOffers& offers, const QRect& footer);

Q_SIGNALS:
    void copyRequested(const QUuid& message);
    void editRequested();
    void answerAgainRequested();

    /// By one, into the past or back.
    void otherAnswerRequested(const QUuid& message, int step);

private:
    QToolButton* add(Icons::Name icon, const QString& name);

    QUuid m_message;
    std::vector<std::pair<QToolButton*, Icons::Name>> m_all;
    QToolButton* m_previous;
    QToolButton* m_next;
    QToolButton* m_copy;
    QToolButton* m_again;
    QToolButton* m_edit;
};

} // namespace pobblewig
