#include "PobblewigDesktop/presence/TrayMenu.h"

namespace pobblewig {

void TrayMenu::show(std::unique_ptr<QMenu> menu)
{
    m_menu = std::move(menu);
    m_icon = std::make_unique<QSystemTrayIcon>(m_face);
    m_icon->setToolTip(m_toolTip);
    m_icon->setContextMenu(m_menu.get());
    connect(m_icon.get(), &QSystemTrayIcon::activated, this,
        [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger)
                Q_EMIT chatRequested();
        });
    m_icon->show();
}

void TrayMenu::setFace(const QIcon& face)
{
    m_face = face;
    if (m_icon)
        m_icon->setIcon(face);
}

void TrayMenu::setToolTip(const QString& text)
{
    if (std::exchange(m_toolTip, text) != text && m_icon)
        m_icon->setToolTip(text);
}

} // namespace pobblewig
