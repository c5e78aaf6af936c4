#pragma once

#include "PobblewigDesktop/controls/DropContents.h"
#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/ChatService.h"
#include "presence/FirstMinute.h"
#include "presence/QuickAnswerLogic.h"

#include <QWidget>

class QToolButton;

namespace pobblewig {

class AttachmentControls;
class AttachmentTray;
class CaptureLine;
class MessageInput;
class QuestionEditing;
class QueuedMessage;
class QuickAnswerBar;
class SuggestionBar;

/// Where the user writes: the input with its buttons, and what belongs to the text in it.
class MessageComposer : public QWidget {
    Q_OBJECT

public:
    explicit MessageComposer(ChatService& chat, QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// What an empty conversation offers to try.
    void setSuggestions(const std::vector<FirstMinute::Suggestion>& suggestions);

    /// The latest messages that the companion began; the newest can be answered with one click.
    void setInterventions(const std::vector<InterventionRecord>& records);

    /// Puts a text from elsewhere into the input as a quotation, after what the user has written.
    void quote(const QString& text);

    /// Lets what was dropped go with the next message.
    void attach(const DropContents& contents);

    /// Keeps what the user has begun to write for the next launch, and what was to be sent next.
    void keepDraft();

    /// Puts the newest question into the input, to be asked in other words. What stands there waits
    /// until that is done.
    void edit();

    /// Returns false if no question is being edited.
    bool cancelEditing();

Q_SIGNALS:
    void typed();

    void quickAnswered(const QUuid& record, pobblewig::ProactiveLogic::QuickAnswer answer);

    /// A message is about to be sent, in the session that is open once this has been dealt with.
    void submitting();

    /// The user has asked what is due.
    void askedForComingUp();

    /// Something new stands at the end of the conversation.
    void said();

    /// The message was not sent, and why.
    void refused(const QString& reason);

private:
    struct Unsent {
        QString text;
        /// What the input shows of it.
        QString shown;
        size_t attachments = 0;
    };

    void arrange();
    void connectChat();
    void connectControls();
    void followTurn(bool isWorking, bool hasSucceeded);
    void showTurn();
    /// What the user has written and not sent.
    QString begun() const;
    void write(const QString& text);
    void stopEditing(const QString& text);
    void checkEditing();
    void leaveEditing();
    void recall();
    void queue();
    void sendQueued();
    void takeBackQueued();
    void showUnsent();
    void forgetUnsent();
    void showSuggestions();
    void tryOut(const FirstMinute::Suggestion& suggestion);
    void send();
    void sendWithScreen();
    void submit(const QString& text, ChatService::Screenshot screenshot);
    void submitEdited();
    void giveBack(const QString& text, const ChatService::Attachments& attachments);
    bool isEmpty() const;
    /// Whether all that goes with the message was read; says so if not.
    bool isReady();
    QString message() const;

    ChatService& m_chat;
    SuggestionBar* m_suggestions;
    QuickAnswerBar* m_quickAnswers;
    CaptureLine* m_capture;
    QueuedMessage* m_queue;
    QuestionEditing* m_editing;
    AttachmentTray* m_tray;
    MessageInput* m_input;
    AttachmentControls* m_attaching;
    QToolButton* m_send;
    QToolButton* m_stop;
    std::vector<InterventionRecord> m_interventions;
    /// A message that could not be sent and was put into the input again.
    std::optional<Unsent> m_unsent;
};

} // namespace pobblewig
