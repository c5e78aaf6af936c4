#include "PobblewigLinux/desktop/DesktopNotifications.h"

#include "PobblewigLinux/desktop/NotificationLogic.h"

#include <QCoroSignal>
#include <QDBusPendingCallWatcher>

namespace pobblewig {

namespace {

const auto server = QStringLiteral("org.freedesktop.Notifications");
const auto serverPath = QStringLiteral("/org/freedesktop/Notifications");

constexpr uint replacesNothing = 0;
constexpr int serverDecidesHowLong = -1;

QDBusMessage message(const QString& method, const QVariantList& arguments)
{
    auto message = QDBusMessage::createMethodCall(server, serverPath, server, method);
    message.setArguments(arguments);
    return message;
}

} // namespace

DesktopNotifications::DesktopNotifications(QDBusConnection bus)
    : m_bus(std::move(bus))
{
}

Task<bool> DesktopNotifications::present(Notification notification)
{
    listen();
    const auto isThere = co_await learnCapabilities();
    if (!isThere)
        co_return false;
    const auto icon = QStringLiteral("com.pobblewig.app");
    QStringList answers;
    for (const auto& answer : notification.answers)
        answers.append(answer.id);
    const auto answer = co_await call(QStringLiteral("Notify"),
        { QStringLiteral("Pobblewig"), replacesNothing, icon,
            NotificationLogic::summary(notification.title),
            NotificationLogic::body(notification.text, *m_capabilities),
            NotificationLogic::actions(*m_capabilities, notification.answers),
            NotificationLogic::hints(), serverDecidesHowLong });
    const auto id = answer.arguments().value(0).toUInt();
    if (answer.type() != QDBusMessage::ReplyMessage || id == 0)
        co_return false;
    m_shown.insert_or_assign(id, answers);
    co_return true;
}

void DesktopNotifications::withdraw()
{
    for (const auto& [id, answers] : std::exchange(m_shown, {}))
        m_bus.asyncCall(message(QStringLiteral("CloseNotification"), { id }));
}

void DesktopNotifications::invoke(uint id, const QString& action)
{
    const auto shown = m_shown.find(id);
    if (shown == m_shown.end())
        return;
    if (NotificationLogic::opensChat(action))
        Q_EMIT opened();
    else if (shown->second.contains(action))
        Q_EMIT answered(action);
}

void DesktopNotifications::takeReply(uint id, const QString& text)
{
    const auto reply = NotificationLogic::reply(text);
    if (!m_shown.contains(id))
        return;
    if (reply.isEmpty())
        Q_EMIT opened();
    else
        Q_EMIT replied(reply);
}

void DesktopNotifications::forget(uint id, uint)
{
    m_shown.erase(id);
}

Task<bool> DesktopNotifications::learnCapabilities()
{
    if (m_capabilities)
        co_return true;
    const auto answer = co_await call(QStringLiteral("GetCapabilities"), {});
    if (answer.type() == QDBusMessage::ReplyMessage)
        m_capabilities = answer.arguments().value(0).toStringList();
    co_return m_capabilities.has_value();
}

Task<QDBusMessage> DesktopNotifications::call(QString method, QVariantList arguments)
{
    if (!m_bus.isConnected())
        co_return {};
    QDBusPendingCallWatcher answer(m_bus.asyncCall(message(method, arguments)));
    co_await qCoro(&answer, &QDBusPendingCallWatcher::finished);
    co_return answer.reply();
}

void DesktopNotifications::listen()
{
    if (std::exchange(m_isListening, true))
        return;
    const auto listenTo = [this](const QString& signal, const char* slot) {
        m_bus.connect(server, serverPath, server, signal, this, slot);
    };
    listenTo(QStringLiteral("ActionInvoked"), SLOT(invoke(uint, QString)));
    listenTo(QStringLiteral("NotificationReplied"), SLOT(takeReply(uint, QString)));
    listenTo(QStringLiteral("NotificationClosed"), SLOT(forget(uint, uint)));
}

} // namespace pobblewig
