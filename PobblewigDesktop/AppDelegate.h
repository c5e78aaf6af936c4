#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/MemeStage.h"
#include "PobblewigDesktop/ProblemNotices.h"
#include "PobblewigDesktop/ToolWindows.h"
#include "PobblewigDesktop/bubble/BubbleKeeper.h"
#include "PobblewigDesktop/buddy/BuddyWindow.h"
#include "PobblewigDesktop/presence/DesktopPresence.h"

#include <QLocale>
#include <QSettings>

#include <functional>
#include <memory>

namespace pobblewig {

class ChatPanel;

/// The user interface as a whole. The buddy appears before anything else happens; then the
/// coordinator starts, and from there on the interface shows its published state.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    AppDelegate(BuddyWindowSystem& windowSystem, QSettings& desktopSettings);
    ~AppDelegate() override;

    /// Makes what the coordinator needs; nothing if the program must end instead.
    using MakeParts = std::function<std::optional<AppCoordinator::Parts>()>;

    /// `makeParts` is called once the buddy is visible.
    void launch(MakeParts makeParts);

    /// Before the coordinator has started, the request is kept until it has.
    void openChat();

    /// Opens the window that a link of this program names, or else the chat. Kept likewise.
    void openLink(const QUrl& link);

    /// Ends the program once the turn is stopped and the buddy has said goodbye.
    void quit();

    /// The tray, the hot key and notifications; their services come once the interface has
    /// launched.
    DesktopPresence& presence() { return m_presence; }

Q_SIGNALS:
    /// Emitted once, when the buddy is visible and the coordinator has started.
    void launched();

private:
    struct Look {
        QString mascot;
        QString colorScheme;
        double sizeScale = 1;
        QString theme;
        QString accent;
        QString dateLanguage;
        int sleepAfterMinutes = 0;
        bool areSoundsWanted = true;

        bool operator==(const Look&) const = default;
    };

    void startCoordinator();
    void showMenu(QPoint place);
    void showActivity(bool working, bool succeeded);
    void showReply();
    void showReminder(const QString& message);
    void showMark();
    void showPresence();
    void makePanel();
    void answerProposal(const QString& proposalId, ProposalAnswer answer);
    void showState();
    void showLook(const AppSettings& settings);
    void showPanelState();
    void showNotice(const QString& text);
    void toggleChat();
    void putAway();
    void setChatShown(bool isShown);
    void quote(const QString& text);
    void attach(const DropContents& contents);

    QSettings& m_desktopSettings;
    BuddyWindow m_buddy;
    MemeStage m_memes { m_buddy.view() };
    BubbleKeeper m_bubbles;
    DesktopPresence m_presence;
    ToolWindows m_windows;
    QLocale m_systemLocale;
    MakeParts m_makeParts;
    std::unique_ptr<AppCoordinator> m_coordinator;
    std::unique_ptr<ChatPanel> m_panel;
    std::optional<Look> m_look;
    ProblemNotices m_problems;
    /// The notice that the panel shows once it exists.
    QString m_notice;
    bool m_isChatRequested = false;
    /// The link to open once the coordinator has started.
    QUrl m_requestedLink;
};

} // namespace pobblewig
