#include "PobblewigDesktop/presence/DesktopPresence.h"

#include "PobblewigDesktop/presence/BuddyFace.h"
#include "presence/PresenceLogic.h"
#include "presence/QuickAnswerLogic.h"
#include "prompts/VisionUserPrompt.h"

#include <utility>

namespace pobblewig {

using Activity = PresenceState::Activity;

DesktopPresence::DesktopPresence(
    QSettings& settings, Clock clock, std::function<Calendar()> calendar)
    : m_clock(std::move(clock))
    , m_calendar(std::move(calendar))
    , m_hotKey(settings)
{
    connect(&m_tray, &TrayMenu::chatRequested, this, &DesktopPresence::chatRequested);
    connect(&m_hotKey, &ChatHotKey::pressed, this, &DesktopPresence::chatToggled);
    connect(&m_hotKey, &ChatHotKey::missing, this, &DesktopPresence::reportHotKey);
}

void DesktopPresence::follow(AppCoordinator& coordinator)
{
    m_coordinator = &coordinator;
    connect(&coordinator, &AppCoordinator::stateChanged, this, &DesktopPresence::showState);
    coordinator.onInterventionFired = [this](const QString& message) { remind(message); };
    // Once the others have seen the end of the turn.
    connect(&coordinator.chat(), &ChatService::activityChanged, this, &DesktopPresence::sendReplies,
        Qt::QueuedConnection);
    showState();
}

void DesktopPresence::useServices(const DesktopServices& services)
{
    m_services.emplace(services);
    auto* const notifications = &services.notifications;
    connect(notifications, &NotificationPresenting::opened, this, &DesktopPresence::chatRequested);
    connect(notifications, &NotificationPresenting::answered, this, &DesktopPresence::answer);
    connect(notifications, &NotificationPresenting::replied, this, [this](const QString& text) {
        m_replies.append(text);
        sendReplies();
    });
    m_hotKey.start(services.hotKeys);
}

void DesktopPresence::showTray()
{
    m_tray.show(makeMenu());
}

void DesktopPresence::setSprite(const MascotSprite& sprite)
{
    m_sprite = sprite;
    m_tray.setFace(BuddyFace::icon(m_sprite, PresenceLogic::badge(m_state)));
}

void DesktopPresence::setActivity(Activity activity)
{
    if (std::exchange(m_activity, activity) != activity)
        showState();
}

void DesktopPresence::setChatShown(bool isShown)
{
    m_isChatShown = isShown;
    if (isShown && m_services)
        m_services->notifications.withdraw();
}

void DesktopPresence::activate(QWidget& window)
{
    window.raise();
    window.activateWindow();
    if (m_services)
        m_services->windows.activate(window.winId());
}

std::unique_ptr<PresenceMenu> DesktopPresence::makeMenu()
{
    auto menu = std::make_unique<PresenceMenu>();
    showStateIn(*menu);
    connectRequests(*menu);
    return menu;
}

PresenceState DesktopPresence::currentState() const
{
    const auto& [settings, isPaused] = m_coordinator->state().of<SettingsState>();
    return {
        .mode = settings.mode,
        .modeRevertAt = settings.modeRevertAt,
        .isPaused = isPaused,
        .pausedUntil = PresenceLogic::endOfPause(settings, isPaused),
        .activity = m_activity,
    };
}

void DesktopPresence::showState()
{
    const auto state = currentState();
    const auto isNews = std::exchange(m_state, state) != state;
    m_tray.setToolTip(PresenceLogic::inWords(m_state, m_clock(), m_calendar()));
    if (!isNews)
        return;
    m_tray.setFace(BuddyFace::icon(m_sprite, PresenceLogic::badge(m_state)));
    Q_EMIT stateChanged();
}

void DesktopPresence::showStateIn(PresenceMenu& menu)
{
    const auto showState = [this, &menu] { menu.setState(m_state); };
    // Only the desktop knows, and it tells nobody.
    const auto showStart = [this, &menu] {
        menu.setStartsWithDesktop(m_services && m_services->autostart.isEnabled());
        menu.setCanCallBack(m_tray.isShown() || m_hotKey.isHeld());
    };
    showState();
    showStart();
    connect(this, &DesktopPresence::stateChanged, &menu, showState);
    connect(&menu, &QMenu::aboutToShow, this, showStart);
}

void DesktopPresence::connectRequests(PresenceMenu& menu)
{
    auto& modes = m_coordinator->modes();
    connect(&menu, &PresenceMenu::chatRequested, this, &DesktopPresence::chatRequested);
    connect(&menu, &PresenceMenu::linkRequested, this, &DesktopPresence::linkRequested);
    connect(&menu, &PresenceMenu::quitRequested, this, &DesktopPresence::quitRequested);
    connect(&menu, &PresenceMenu::screenRequested, this, &DesktopPresence::lookAtScreen);
    connect(&menu, &PresenceMenu::modeRequested, this,
        [&modes](CoachMode mode) { modes.setMode(mode); });
    connect(&menu, &PresenceMenu::temporaryModeRequested, this,
        [&modes](CoachMode mode, int minutes) { modes.setTemporaryMode(mode, minutes); });
    connect(&menu, &PresenceMenu::pauseRequested, this, [this, &modes](PauseLength length) {
        modes.pauseObservation(PresenceLogic::pauseEnd(length, m_clock(), m_calendar()));
    });
    connect(&menu, &PresenceMenu::resumeRequested, this, [&modes] { modes.resumeObservation(); });
    connect(&menu, &PresenceMenu::sleepRequested, this, &DesktopPresence::sleepRequested);
    connect(&menu, &PresenceMenu::putAwayRequested, this, &DesktopPresence::putAwayRequested);
    connect(&menu, &PresenceMenu::startWithDesktopRequested, this, [this, &menu](bool start) {
        startWithDesktop(start);
        menu.setStartsWithDesktop(m_services->autostart.isEnabled());
    });
}

void DesktopPresence::lookAtScreen()
{
    m_coordinator->chat().submit(
        Prompts::visionUserPrompt.toString(), ChatService::Screenshot::with);
    Q_EMIT chatRequested();
}

void DesktopPresence::remind(const QString& message)
{
    Q_EMIT reminded(message);
    if (!m_services)
        return;
    if (m_areSoundsWanted)
        m_services->sounds.play(u"Glass");
    if (!m_isChatShown)
        spawn(present({ .title = QStringLiteral("Pobblewig"),
            .text = message,
            .answers = answersToNewest() }));
}

std::vector<Notification::Answer> DesktopPresence::answersToNewest() const
{
    const auto question = QuickAnswerLogic::question(m_coordinator->chat().messages(),
        m_coordinator->state().of<InterventionsState>().recentInterventions);
    if (!question)
        return {};
    std::vector<Notification::Answer> answers;
    for (const auto answer : question->answers)
        answers.push_back({ QuickAnswerLogic::actionID({ question->record, answer }),
            QuickAnswerLogic::inWords(answer) });
    return answers;
}

void DesktopPresence::answer(const QString& actionID)
{
    const auto action = QuickAnswerLogic::action(actionID);
    if (!action)
        return;
    m_coordinator->interventions().answer(action->record, action->answer);
    // What was wrong has to be told.
    if (action->answer == ProactiveLogic::QuickAnswer::thatsWrong)
        Q_EMIT chatRequested();
}

Task<> DesktopPresence::present(Notification notification)
{
    // A desktop without notifications still has the buddy.
    co_await m_services->notifications.present(std::move(notification));
}

void DesktopPresence::startWithDesktop(bool startWithDesktop)
{
    const auto outcome = m_services->autostart.setEnabled(startWithDesktop);
    if (outcome)
        return;
    Q_EMIT noticed(tr("Couldn't change whether Pobblewig starts at login: %1.")
                       .arg(outcome.error().description()));
    Q_EMIT chatRequested();
}

void DesktopPresence::reportHotKey(const HotKeyError& error)
{
    // Where no program gets keys there is nothing that the user could do about it.
    if (error.kind != HotKeyError::Kind::unavailable)
        Q_EMIT noticed(tr("The chat has no keyboard shortcut. %1").arg(error.description()));
}

void DesktopPresence::sendReplies()
{
    if (!m_replies.isEmpty() && m_coordinator->chat().submit(m_replies.front()))
        m_replies.removeFirst();
}

} // namespace pobblewig
