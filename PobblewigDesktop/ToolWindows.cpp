#include "PobblewigDesktop/ToolWindows.h"

#include "PobblewigDesktop/chat/past/PastConversations.h"
#include "PobblewigDesktop/settings/SettingsWindow.h"

#include <QUrl>

namespace pobblewig {

namespace {

const auto settingsPageKey = QStringLiteral("settings/page");
const auto settingsSizeKey = QStringLiteral("settings/size");

} // namespace

ToolWindows::ToolWindows(DesktopPresence& presence, QSettings& desktopSettings)
    : m_presence(presence)
    , m_desktopSettings(desktopSettings)
{
}

ToolWindows::~ToolWindows()
{
    if (m_settings)
        m_desktopSettings.setValue(settingsSizeKey, m_settings->size());
}

void ToolWindows::follow(AppCoordinator& coordinator)
{
    m_coordinator = &coordinator;
    connect(&coordinator, &AppCoordinator::stateChanged, this, &ToolWindows::showState);
}

bool ToolWindows::open(const QString& link)
{
    const QUrl url(link);
    const auto name = url.path().section(u'/', 0, 0);
    if (!m_coordinator || url.scheme() != u"pobblewig" || name != u"settings")
        return false;
    openSettings(url.path().section(u'/', 1));
    return true;
}

void ToolWindows::openPastConversations()
{
    if (!m_past)
        m_past = std::make_unique<PastConversations>(
            m_coordinator->library(), Calendar::current(), systemNow);
    m_past->setTheme(m_palette);
    m_past->show();
    m_presence.activate(*m_past);
}

void ToolWindows::setTheme(const Palette& palette)
{
    m_palette = palette;
    if (m_past)
        m_past->setTheme(palette);
    if (m_settings)
        m_settings->setTheme(palette);
}

void ToolWindows::openSettings(const QString& page)
{
    if (!m_settings) {
        m_settings = std::make_unique<SettingsWindow>(*m_coordinator,
            GeneralPage::Desktop { m_presence.autostart(), &m_presence.hotKey() },
            Calendar::current());
        m_settings->resize(m_desktopSettings.value(settingsSizeKey, m_settings->size()).toSize());
        m_settings->openPage(m_desktopSettings.value(settingsPageKey).toString());
        connect(m_settings.get(), &SettingsWindow::linkRequested, this, &ToolWindows::open);
        connect(m_settings.get(), &SettingsWindow::pageOpened, this,
            [this](const QString& id) { m_desktopSettings.setValue(settingsPageKey, id); });
    }
    m_settings->setTheme(m_palette);
    m_settings->showState(m_coordinator->state());
    m_settings->openPage(page);
    m_settings->show();
    m_presence.activate(*m_settings);
}

void ToolWindows::showState()
{
    if (m_settings && m_settings->isVisible())
        m_settings->showState(m_coordinator->state());
}

} // namespace pobblewig
