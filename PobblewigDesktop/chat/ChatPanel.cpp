#include "PobblewigDesktop/chat/ChatPanel.h"

#include "PobblewigDesktop/chat/ChatHeader.h"
#include "PobblewigDesktop/chat/ConversationBanners.h"
#include "PobblewigDesktop/chat/ConversationFeed.h"
#include "PobblewigDesktop/chat/ConversationFind.h"
#include "PobblewigDesktop/chat/ConversationModel.h"
#include "PobblewigDesktop/chat/ConversationSaving.h"
#include "PobblewigDesktop/chat/ConversationView.h"
#include "PobblewigDesktop/chat/FindBar.h"
#include "PobblewigDesktop/chat/KeyboardSheet.h"
#include "PobblewigDesktop/chat/MessageComposer.h"
#include "PobblewigDesktop/chat/NewSessionDelay.h"
#include "PobblewigDesktop/chat/PanelPlacement.h"
#include "PobblewigDesktop/chat/ProposalBanners.h"
#include "PobblewigDesktop/chat/ProposalCardLogic.h"
#include "PobblewigDesktop/chat/TextColumn.h"
#include "PobblewigDesktop/chat/ThinkingRow.h"
#include "PobblewigDesktop/chat/TurnState.h"
#include "PobblewigDesktop/controls/Banner.h"
#include "PobblewigDesktop/controls/Mirroring.h"
#include "PobblewigDesktop/controls/PanelKeys.h"
#include "PobblewigDesktop/controls/PanelStyle.h"

#include <QDesktopServices>
#include <QDropEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMimeData>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QStyle>
#include <QUrl>

namespace pobblewig {

namespace {

constexpr QSize panelSize(400, 600);
constexpr QSize leastSize(300, 320);
/// What a banner leaves of the conversation in a low window.
constexpr int leastView = 40;
constexpr int margin = 12;
constexpr int gap = 8;

CaptureConsent::Answer captureAnswer(ProposalAnswer answer)
{
    switch (answer) {
    case ProposalAnswer::confirm:
        return CaptureConsent::Answer::lookNow;
    case ProposalAnswer::dismiss:
        return CaptureConsent::Answer::notNow;
    case ProposalAnswer::allowAlways:
        return CaptureConsent::Answer::allowUntilQuit;
    }
    Q_UNREACHABLE();
}

} // namespace

ChatPanel::ChatPanel(ChatService& chat, Calendar calendar, Clock clock, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_chat(chat)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
    , m_model(new ConversationModel(this))
    , m_feed(new ConversationFeed(chat, *m_model, m_calendar, m_clock, this))
    , m_header(new ChatHeader(this))
    , m_state(new TurnState(chat, m_clock, *m_header, this))
    , m_findBar(new FindBar(this))
    , m_view(new ConversationView(*m_model, this))
    , m_find(new ConversationFind(*m_findBar, *m_model, *m_view, this))
    , m_saving(new ConversationSaving(chat, m_calendar, *this))
    , m_banners(new ConversationBanners(chat, m_clock, *this))
    , m_newSession(new Banner(Banner::Kind::notice, tr("New session"), {}, this))
    , m_newSessionDelay(new NewSessionDelay(*m_newSession, this))
    , m_proposals(new ProposalBanners(*this))
    , m_thinking(new ThinkingRow(chat.watch(), m_clock, this))
    , m_keys(new KeyboardSheet(*this))
    , m_composer(new MessageComposer(chat, this))
{
    setWindowTitle(tr("Pobblewig Chat"));
    setMinimumSize(leastSize);
    resize(panelSize);
    setAcceptDrops(true);
    arrange();
    connectChat();
    connectControls();
    setTheme(Theme::palette(Theme::desktopScheme(palette()), {}));
    showCaptureQuestion();
    showOffers();
}

void ChatPanel::setTheme(const Palette& palette)
{
    PanelStyle::apply(*this, palette);
    m_header->setTheme(palette);
    m_findBar->setTheme(palette);
    m_view->setTheme(palette);
    m_banners->setTheme(palette);
    m_newSession->setTheme(palette);
    m_proposals->setTheme(palette);
    m_thinking->setTheme(palette);
    m_keys->setTheme(palette);
    m_composer->setTheme(palette);
}

void ChatPanel::setFace(const QIcon& face)
{
    m_header->setFace(face);
}

void ChatPanel::setStateText(const QString& text)
{
    m_state->setRestingText(text);
}

void ChatPanel::setModelLabel(const QString& text)
{
    m_header->setModelLabel(text);
}

void ChatPanel::setClosingSession(bool isClosing)
{
    m_isClosingSession = isClosing;
    m_state->setClosingSession(isClosing);
    showNewSession();
}

void ChatPanel::setNotice(const QString& text)
{
    m_banners->setNotice(text);
}

void ChatPanel::setProposals(const std::vector<RuleProposal>& proposals,
    const AppSettings& settings, const std::vector<AnsweredProposal>& answered)
{
    // The state is shown often, and making the cards' words takes a while.
    ProposalCardLogic::Source source { proposals, answered, settings };
    if (std::exchange(m_cardSource, source) != source)
        m_feed->setCards(ProposalCardLogic::cards(source, m_calendar));
    m_proposals->setProposals(proposals, settings, m_calendar);
}

void ChatPanel::allowAnswer(const QString& proposalId)
{
    m_proposals->allowAnswer(proposalId);
}

void ChatPanel::showBeside(const QRect& buddy, const QRect& screen)
{
    const auto decoration = frameSize();
    const auto place = PanelPlacement::beside(buddy, size() + decoration, screen);
    resize(place.size() - decoration);
    move(place.topLeft());
    show();
    raise();
    activateWindow();
}

void ChatPanel::setSuggestions(const std::vector<FirstMinute::Suggestion>& suggestions)
{
    m_composer->setSuggestions(suggestions);
}

void ChatPanel::setInterventions(const std::vector<InterventionRecord>& records)
{
    m_composer->setInterventions(records);
}

void ChatPanel::quote(const QString& text)
{
    m_composer->quote(text);
}

void ChatPanel::attach(const DropContents& contents)
{
    m_composer->attach(contents);
}

QSize ChatPanel::frameSize() const
{
    // Before the first show nobody knows the frame, only what frames are like.
    const QSize expected(0, style()->pixelMetric(QStyle::PM_TitleBarHeight));
    return (frameGeometry().size() - size()).expandedTo(expected);
}

void ChatPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_feed->refresh();
    m_view->followLatest();
    m_composer->setFocus(Qt::ActiveWindowFocusReason);
    QMetaObject::invokeMethod(this, &ChatPanel::stayInReach, Qt::QueuedConnection);
    Q_EMIT shown();
}

void ChatPanel::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    keepDraft();
    m_chat.watch().forgetThoughts();
    Q_EMIT hidden();
}

