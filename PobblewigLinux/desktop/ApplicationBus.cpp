#include "PobblewigLinux/desktop/ApplicationBus.h"

#include "PobblewigLinux/desktop/OpenRequestLogic.h"
#include "foundation/Log.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace pobblewig {

namespace {

const auto applicationName = QStringLiteral("com.pobblewig.app");
const auto objectPath = QStringLiteral("/com/pobblewig/app");
const auto interfaceName = QStringLiteral("org.freedesktop.Application");

constexpr int answerMilliseconds = 5000;

} // namespace

bool ApplicationBus::handOver(const QString& name, const std::optional<QUrl>& link) const
{
    const auto method = link ? QStringLiteral("Open") : QStringLiteral("Activate");
    auto call = QDBusMessage::createMethodCall(name, objectPath, interfaceName, method);
    call.setAutoStartService(false);
    if (link)
        call << QStringList(link->toString(QUrl::FullyEncoded));
    call << QVariantMap();
    const auto answer = QDBusConnection::sessionBus().call(call, QDBus::Block, answerMilliseconds);
    return answer.type() == QDBusMessage::ReplyMessage;
}

void ApplicationBus::publish(const QString& name)
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    // Registers the object first, because others may call as soon as they see the name.
    bus.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);
    for (const auto& wanted : { name, applicationName }) {
        bus.interface()->registerService(wanted, QDBusConnectionInterface::DontQueueService,
            QDBusConnectionInterface::DontAllowReplacement);
    }
}

void ApplicationBus::Activate(const QVariantMap&)
{
    Q_EMIT activated();
}

void ApplicationBus::Open(const QStringList& uris, const QVariantMap&)
{
    if (const auto link = OpenRequestLogic::link(uris))
        Q_EMIT openRequested(*link);
    else
        Log::line(QStringLiteral("buddy: refused to open something that is no link of ours"));
}

void ApplicationBus::ActivateAction(const QString& name, const QVariantList&, const QVariantMap&)
{
    if (name == u"quit")
        Q_EMIT quitRequested();
}

} // namespace pobblewig
