#include "PobblewigLinux/portal/PortalRequest.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QTimer>
#include <QUuid>

namespace pobblewig {

namespace {

const auto portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const auto portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto requestInterface = QStringLiteral("org.freedesktop.portal.Request");

} // namespace

Task<std::optional<PortalRequest::Answer>> PortalRequest::ask(
    QDBusConnection bus, Question question, std::chrono::milliseconds patience)
{
    const std::unique_ptr<PortalRequest> request(new PortalRequest(bus));
    request->call(std::move(question));
    QTimer::singleShot(
        patience, request.get(), [sink = request->m_sink] { sink.finish(std::nullopt); });
    auto answer = co_await request->m_answers.next();
    if (!answer)
        request->withdraw();
    co_return answer;
}

void PortalRequest::respond(uint response, const QVariantMap& results)
{
    m_sink.push({ response, results });
}

PortalRequest::PortalRequest(QDBusConnection bus)
    : m_bus(std::move(bus))
    , m_token(QStringLiteral("pobblewig_") + QUuid::createUuid().toString(QUuid::Id128))
{
    // The path is known in advance, so that no answer arrives before the slot is connected.
    const auto sender = m_bus.baseService().mid(1).replace(u'.', u'_');
    m_path = QStringLiteral("%1/request/%2/%3").arg(portalPath, sender, m_token);
    m_bus.connect(portalService, m_path, requestInterface, QStringLiteral("Response"), this,
        SLOT(respond(uint, QVariantMap)));
}

void PortalRequest::call(Question question)
{
    question.options.insert(QStringLiteral("handle_token"), m_token);
    auto message = QDBusMessage::createMethodCall(
        portalService, portalPath, question.interface, question.method);
    message.setArguments(question.arguments << question.options);
    auto* const call = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        if (call->isError())
            m_sink.finish(std::nullopt);
    });
}

void PortalRequest::withdraw()
{
    m_bus.asyncCall(QDBusMessage::createMethodCall(
        portalService, m_path, requestInterface, QStringLiteral("Close")));
}

} // namespace pobblewig