void ChatPanel::keepDraft()
{
    m_composer->keepDraft();
}

void ChatPanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fitColumn();
}

void ChatPanel::dragEnterEvent(QDragEnterEvent* event)
{
    if (!DropContents::isAttachable(*event->mimeData()))
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void ChatPanel::dropEvent(QDropEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    attach(DropContents::of(*event->mimeData()));
}

void ChatPanel::arrange()
{
    auto* const below = new QVBoxLayout;
    below->setContentsMargins(margin, gap, margin, margin);
    below->setSpacing(gap);
    below->addWidget(m_thinking);
    m_banners->addTo(*below);
    below->addWidget(m_newSession);
    below->addWidget(m_composer);

    auto* const find = new QHBoxLayout;
    find->setContentsMargins(margin, gap / 2, margin, gap / 2);
    find->addWidget(m_findBar);

    auto* const proposals = new QVBoxLayout;
    proposals->setContentsMargins(margin, gap, margin, 0);
    proposals->setSpacing(gap);
    m_proposals->addTo(*proposals);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_header);
    column->addLayout(proposals);
    column->addLayout(find);
    m_view->setMinimumHeight(leastView);
    column->addWidget(m_view, 1);
    column->addLayout(below);
    m_inColumn = { below, find, proposals };
}

void ChatPanel::fitColumn()
{
    const auto scrollBar = m_view->verticalScrollBar()->width();
    const auto free = (width() - scrollBar - TextColumn::longest(fontMetrics())) / 2;
    const auto [left, right] =
        free > margin ? std::pair(free, free + scrollBar) : std::pair(margin, margin);
    for (auto* const layout : m_inColumn) {
        const auto margins = layout->contentsMargins();
        layout->setContentsMargins(
            mirrored({ left, margins.top(), right, margins.bottom() }, *this));
    }
}

