#pragma once

#include "PobblewigLinux/x11/X11SelectionWatch.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <optional>

namespace pobblewig {

/// Waits until the desktop has a tray, whether it speaks D-Bus or XEmbed. At login a tray often
/// comes up later than the programs that want to be in it.
class TrayWatch : public QObject {
    Q_OBJECT

public:
    /// There may be no X connection.
    explicit TrayWatch(
        X11Connection* connection, const QDBusConnection& bus = QDBusConnection::sessionBus());

    /// The answer comes as the signal, never before this returns.
    void start();

Q_SIGNALS:
    /// Once, for the first tray there is.
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
