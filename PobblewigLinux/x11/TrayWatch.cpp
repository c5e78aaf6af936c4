#include "PobblewigLinux/x11/TrayWatch.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace pobblewig {

namespace {

const auto watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");

} // namespace

TrayWatch::TrayWatch(X11Connection* connection, const QDBusConnection& bus)
    : m_bus(bus)
    , m_service(watcherName, bus, QDBusServiceWatcher::WatchForRegistration)
{
    connect(&m_service, &QDBusServiceWatcher::serviceRegistered, this, &TrayWatch::askBus);
    m_bus.connect(watcherName, watcherPath, watcherName,
        QStringLiteral("StatusNotifierHostRegistered"), this, SLOT(askBus()));
    if (connection)
        m_selection.emplace(*connection, "_NET_SYSTEM_TRAY_S0", [this] { reportIfOwned(); });
}

void TrayWatch::start()
{
    askBus();
    QMetaObject::invokeMethod(this, &TrayWatch::reportIfOwned, Qt::QueuedConnection);
}

void TrayWatch::askBus()
{
    auto question = QDBusMessage::createMethodCall(watcherName, watcherPath,
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question.setAutoStartService(false);
    question << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
    auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid() && reply.value().variant().toBool())
            report();
        answer->deleteLater();
    });
}

void TrayWatch::report()
{
    if (!std::exchange(m_hasReported, true))
        Q_EMIT trayAppeared();
}

void TrayWatch::reportIfOwned()
{
    if (m_selection && m_selection->isOwned())
        report();
}

} // namespace pobblewig
