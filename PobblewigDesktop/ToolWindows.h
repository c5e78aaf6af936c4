#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/controls/Theme.h"
#include "PobblewigDesktop/presence/DesktopPresence.h"

#include <QObject>
#include <QSettings>

#include <memory>

namespace pobblewig {

class PastConversations;
class SettingsWindow;

/// The windows beside the chat. Each is made when it is first opened, and stays where the user has
/// put it.
class ToolWindows : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object.
    ToolWindows(DesktopPresence& presence, QSettings& desktopSettings);
    ~ToolWindows() override;

    /// To be called once, before anything is opened.
    void follow(AppCoordinator& coordinator);

    /// Opens what a link names, such as "pobblewig:settings/companion". Returns whether it names a
    /// window.
    bool open(const QString& link);
    void openPastConversations();

    void setTheme(const Palette& palette);

private:
    void openSettings(const QString& page);
    void showState();

    DesktopPresence& m_presence;
    QSettings& m_desktopSettings;
    AppCoordinator* m_coordinator = nullptr;
    std::unique_ptr<PastConversations> m_past;
    std::unique_ptr<SettingsWindow> m_settings;
    Palette m_palette;
};

} // namespace pobblewig
