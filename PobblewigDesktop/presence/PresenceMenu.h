#pragma once

#include "presence/PauseLength.h"
#include "presence/PresenceState.h"

#include <QMenu>

class QActionGroup;

namespace pobblewig {

/// The menu of the buddy, in the tray and on the desktop. It only emits what the user asks for.
class PresenceMenu : public QMenu {
    Q_OBJECT

public:
    explicit PresenceMenu(QWidget* parent = nullptr);

    /// Sets the state that the check marks show.
    void setState(const PresenceState& state);
    void setStartsWithDesktop(bool startsWithDesktop);

    /// Sets whether the tray or a hot key can call the buddy back; otherwise the menu says what
    /// else does.
    void setCanCallBack(bool canCallBack);

Q_SIGNALS:
    void chatRequested();
    void screenRequested();
    void modeRequested(CoachMode mode);
    void temporaryModeRequested(CoachMode mode, int minutes);
    void pauseRequested(PauseLength length);
    void resumeRequested();
    void sleepRequested();
    void putAwayRequested();
    void startWithDesktopRequested(bool startWithDesktop);
    /// A window is to be opened, such as "pobblewig:settings".
    void linkRequested(const QString& link);
    void quitRequested();

private:
    void addModes();
    void addPauses();
    void addWindow(const QString& text, const QString& link);

    QActionGroup* m_modes;
    QAction* m_resume;
    QAction* m_putAway;
    QAction* m_startsWithDesktop;
};

} // namespace pobblewig
