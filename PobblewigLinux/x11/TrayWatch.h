#pragma once

#include "PobblewigLinux/x11/X11SelectionWatch.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <optional>

namespace pobblewig {

/// Waits until the desktop has a tray, over D-Bus or XEmbed. At login a tray often starts later
/// than the programs that use it.
class TrayWatch : public QObject {
    Q_OBJECT

public:
    /// `connection` may be null.
    explicit TrayWatch(
        X11Connection* connection, const QDBusConnection& bus = QDBusConnection::sessionBus());

    /// The answer arrives as the signal, never before this returns.
    void start();

Q_SIGNALS:
    /// Emitted once, for the first tray.
    void trayAppeared();

private Q_SLOTS:
    void askBus();

private:
    void report();
    void reportIfOwned();

    QDBusConnection m_bus;
    QDBusServiceWatcher m_service;
    std::optional<X11SelectionWatch> m_selection;
    bool m_hasReported = false;
};

} // namespace pobblewig
