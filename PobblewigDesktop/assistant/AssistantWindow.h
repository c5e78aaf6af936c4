#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/pages/PageWindow.h"

#include <QKeySequence>

class QPushButton;

namespace pobblewig {

/// "Welcome to Pobblewig": a page for each thing that a new user may want to choose. Every page can
/// be skipped, and the window can be closed and opened again.
class AssistantWindow : public PageWindow {
    Q_OBJECT

public:
    /// What the window cannot make or know by itself.
    struct Desktop {
        /// Makes a buddy that follows the settings.
        std::function<std::unique_ptr<QWidget>()> makeBuddy;
        /// The keys that call the chat; empty if there are none.
        std::function<QKeySequence()> chatKeys;
    };

    /// `coordinator` must outlive the window.
    AssistantWindow(AppCoordinator& coordinator, const Desktop& desktop);

private:
    void addButtons();
    void showButtons();
    void goOn();
    void finish();

    AppCoordinator& m_coordinator;
    QPushButton* m_skip;
    QPushButton* m_back;
    QPushButton* m_next;
};

} // namespace pobblewig
