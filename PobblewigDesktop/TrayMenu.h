#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

namespace pobblewig {

/// The buddy's face in the desktop's tray. Absent until it is shown, and on desktops without a
/// tray.
class TrayMenu : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// To be called when there is a tray: Qt decides with the first icon which kind of tray it
    /// speaks to, and never asks again.
    void show();

    void setFace(const QIcon& face);

Q_SIGNALS:
    void chatRequested();
    void quitRequested();

private:
    QIcon m_face;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace pobblewig
