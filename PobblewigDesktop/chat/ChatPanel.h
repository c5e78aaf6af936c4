#pragma once

#include "PobblewigDesktop/chat/ProposalCardLogic.h"
#include "PobblewigDesktop/controls/DropContents.h"
#include "PobblewigDesktop/controls/Theme.h"
#include "conversation/ChatService.h"
#include "conversation/proposals/AnsweredProposal.h"
#include "conversation/proposals/ProposalAnswer.h"
#include "foundation/Calendar.h"
#include "presence/FirstMinute.h"
#include "presence/QuickAnswerLogic.h"
#include "settings/AppSettings.h"

#include <QIcon>
#include <QWidget>

class QLayout;

namespace pobblewig {

class Banner;
class ChatHeader;
class ConversationBanners;
class ConversationFeed;
class ConversationFind;
class ConversationModel;
class ConversationSaving;
class ConversationView;
class FindBar;
class KeyboardSheet;
class MessageComposer;
class NewSessionDelay;
class ProposalBanners;
class ThinkingRow;
class TurnState;

/// The window for talking with the buddy. It shows what the chat publishes and passes on what the
/// user does; it decides nothing.
class ChatPanel : public QWidget {
    Q_OBJECT

public:
    ChatPanel(ChatService& chat, Calendar calendar, Clock clock, QWidget* parent = nullptr);

    void setTheme(const Palette& palette);
    void setFace(const QIcon& face);

    /// The state in words, such as "Focus until 15:30". Shown while no reply is under way.
    void setStateText(const QString& text);
    void setModelLabel(const QString& text);

    /// While a session is being closed, the user cannot ask for another one.
    void setClosingSession(bool isClosing);

    /// A one-off message about the program; an empty text takes it back.
    void setNotice(const QString& text);

    /// The proposals that wait for the user's answer, oldest first, and the answered ones.
    void setProposals(const std::vector<RuleProposal>& proposals, const AppSettings& settings,
        const std::vector<AnsweredProposal>& answered = {});

    /// Called when an answer has been dealt with: a proposal that is still there can be answered
    /// again.
    void allowAnswer(const QString& proposalId);

    /// Keeps what the user has begun to write for the next launch, as hiding the panel does.
    void keepDraft();

    /// What an empty conversation offers to try.
    void setSuggestions(const std::vector<FirstMinute::Suggestion>& suggestions);

    /// The latest messages that the companion began; the newest can be answered with one click.
    void setInterventions(const std::vector<InterventionRecord>& records);

    /// Puts a text from elsewhere into the input as a quotation, after what the user has written.
    void quote(const QString& text);

    /// Lets what was dropped elsewhere go with the next message.
    void attach(const DropContents& contents);

    /// Shows the panel beside the buddy. Both rectangles are in the desktop's coordinates.
    void showBeside(const QRect& buddy, const QRect& screen);

Q_SIGNALS:
    void newSessionRequested();
    void typed();
    void pastConversationsRequested();

    /// A window of the program is to be opened, such as "pobblewig:settings".
    void linkRequested(const QString& link);
    void shown();
    void hidden();

    void proposalAnswered(const QString& proposalId, ProposalAnswer answer);
    void undoRequested(const QString& proposalId);
    void quickAnswered(const QUuid& record, pobblewig::ProactiveLogic::QuickAnswer answer);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QSize frameSize() const;
    void arrange();
    void fitColumn();
    void stayInReach();
    void connectChat();
    void connectControls();
    void showOffers();
    void requestNewSession();
    void showNewSession();
    void showCaptureQuestion();
    void answer(const QString& id, ProposalAnswer answer);
    void closeFind();
    void escape();

    ChatService& m_chat;
    Calendar m_calendar;
    Clock m_clock;
    bool m_isClosingSession = false;
    ConversationModel* m_model;
    ConversationFeed* m_feed;
    ChatHeader* m_header;
    TurnState* m_state;
    FindBar* m_findBar;
    ConversationView* m_view;
    ConversationFind* m_find;
    ConversationSaving* m_saving;
    ConversationBanners* m_banners;
    Banner* m_newSession;
    NewSessionDelay* m_newSessionDelay;
    ProposalBanners* m_proposals;
    ThinkingRow* m_thinking;
    KeyboardSheet* m_keys;
    MessageComposer* m_composer;
    /// What the conversation's cards have been made from.
    ProposalCardLogic::Source m_cardSource;
    /// What stands in the column of the messages.
    QList<QLayout*> m_inColumn;
};

} // namespace pobblewig
