#include "PobblewigDesktop/TrayMenu.h"

namespace pobblewig {

void TrayMenu::show()
{
    if (m_icon)
        return;
    m_menu = std::make_unique<QMenu>();
    m_menu->addAction(tr("Open chat"), this, &TrayMenu::chatRequested);
    m_menu->addSeparator();
    m_menu->addAction(tr("Quit Pobblewig"), this, &TrayMenu::quitRequested);

    m_icon = std::make_unique<QSystemTrayIcon>(m_face);
    m_icon->setToolTip(QStringLiteral("Pobblewig"));
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

} // namespace pobblewig
