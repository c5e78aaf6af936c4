#include "PobblewigLinux/desktop/InhibitorReasons.h"

#include <QCoroSignal>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>

namespace pobblewig {

namespace {

const auto gnome = QStringLiteral("org.gnome.SessionManager");
const auto plasma = QStringLiteral("org.kde.Solid.PowerManagement");

constexpr int patience = 1000;
constexpr qsizetype mostInhibitors = 50;

} // namespace

InhibitorReasons::InhibitorReasons(QDBusConnection bus)
    : m_bus(std::move(bus))
{
}

Task<QStringList> InhibitorReasons::reasons()
{
    const auto first = co_await inGNOME();
    const auto second = co_await inPlasma();
    co_return first + second;
}

Task<QDBusMessage> InhibitorReasons::call(
    QString service, QString path, QString interface, QString method)
{
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setAutoStartService(false);
    QDBusPendingCallWatcher answer(m_bus.asyncCall(message, patience));
    co_await qCoro(&answer, &QDBusPendingCallWatcher::finished);
    co_return answer.reply();
}

Task<QStringList> InhibitorReasons::inGNOME()
{
    const auto answer = co_await call(
        gnome, QStringLiteral("/org/gnome/SessionManager"), gnome, QStringLiteral("GetInhibitors"));
    QStringList reasons;
    for (const auto& path : qdbus_cast<QList<QDBusObjectPath>>(answer.arguments().value(0))) {
        if (reasons.size() >= mostInhibitors)
            break;
        const auto reason = co_await call(
            gnome, path.path(), gnome + QStringLiteral(".Inhibitor"), QStringLiteral("GetReason"));
        reasons << reason.arguments().value(0).toString();
    }
    co_return reasons;
}

Task<QStringList> InhibitorReasons::inPlasma()
{
    const auto answer =
        co_await call(plasma, QStringLiteral("/org/kde/Solid/PowerManagement/PolicyAgent"),
            plasma + QStringLiteral(".PolicyAgent"), QStringLiteral("ListInhibitions"));
    QStringList reasons;
    const auto value = answer.arguments().value(0);
    if (!value.canConvert<QDBusArgument>())
        co_return reasons;
    const auto list = value.value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString program;
        QString reason;
        list.beginStructure();
        list >> program >> reason;
        list.endStructure();
        reasons << reason;
    }
    list.endArray();
    co_return reasons;
}

} // namespace pobblewig
