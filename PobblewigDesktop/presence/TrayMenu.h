#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

namespace pobblewig {

/// The buddy's face in the desktop's tray, with a menu. Absent until it is shown, and on desktops
/// without a tray.
class TrayMenu : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// To be called when there is a tray: Qt decides with the first icon which kind of tray it
    /// talks to, and never asks again.
    void show(std::unique_ptr<QMenu> menu);

    bool isShown() const { return m_icon != nullptr; }

    void setFace(const QIcon& face);
    void setToolTip(const QString& text);

Q_SIGNALS:
    void chatRequested();

private:
    QIcon m_face;
    QString m_toolTip;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace pobblewig