void ChatPanel::stayInReach()
{
    QList<QRect> screens;
    for (const auto* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    const auto place = PanelPlacement::inReach(frameGeometry(), screens);
    if (isVisible() && place != frameGeometry().topLeft())
        move(place);
}

void ChatPanel::connectChat()
{
    connect(&m_chat, &ChatService::activityChanged, m_state, &TurnState::show);
    // A turn from elsewhere, such as a notification, goes on with the conversation.
    connect(&m_chat, &ChatService::activityChanged, m_newSessionDelay, &NewSessionDelay::takeBack);
    connect(&m_chat, &ChatService::activityChanged, this, &ChatPanel::showOffers);
    connect(&m_chat, &ChatService::messagesChanged, this, &ChatPanel::showOffers);
    connect(&m_chat.captureConsent(), &CaptureConsent::isAskingChanged, this,
        &ChatPanel::showCaptureQuestion);
    connect(m_feed, &ConversationFeed::textsChanged, m_find, &ConversationFind::refresh);
}

void ChatPanel::connectControls()
{
    connect(m_header, &ChatHeader::newSessionRequested, this, &ChatPanel::requestNewSession);
    connect(m_newSessionDelay, &NewSessionDelay::passed, this, &ChatPanel::newSessionRequested);
    connect(
        m_newSessionDelay, &NewSessionDelay::isWaitingChanged, this, &ChatPanel::showNewSession);
    connect(m_header, &ChatHeader::findRequested, m_findBar, &FindBar::open);
    connect(m_header, &ChatHeader::pastRequested, this, &ChatPanel::pastConversationsRequested);
    connect(m_header, &ChatHeader::linkRequested, this, &ChatPanel::linkRequested);
    connect(m_header, &ChatHeader::saveRequested, m_saving, &ConversationSaving::ask);
    connect(m_saving, &ConversationSaving::failed, this, &ChatPanel::setNotice);
    connect(m_view, &ConversationView::findRequested, m_findBar, &FindBar::open);
    connect(m_view, &ConversationView::linkRequested, this,
        [](const QString& address) { QDesktopServices::openUrl(QUrl(address)); });
    connect(m_view, &ConversationView::retryRequested, &m_chat, &ChatService::retry);
    connect(m_view, &ConversationView::editRequested, m_composer, &MessageComposer::edit);
    connect(m_view, &ConversationView::answerAgainRequested, &m_chat, &ChatService::answerAgain);
    connect(m_view, &ConversationView::otherAnswerRequested, m_feed, &ConversationFeed::turnAnswer);
    connect(m_view, &ConversationView::undoRequested, this, &ChatPanel::undoRequested);
    connect(m_findBar, &FindBar::closeRequested, this, &ChatPanel::closeFind);
    connect(m_header, &ChatHeader::keysRequested, m_keys, &KeyboardSheet::open);
    connect(
        m_banners, &ConversationBanners::newSessionRequested, this, &ChatPanel::requestNewSession);
    connect(m_proposals, &ProposalBanners::answered, this, &ChatPanel::answer);
    connect(
        m_proposals, &ProposalBanners::focusGivenUp, m_composer, qOverload<>(&QWidget::setFocus));
    connect(m_composer, &MessageComposer::typed, m_banners, &ConversationBanners::noteTyping);
    connect(m_composer, &MessageComposer::typed, this, &ChatPanel::typed);
    connect(m_composer, &MessageComposer::submitting, this, [this] {
        if (m_newSessionDelay->isWaiting())
            m_newSessionDelay->passNow();
    });
    connect(m_composer, &MessageComposer::quickAnswered, this, &ChatPanel::quickAnswered);
    connect(m_composer, &MessageComposer::askedForComingUp, this,
        [this] { Q_EMIT linkRequested(QStringLiteral("pobblewig:coming-up")); });
    connect(m_composer, &MessageComposer::said, m_view, &ConversationView::followLatest);
    connect(m_composer, &MessageComposer::refused, this, &ChatPanel::setNotice);
    // The desktop may move windows itself first.
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &ChatPanel::stayInReach,
        Qt::QueuedConnection);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &ChatPanel::stayInReach,
        Qt::QueuedConnection);
    auto* const escapeKey = new QShortcut(PanelKeys::sequence(PanelKeys::Act::close), this);
    connect(escapeKey, &QShortcut::activated, this, &ChatPanel::escape);
}

void ChatPanel::showOffers()
{
    const auto question = m_chat.changeableQuestion();
    MessageOffers offers;
    if (question)
        offers.changeable = question->id;
    if (m_chat.canAnswerAgain())
        offers.repeatable = m_chat.messages().back().id;
    m_view->setOffers(offers);
}

void ChatPanel::requestNewSession()
{
    if (!m_chat.messages().empty() && !m_chat.isInTurn())
        m_newSessionDelay->begin();
}

void ChatPanel::showNewSession()
{
    const auto isEnabled = !m_isClosingSession && !m_newSessionDelay->isWaiting();
    m_header->setNewSessionEnabled(isEnabled);
    m_banners->setNewSessionEnabled(isEnabled);
}

void ChatPanel::showCaptureQuestion()
{
    m_proposals->setCaptureQuestion(m_chat.captureConsent().isAsking());
    m_state->show();
}

void ChatPanel::answer(const QString& id, ProposalAnswer answer)
{
    if (id == ProposalBanners::captureId)
        m_chat.captureConsent().answer(captureAnswer(answer));
    else
        Q_EMIT proposalAnswered(id, answer);
}

void ChatPanel::closeFind()
{
    m_find->close();
    m_findBar->returnFocus();
}

void ChatPanel::escape()
{
    if (m_keys->isVisible())
        m_keys->close();
    else if (m_findBar->isVisible())
        closeFind();
    else if (!m_composer->cancelEditing())
        hide();
}

} // namespace pobblewig
