#include "PobblewigDesktop/AppDelegate.h"

#include "PobblewigDesktop/FirstLaunch.h"
#include "PobblewigDesktop/chat/ChatPanel.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/presence/BuddyFace.h"
#include "foundation/EnumNames.h"
#include "presence/PresenceLogic.h"

#include <QApplication>
#include <QScreen>

#include <algorithm>
#include <chrono>
#include <utility>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

/// How long a buddy that nobody draws, on a screen that is off for example, keeps the rest waiting.
constexpr auto longestWaitForTheBuddy = 1s;

/// How long a turn may take to keep what it has when the program ends.
constexpr std::chrono::milliseconds timeToStop = 200ms;

// The look is also kept with the desktop's own settings, so that the first frame has it.
const auto mascotKey = QStringLiteral("buddy/mascot");
const auto schemeKey = QStringLiteral("buddy/colorScheme");
const auto scaleKey = QStringLiteral("buddy/sizeScale");
const auto panelSizeKey = QStringLiteral("chat/size");

ThemePreference themePreference(const AppSettings& settings)
{
    return EnumNames::fromName<ThemePreference>(settings.themePreference.toStdString())
        .value_or(ThemePreference::system);
}

Palette paletteFor(const AppSettings& settings)
{
    const auto scheme =
        Theme::colorScheme(themePreference(settings), Theme::desktopScheme(qApp->palette()));
    return Theme::palette(scheme, settings.accentChoice);
}

QString stateInWords(const AppSettings& settings)
{
    if (settings.mode == CoachMode::openEnded)
        return {};
    const PresenceState state { .mode = settings.mode, .modeRevertAt = settings.modeRevertAt };
    return PresenceLogic::modeInWords(state, systemNow(), Calendar::current());
}

/// A memory that is not kept is seen for as long as that lasts.
QString stateInWords(const AppSettings& settings, const LibrarianState& librarian)
{
    auto mode = stateInWords(settings);
    if (!librarian.lastError)
        return mode;
    const auto sign = AppDelegate::tr("taking no notes");
    return mode.isEmpty() ? sign : QStringLiteral("%1 · %2").arg(mode, sign);
}

std::vector<FirstMinute::Suggestion> suggestions(const ConversationState& state)
{
    using FirstMinute::Model;
    if (!state.hasModel)
        return {};
    return FirstMinute::suggestions(*state.hasModel ? Model::configured : Model::missing);
}

} // namespace

