#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/presence/ChatHotKey.h"
#include "PobblewigDesktop/presence/DesktopServices.h"
#include "PobblewigDesktop/presence/PresenceMenu.h"
#include "PobblewigDesktop/presence/TrayMenu.h"
#include "mascots/MascotSprite.h"

namespace pobblewig {

/// The buddy on the desktop beside its own window: in the tray, at the hot key, in notifications.
/// What users ask for there goes to the coordinator; the rest are signals.
class DesktopPresence : public QObject {
    Q_OBJECT

public:
    /// Keeps what is the desktop's own in the settings.
    explicit DesktopPresence(QSettings& settings, Clock clock = systemNow,
        std::function<Calendar()> calendar = Calendar::current);

    /// To be called once, when there is a sprite.
    void follow(AppCoordinator& coordinator);

    /// To be called once, after `follow`.
    void useServices(const DesktopServices& services);

    /// Once the desktop has a tray.
    void showTray();

    void setSprite(const MascotSprite& sprite);

    /// What the buddy does at present.
    void setActivity(PresenceState::Activity activity);

    /// Whether the user can read the conversation: then nothing of it is told elsewhere.
    void setChatShown(bool isShown);

    /// Gives the keyboard to a window that is shown because the user asked for it.
    void activate(QWidget& window);

    ChatHotKey& hotKey() { return m_hotKey; }

    /// The menu of the buddy, wherever it is opened.
    std::unique_ptr<PresenceMenu> makeMenu();

Q_SIGNALS:
    void chatRequested();
    void chatToggled();
    void sleepRequested();
    void quitRequested();

    /// The buddy has something to say that nobody asked for.
    void reminded();

    /// Something for the user to read, which is no part of the conversation.
    void noticed(const QString& text);

    /// What the menus and the tray show has changed.
    void stateChanged();

private:
    PresenceState currentState() const;
    void showState();
    void showStateIn(PresenceMenu& menu);
    void connectRequests(PresenceMenu& menu);
    void lookAtScreen();
    void remind(const QString& message);
    Task<> present(Notification notification);
    void startWithDesktop(bool startWithDesktop);
    void reportHotKey(const HotKeyError& error);
    void sendReplies();

    Clock m_clock;
    std::function<Calendar()> m_calendar;
    ChatHotKey m_hotKey;
    TrayMenu m_tray;
    AppCoordinator* m_coordinator = nullptr;
    std::optional<DesktopServices> m_services;
    PresenceState::Activity m_activity = PresenceState::Activity::resting;
    bool m_isChatShown = false;
    PresenceState m_state;
    MascotSprite m_sprite;
    /// What the user wrote in notifications while a turn was under way.
    QStringList m_replies;
};

} // namespace pobblewig
