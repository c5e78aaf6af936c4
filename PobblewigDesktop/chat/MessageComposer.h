#pragma once

#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/ChatService.h"
#include "presence/FirstMinute.h"

#include <QWidget>

class QLabel;
class QToolButton;

namespace pobblewig {

class MessageInput;
class SuggestionBar;

/// Where the user writes: the input with its buttons, and what belongs to the text in it.
class MessageComposer : public QWidget {
    Q_OBJECT

public:
    explicit MessageComposer(ChatService& chat, QWidget* parent = nullptr);

    void setTheme(const Palette& palette);

    /// What an empty conversation offers to try.
    void setSuggestions(const std::vector<FirstMinute::Suggestion>& suggestions);

    /// Puts a text from elsewhere into the input as a quotation, after what the user has written.
    void quote(const QString& text);

    /// Keeps what the user has begun to write for the next launch.
    void keepDraft();

Q_SIGNALS:
    void typed();

    /// A message is about to be sent, in the session that is open once this has been dealt with.
    void submitting();

    /// Something new stands at the end of the conversation.
    void said();

    /// The message was not sent, and why.
    void refused(const QString& reason);

private:
    void arrange();
    void connectChat();
    void connectControls();
    void showTurn();
    void showUnsent();
    void showSuggestions();
    void showCapture();
    void tryOut(const FirstMinute::Suggestion& suggestion);
    void send();
    void sendWithScreen();
    void submit(const QString& text, ChatService::Screenshot screenshot);
    void giveBack(const QString& text);

    ChatService& m_chat;
    SuggestionBar* m_suggestions;
    QLabel* m_capture;
    MessageInput* m_input;
    QToolButton* m_screen;
    QToolButton* m_send;
    QToolButton* m_stop;
};

} // namespace pobblewig
