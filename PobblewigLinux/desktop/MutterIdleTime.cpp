#include "PobblewigLinux/desktop/MutterIdleTime.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace pobblewig {

namespace {

const auto path = QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core");
const auto interface = QStringLiteral("org.gnome.Mutter.IdleMonitor");

QDBusMessage question(const QString& method)
{
    auto call = QDBusMessage::createMethodCall(MutterIdleTime::service, path, interface, method);
    call.setAutoStartService(false);
    return call;
}

} // namespace

const QString MutterIdleTime::service = QStringLiteral("org.gnome.Mutter.IdleMonitor");

MutterIdleTime::MutterIdleTime(QDBusConnection bus, Clock now)
    : m_bus(std::move(bus))
    , m_clock(std::move(now))
{
    m_bus.connect(
        service, path, interface, QStringLiteral("WatchFired"), this, SLOT(watchFired(quint32)));
    constexpr std::chrono::milliseconds announcedAfter = IdleClock::announcedAfter;
    const auto watch = question(QStringLiteral("AddIdleWatch")) << quint64(announcedAfter.count());
    auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(watch), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<quint32> reply = *answer;
        if (reply.isValid())
            m_idleWatch = reply.value();
        answer->deleteLater();
    });
}

double MutterIdleTime::idleSeconds()
{
    return m_clock.seconds();
}

void MutterIdleTime::watchFired(quint32 watch)
{
    if (watch != m_idleWatch) {
        m_clock.end();
        return;
    }
    m_clock.begin();
    m_bus.asyncCall(question(QStringLiteral("AddUserActiveWatch")));
}

} // namespace pobblewig
