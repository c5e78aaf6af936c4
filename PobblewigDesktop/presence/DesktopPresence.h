#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/presence/ChatHotKey.h"
#include "PobblewigDesktop/presence/DesktopServices.h"
#include "PobblewigDesktop/presence/PresenceMenu.h"
#include "PobblewigDesktop/presence/TrayMenu.h"
#include "mascots/MascotSprite.h"

namespace pobblewig {

/// The buddy's presence beside its window: in the tray, at the hot key and in notifications. The
/// coordinator carries out what users ask for there; the rest are signals.
class DesktopPresence : public QObject {
    Q_OBJECT

public:
    /// Keeps in these settings what concerns only this desktop.
    explicit DesktopPresence(QSettings& settings, Clock clock = systemNow,
        std::function<Calendar()> calendar = Calendar::current);

    /// To be called once, when there is a sprite.
    void follow(AppCoordinator& coordinator);

    /// To be called once, after `follow`.
    void useServices(const DesktopServices& services);

    /// To be called once the desktop has a tray.
    void showTray();

    void setSprite(const MascotSprite& sprite);

    /// Sets what the buddy is doing at present.
    void setActivity(PresenceState::Activity activity);

    /// Sets whether the user can see the conversation; while this is so, nothing of it is told
    /// elsewhere.
    void setChatShown(bool isShown);

    /// Gives the keyboard to a window that is shown at the user's request.
    void activate(QWidget& window);

    void setSounds(bool areWanted) { m_areSoundsWanted = areWanted; }
    ChatHotKey& hotKey() { return m_hotKey; }

    /// Null before there are services.
    AutostartSwitching* autostart() { return m_services ? &m_services->autostart : nullptr; }

    /// Returns the buddy's menu, wherever it is to be opened.
    std::unique_ptr<PresenceMenu> makeMenu();

Q_SIGNALS:
    void chatRequested();
    void chatToggled();
    void sleepRequested();
    void putAwayRequested();
    void linkRequested(const QString& link);
    void quitRequested();

    /// The buddy has something to say that the user has not asked for.
    void reminded(const QString& message);

    /// The user is to read this text, which is not part of the conversation.
    void noticed(const QString& text);

    /// The state that the menus and the tray show has changed.
    void stateChanged();

private:
    PresenceState currentState() const;
    void showState();
    void showStateIn(PresenceMenu& menu);
    void connectRequests(PresenceMenu& menu);
    void lookAtScreen();
    void remind(const QString& message);
    std::vector<Notification::Answer> answersToNewest() const;
    void answer(const QString& actionID);
    Task<> present(Notification notification);
    void startWithDesktop(bool startWithDesktop);
    void reportHotKey(const HotKeyError& error);
    void sendReplies();

    Clock m_clock;
    std::function<Calendar()> m_calendar;
    ChatHotKey m_hotKey;
    bool m_areSoundsWanted = true;
    TrayMenu m_tray;
    AppCoordinator* m_coordinator = nullptr;
    std::optional<DesktopServices> m_services;
    PresenceState::Activity m_activity = PresenceState::Activity::resting;
    bool m_isChatShown = false;
    PresenceState m_state;
    MascotSprite m_sprite;
    /// Replies that the user wrote in notifications while a turn was under way.
    QStringList m_replies;
};

} // namespace pobblewig
