#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/controls/Theme.h"
#include "PobblewigDesktop/presence/DesktopPresence.h"

#include <QObject>
#include <QSettings>

#include <map>
#include <memory>

namespace pobblewig {

class PageWindow;
class PastConversations;

/// The windows beside the chat. Each is made when it is first opened, and keeps its size and page
/// from then on.
class ToolWindows : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object.
    ToolWindows(DesktopPresence& presence, QSettings& desktopSettings);
    ~ToolWindows() override;

    /// To be called once, before anything is opened.
    void follow(AppCoordinator& coordinator);

    /// Opens what a link names, such as "pobblewig:settings/companion" or "pobblewig:past". Returns
    /// whether it names a window.
    bool open(const QString& link);
    void openPastConversations() { openPast({}); }

    void setTheme(const Palette& palette);

Q_SIGNALS:
    /// The link of a window leads to the chat.
    void chatRequested();

private:
    /// Null if there is no such window.
    PageWindow* window(const QString& name);
    void prepare(PageWindow& window, const QString& name);
    void openPast(const QString& conversation);
    void showState();

    DesktopPresence& m_presence;
    QSettings& m_desktopSettings;
    AppCoordinator* m_coordinator = nullptr;
    std::unique_ptr<PastConversations> m_past;
    /// By the names that links have for them.
    std::map<QString, std::unique_ptr<PageWindow>> m_windows;
    Palette m_palette;
};

} // namespace pobblewig
