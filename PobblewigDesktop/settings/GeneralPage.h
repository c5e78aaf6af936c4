#pragma once

#include "PobblewigDesktop/pages/CatalogPage.h"
#include "PobblewigDesktop/presence/ChatHotKey.h"
#include "presence/AutostartSwitching.h"

class QKeySequenceEdit;

namespace pobblewig {

class Switch;

/// General settings, with those that the desktop keeps: the start at login and the keys that call
/// the chat.
class GeneralPage : public CatalogPage {
    Q_OBJECT

public:
    struct Desktop {
        /// Null if the desktop cannot start programs.
        AutostartSwitching* autostart = nullptr;
        ChatHotKey* hotKey = nullptr;
    };

    /// The arguments must outlive the page.
    GeneralPage(const Settings& settings, AppCoordinator& coordinator, const Desktop& desktop);

    void showState(const PublishedState& state) override;
    void setTheme(const Palette& palette) override;

private:
    void addAutostart();
    void addHotKey();
    void startAtLogin(bool isWanted);
    void changeKeys();
    void showKeys();

    Desktop m_desktop;
    Switch* m_startsAtLogin = nullptr;
    FieldRow* m_autostart = nullptr;
    QKeySequenceEdit* m_keys = nullptr;
    FieldRow* m_keyRow = nullptr;
};

} // namespace pobblewig
