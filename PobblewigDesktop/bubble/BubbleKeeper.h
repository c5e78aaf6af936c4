#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/bubble/BubbleWindow.h"
#include "PobblewigDesktop/buddy/BuddyWindow.h"
#include "presence/BubbleLogic.h"

#include <QTimer>

#include <memory>

namespace pobblewig {

/// Says beside the buddy what happens while the chat is closed. The bubble stays with the buddy,
/// hides with it, and goes when the chat is opened.
class BubbleKeeper : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object.
    BubbleKeeper(BuddyWindow& buddy, BuddyWindowSystem& system);

    /// From now on answers, problems and proposals are said. To be called once.
    void follow(AppCoordinator& coordinator);

    void setTheme(const Palette& palette);

    /// Does nothing while the user can see the chat.
    void say(const Bubble& bubble);

    /// Returns how long the user can read it: no time while the buddy is hidden.
    std::chrono::milliseconds sayGoodbye();

    void setChatShown(bool isShown);

    /// Whether something was said that the user has not seen in the chat since.
    bool hasUnseen() const { return m_hasUnseen; }

Q_SIGNALS:
    /// The user wants to see the chat.
    void clicked();
    void unseenChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void sayAnswer();
    void sayProblem();
    void forgetProblem();
    void sayProposals();
    void setUnseen(bool hasUnseen);
    void setWaiting(BubbleLogic::Bubbles waiting);
    void dismiss();
    void showFirst();
    void makeWindow();
    void startTime();

    BuddyWindow& m_buddy;
    BuddyWindowSystem& m_system;
    AppCoordinator* m_coordinator = nullptr;
    Palette m_palette;
    std::unique_ptr<BubbleWindow> m_window;
    BubbleLogic::Bubbles m_waiting;
    size_t m_proposals = 0;
    bool m_isChatShown = false;
    bool m_hasUnseen = false;
    bool m_isHeld = false;
    /// Runs while the bubble is seen.
    QTimer m_time;
};

} // namespace pobblewig