AppDelegate::AppDelegate(BuddyWindowSystem& windowSystem, QSettings& desktopSettings)
    : m_desktopSettings(desktopSettings)
    , m_buddy(windowSystem, desktopSettings)
    , m_bubbles(m_buddy, windowSystem)
    , m_presence(desktopSettings)
    , m_windows(m_presence, desktopSettings)
{
    m_buddy.setSprite(MascotSprite::chosen(
        desktopSettings.value(mascotKey).toString(), desktopSettings.value(schemeKey).toString()));
    m_buddy.setSizeScale(desktopSettings.value(scaleKey, 1.0).toDouble());
    connect(&m_buddy, &BuddyWindow::clicked, this, &AppDelegate::toggleChat);
    connect(&m_buddy, &BuddyWindow::menuRequested, this, &AppDelegate::showMenu);
    connect(&m_buddy, &BuddyWindow::textDropped, this, &AppDelegate::quote);
    connect(&m_buddy, &BuddyWindow::attachmentDropped, this, &AppDelegate::attach);
    connect(&m_bubbles, &BubbleKeeper::clicked, this, &AppDelegate::openChat);
    connect(&m_bubbles, &BubbleKeeper::unseenChanged, this, &AppDelegate::showMark);
    connect(&m_presence, &DesktopPresence::chatRequested, this, &AppDelegate::openChat);
    connect(&m_presence, &DesktopPresence::chatToggled, this, &AppDelegate::toggleChat);
    connect(&m_presence, &DesktopPresence::reminded, this, &AppDelegate::showReminder);
    connect(&m_presence, &DesktopPresence::sleepRequested, &m_buddy.view(), &BuddyView::dozeOff);
    connect(&m_buddy.view(), &BuddyView::sleepAmountChanged, this, &AppDelegate::showPresence);
    connect(&m_presence, &DesktopPresence::quitRequested, this, &AppDelegate::quit);
    connect(&m_presence, &DesktopPresence::putAwayRequested, this, &AppDelegate::putAway);
    connect(&m_presence, &DesktopPresence::linkRequested, &m_windows, &ToolWindows::open);
    connect(&m_windows, &ToolWindows::chatRequested, this, &AppDelegate::openChat);
    connect(&m_presence, &DesktopPresence::noticed, this, &AppDelegate::showNotice);
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::launch(MakeParts makeParts)
{
    m_makeParts = std::move(makeParts);
    connect(&m_buddy, &BuddyWindow::appeared, this, &AppDelegate::startCoordinator);
    QTimer::singleShot(longestWaitForTheBuddy, this, &AppDelegate::startCoordinator);
    m_buddy.show();
}

void AppDelegate::openChat()
{
    if (!m_coordinator) {
        m_isChatRequested = true;
        return;
    }
    if (!m_panel)
        makePanel();
    m_buddy.setHiddenFor(BuddyWindow::HidingReason::putAway, false);
    // Where the user has put it is its place, until it is closed.
    if (!m_panel->isVisible())
        m_panel->showBeside(m_buddy.geometry(), m_buddy.screen()->availableGeometry());
    m_presence.activate(*m_panel);
    showMark();
}

void AppDelegate::openLink(const QUrl& link)
{
    if (!m_coordinator)
        m_requestedLink = link;
    if (!m_coordinator || !m_windows.open(link.toString()))
        openChat();
}

void AppDelegate::quit()
{
    const auto isInTurn = m_coordinator && m_coordinator->chat().isInTurn();
    if (isInTurn)
        m_coordinator->chat().cancelStreaming();
    if (m_panel)
        m_panel->hide();
    const auto time = std::max(m_bubbles.sayGoodbye(), isInTurn ? timeToStop : 0ms);
    QTimer::singleShot(time, qApp, &QApplication::quit);
}

void AppDelegate::putAway()
{
    if (m_panel)
        m_panel->hide();
    m_buddy.setHiddenFor(BuddyWindow::HidingReason::putAway, true);
}

void AppDelegate::startCoordinator()
{
    const auto makeParts = std::exchange(m_makeParts, nullptr);
    auto parts = makeParts ? makeParts() : std::nullopt;
    if (!parts)
        return;
    m_coordinator = std::make_unique<AppCoordinator>(*std::move(parts));
    connect(m_coordinator.get(), &AppCoordinator::stateChanged, this, &AppDelegate::showState);
    m_coordinator->start();
    showState();
    m_presence.follow(*m_coordinator);
    m_bubbles.follow(*m_coordinator);
    m_memes.follow(*m_coordinator);
    m_windows.follow(*m_coordinator);
    FirstLaunch(m_bubbles, m_desktopSettings).greet(*m_coordinator);
    if (!m_coordinator->state().of<SettingsState>().settings.hasCompletedOnboarding)
        m_windows.open(QStringLiteral("pobblewig:welcome"));
    const auto& chat = m_coordinator->chat();
    connect(&chat, &ChatService::activityChanged, this, &AppDelegate::showActivity);
    connect(&chat, &ChatService::streamingPreviewChanged, this, &AppDelegate::showReply);
    if (m_isChatRequested)
        openLink(m_requestedLink);
    Q_EMIT launched();
}

void AppDelegate::showMenu(QPoint place)
{
    if (!m_coordinator)
        return;
    auto* const menu = m_presence.makeMenu().release();
    PanelStyle::apply(*menu, paletteFor(m_coordinator->state().of<SettingsState>().settings));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(place);
}

void AppDelegate::showActivity(bool working, bool succeeded)
{
    using Kind = BuddyState::Kind;
    if (working)
        m_buddy.view().setState({ Kind::working, {} });
    else if (succeeded)
        m_buddy.view().setState({ Kind::done, tr("done") });
    else
        m_buddy.view().setState({});
    showMark();
}

void AppDelegate::showReply()
{
    if (!m_coordinator->chat().streamingPreview().isEmpty())
        m_buddy.view().setState({ BuddyState::Kind::responding, {} });
}

void AppDelegate::showReminder(const QString& message)
{
    m_buddy.view().setState({ BuddyState::Kind::notify, tr("reminder — click me to reply") });
    m_bubbles.say({ Bubble::Kind::reminder, BubbleLogic::firstLine(message) });
    showPresence();
}

void AppDelegate::showMark()
{
    using Kind = BuddyState::Kind;
    const auto kind = m_buddy.view().state().kind;
    if (m_bubbles.hasUnseen() && (kind == Kind::idle || kind == Kind::done))
        m_buddy.view().setState({ Kind::notify, {} });
    else if (!m_bubbles.hasUnseen() && kind == Kind::notify)
        m_buddy.view().setState({});
    showPresence();
}

void AppDelegate::showPresence()
{
    using Activity = PresenceState::Activity;
    constexpr double halfAsleep = 0.5;
    const auto isAsleep = m_buddy.view().sleepAmount() > halfAsleep;
    switch (m_buddy.view().state().kind) {
    case BuddyState::Kind::working:
    case BuddyState::Kind::responding:
        m_presence.setActivity(Activity::working);
        break;
    case BuddyState::Kind::notify:
        m_presence.setActivity(Activity::reminding);
        break;
    default:
        m_presence.setActivity(isAsleep ? Activity::asleep : Activity::resting);
    }
}

void AppDelegate::makePanel()
{
    m_panel = std::make_unique<ChatPanel>(m_coordinator->chat(), Calendar::current(), systemNow);
    connect(m_panel.get(), &ChatPanel::newSessionRequested, m_coordinator.get(),
        &AppCoordinator::startNewSession);
    connect(m_panel.get(), &ChatPanel::pastConversationsRequested, &m_windows,
        &ToolWindows::openPastConversations);
    connect(m_panel.get(), &ChatPanel::linkRequested, &m_windows, &ToolWindows::open);
    connect(m_panel.get(), &ChatPanel::shown, this, [this] { setChatShown(true); });
    connect(m_panel.get(), &ChatPanel::hidden, this, [this] { setChatShown(false); });
    connect(m_panel.get(), &ChatPanel::hidden, this,
        [this] { m_desktopSettings.setValue(panelSizeKey, m_panel->size()); });
    connect(qApp, &QApplication::aboutToQuit, m_panel.get(), &ChatPanel::keepDraft);
    connect(m_panel.get(), &ChatPanel::typed, &m_buddy.view(), &BuddyView::stir);
    connect(m_panel.get(), &ChatPanel::proposalAnswered, this, &AppDelegate::answerProposal);
    connect(m_panel.get(), &ChatPanel::undoRequested, this, [this](const QString& proposalId) {
        m_coordinator->proposalDesk().undoProposal(proposalId);
    });
    connect(m_panel.get(), &ChatPanel::quickAnswered, this,
        [this](const QUuid& record, ProactiveLogic::QuickAnswer answer) {
            m_coordinator->interventions().answer(record, answer);
        });
    m_panel->resize(m_desktopSettings.value(panelSizeKey, m_panel->size()).toSize());
    m_panel->setNotice(m_notice);
    showPanelState();
}

void AppDelegate::answerProposal(const QString& proposalId, ProposalAnswer answer)
{
    QCoro::connect(m_coordinator->proposalDesk().answer(proposalId, answer), m_panel.get(),
        [this, proposalId] { m_panel->allowAnswer(proposalId); });
}

void AppDelegate::showState()
{
    showLook(m_coordinator->state().of<SettingsState>().settings);
    if (m_panel)
        showPanelState();
}

void AppDelegate::showLook(const AppSettings& settings)
{
    const Look look { settings.mascot, settings.mascotColorScheme, settings.mascotSizeScale,
        settings.themePreference, settings.accentChoice, settings.dateLanguage,
        settings.sleepAfterMinutes, settings.soundsEnabled };
    if (m_look == look)
        return;
    m_look = look;
    const auto sprite = MascotSprite::chosen(look.mascot, look.colorScheme);
    m_buddy.setSprite(sprite);
    m_buddy.setSizeScale(look.sizeScale);
    m_buddy.view().setTheme(paletteFor(settings));
    m_bubbles.setTheme(paletteFor(settings));
    m_windows.setTheme(paletteFor(settings));
    m_buddy.view().setSleepDelay(std::chrono::minutes(look.sleepAfterMinutes));
    m_presence.setSprite(sprite);
    m_presence.setSounds(look.areSoundsWanted);
    QLocale::setDefault(
        look.dateLanguage == u"system" ? m_systemLocale : QLocale(look.dateLanguage));
    QApplication::setWindowIcon(BuddyFace::icon(sprite));
    m_desktopSettings.setValue(mascotKey, look.mascot);
    m_desktopSettings.setValue(schemeKey, look.colorScheme);
    m_desktopSettings.setValue(scaleKey, look.sizeScale);
}

void AppDelegate::showPanelState()
{
    const auto& state = m_coordinator->state();
    const auto& settings = state.of<SettingsState>().settings;
    const auto& conversation = state.of<ConversationState>();
    m_panel->setTheme(paletteFor(settings));
    m_panel->setFace(
        BuddyFace::icon(MascotSprite::chosen(settings.mascot, settings.mascotColorScheme)));
    m_panel->setStateText(stateInWords(settings, state.of<LibrarianState>()));
    m_panel->setModelLabel(conversation.modelLabel);
    m_panel->setSuggestions(suggestions(conversation));
    m_panel->setInterventions(state.of<InterventionsState>().recentInterventions);
    m_panel->setClosingSession(conversation.isClosingSession);
    const auto& proposals = state.of<ProposalState>();
    m_panel->setProposals(proposals.pendingProposals, settings, proposals.answered);
    if (const auto news = m_problems.news(state))
        m_panel->setNotice(*news);
}

void AppDelegate::showNotice(const QString& text)
{
    m_notice = text;
    if (m_panel)
        m_panel->setNotice(text);
}

void AppDelegate::setChatShown(bool isShown)
{
    m_presence.setChatShown(isShown);
    m_bubbles.setChatShown(isShown);
    if (isShown)
        spawn(m_coordinator->interventions().deliverDailyBriefingIfDue());
}

void AppDelegate::quote(const QString& text)
{
    openChat();
    if (m_panel)
        m_panel->quote(text);
}

void AppDelegate::attach(const DropContents& contents)
{
    openChat();
    if (m_panel)
        m_panel->attach(contents);
}

void AppDelegate::toggleChat()
{
    showMark();
    if (m_panel && m_panel->isActiveWindow() && !m_panel->isMinimized())
        m_panel->hide();
    else
        openChat();
}

} // namespace pobblewig
