#pragma once

#include "PobblewigLinux/desktop/IdleClock.h"
#include "PobblewigLinux/desktop/IdleTimeProviding.h"

#include <QDBusConnection>
#include <QObject>

namespace pobblewig {

/// The idle time that GNOME announces on the bus.
class MutterIdleTime : public QObject, public IdleTimeProviding {
    Q_OBJECT

public:
    static const QString service;

    MutterIdleTime(QDBusConnection bus, Clock now);

    double idleSeconds() override;

private Q_SLOTS:
    void watchFired(quint32 watch);

private:
    QDBusConnection m_bus;
    IdleClock m_clock;
    std::optional<quint32> m_idleWatch;
};

} // namespace pobblewig
