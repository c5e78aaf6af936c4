#include "PobblewigLinux/portal/PortalHotKeys.h"

#include "PobblewigLinux/desktop/KeySymbols.h"
#include "PobblewigLinux/portal/PortalRequest.h"
#include "PobblewigLinux/portal/PortalShortcut.h"
#include "presence/HotKeyLogic.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QUuid>

#include <algorithm>

namespace pobblewig {

namespace {

const auto portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const auto portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const auto shortcutID = QStringLiteral("chat");

} // namespace

PortalHotKeys::PortalHotKeys(
    QDBusConnection bus, QString description, std::chrono::milliseconds patience)
    : m_bus(std::move(bus))
    , m_description(std::move(description))
    , m_patience(patience)
{
    // QtDBus registers its own type only when one is sent, but looks up slots before that.
    qRegisterMetaType<QDBusObjectPath>();
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    m_bus.connect(portalService, portalPath, shortcutsInterface, QStringLiteral("Activated"), this,
        SLOT(activate(QDBusObjectPath, QString, qulonglong, QVariantMap)));
}

Task<PortalHotKeys::Outcome> PortalHotKeys::assign(QKeySequence keys)
{
    using Kind = HotKeyError::Kind;
    if (keys.isEmpty()) {
        close(std::exchange(m_session, {}));
        co_return {};
    }
    const auto trigger = HotKeyLogic::isUsable(keys) ? KeySymbols::trigger(keys[0]) : QString();
    if (trigger.isEmpty())
        co_return tl::unexpected(HotKeyError { Kind::unusable, keys });
    const auto session = co_await createSession();
    if (session.isEmpty())
        co_return tl::unexpected(HotKeyError { Kind::unavailable, keys });
    const auto problem = co_await bind(session, trigger);
    if (problem) {
        close(session);
        co_return tl::unexpected(HotKeyError { *problem, keys });
    }
    close(std::exchange(m_session, session));
    co_return {};
}

void PortalHotKeys::activate(
    const QDBusObjectPath& session, const QString& shortcut, qulonglong, const QVariantMap&)
{
    if (!m_session.isEmpty() && session.path() == m_session && shortcut == shortcutID)
        Q_EMIT pressed();
}

Task<QString> PortalHotKeys::createSession()
{
    const auto token = QStringLiteral("pobblewig_") + QUuid::createUuid().toString(QUuid::Id128);
    const PortalRequest::Question question {
        .interface = shortcutsInterface,
        .method = QStringLiteral("CreateSession"),
        .arguments = {},
        .options = { { QStringLiteral("session_handle_token"), token } },
    };
    const auto answer = co_await PortalRequest::ask(m_bus, question, m_patience);
    if (!answer || answer->response != 0)
        co_return {};
    co_return answer->results.value(QStringLiteral("session_handle")).toString();
}

Task<std::optional<HotKeyError::Kind>> PortalHotKeys::bind(QString session, QString trigger)
{
    using Kind = HotKeyError::Kind;
    const PortalShortcut wanted { shortcutID,
        { { QStringLiteral("description"), m_description },
            { QStringLiteral("preferred_trigger"), trigger } } };
    const auto parentWindow = QString();
    const PortalRequest::Question question {
        .interface = shortcutsInterface,
        .method = QStringLiteral("BindShortcuts"),
        .arguments = { QVariant::fromValue(QDBusObjectPath(session)),
            QVariant::fromValue(QList { wanted }), parentWindow },
    };
    const auto answer = co_await PortalRequest::ask(m_bus, question, m_patience);
    constexpr uint saidNo = 1;
    if (!answer || answer->response > saidNo)
        co_return Kind::unavailable;
    const auto bound =
        qdbus_cast<QList<PortalShortcut>>(answer->results.value(QStringLiteral("shortcuts")));
    const auto isBound = std::ranges::count(bound, shortcutID, &PortalShortcut::id) > 0;
    co_return answer->response != saidNo&& isBound ? std::nullopt : std::optional(Kind::refused);
}

void PortalHotKeys::close(const QString& session)
{
    if (session.isEmpty())
        return;
    m_bus.asyncCall(QDBusMessage::createMethodCall(portalService, session,
        QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Close")));
}

} // namespace pobblewig
